// The reference schema: its scripts, its installer, and the tables, views
// and catalogue rows the module's SQL texts rely on, on SQLite and
// PostgreSQL.
#include <QSqlQuery>

#include "data/MidasQuery.h"
#include "Fixtures.h"
#include "Schema.h"

using namespace tarvin::test;
using tarvin::db::createSchema;
using tarvin::db::schemaScript;
using tarvin::db::splitStatements;
using tarvin::sql::Dialect;

namespace {

// ---------------------------------------------------------------------------
// Splitting scripts into statements

TEST(SplitStatements, SemicolonsInsideTextsCommentsAndBodiesDoNotSplit) {
    const QString script = QStringLiteral(
        "-- a comment; with a semicolon\n"
        "CREATE TABLE t (a VARCHAR(10) DEFAULT 'x;y', \"b;c\" NUMERIC);\n"
        "INSERT INTO t (a) VALUES ('it''s; fine'); /* block; comment */\n"
        "CREATE FUNCTION f() RETURNS void LANGUAGE plpgsql AS $$\n"
        "BEGIN\n    -- inside the body; kept\n    DELETE FROM t WHERE a = 'q;';\nEND\n$$;\n"
        "CREATE FUNCTION g() RETURNS text LANGUAGE sql AS $body$ SELECT '$$;' $body$;\n"
        "SELECT $1;\nSELECT E'a\\';b', 'c\\';\n   ;  \n");
    EXPECT_EQ(splitStatements(script),
              (QStringList{"CREATE TABLE t (a VARCHAR(10) DEFAULT 'x;y', \"b;c\" NUMERIC)",
                           "INSERT INTO t (a) VALUES ('it''s; fine')",
                           "CREATE FUNCTION f() RETURNS void LANGUAGE plpgsql AS $$\n"
                           "BEGIN\n    -- inside the body; kept\n    DELETE FROM t WHERE a = 'q;';\nEND\n$$",
                           "CREATE FUNCTION g() RETURNS text LANGUAGE sql AS $body$ SELECT '$$;' $body$", "SELECT $1",
                           "SELECT E'a\\';b', 'c\\'"}));
}

// The message of the EDatabaseError `f` raises; empty if it raises none.
QString failureOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const EDatabaseError& e) {
        return e.message();
    }
    return {};
}

// (That each engine's script installs, tables before views and routines,
// every test database shows; Oracle has none.)
TEST(SplitStatements, UnterminatedPiecesAreReportedWithTheirLine) {
    EXPECT_TRUE(failureOf([] { splitStatements("SELECT 1;\nSELECT 'open"); }).contains("line 2"));
    EXPECT_TRUE(failureOf([] { splitStatements("SELECT 1;\n\nCREATE FUNCTION f() AS $$ BEGIN"); }).contains("line 3"));
    EXPECT_TRUE(failureOf([] { splitStatements("/* never closed"); }).contains("comment"));
    EXPECT_TRUE(splitStatements(" -- only a comment\n").isEmpty());
    EXPECT_THROW(schemaScript(Dialect::Oracle), EDatabaseError);
}

// ---------------------------------------------------------------------------
// The install and the catalogue. (That every table and view has the columns
// the module's texts use is shown by the SQL corpus, which runs them all.)

class SchemaTest : public EngineTest {};

TEST_P(SchemaTest, ASecondInstallFailsNamingTheStatementAndChangesNothing) {
    TestDatabase db(dialect(), /*withSchema=*/false);
    db.exec("CREATE TABLE z_report (bbmc VARCHAR(100))");
    db.exec("INSERT INTO z_report (bbmc) VALUES ('kept')");
    const QString message = failureOf([&] { createSchema(db.db()); });
    EXPECT_TRUE(message.contains("CREATE TABLE z_report")) << message.toStdString();
    // The tables created before the failing statement went with the rollback.
    EXPECT_FALSE(QSqlQuery(db.db()).exec("SELECT dummy FROM dual"));
    EXPECT_EQ(db.scalar("SELECT bbmc FROM z_report").toString(), "kept");

    db.exec("DROP TABLE z_report");
    EXPECT_NO_THROW(createSchema(db.db()));
    EXPECT_EQ(db.scalar("SELECT count(*) FROM dual").toInt(), 1);
}

// The workflow of a business: its items from the first, following xywxdm.
QStringList chainOf(TestDatabase& db, const QString& first) {
    QStringList items;
    for (QString item = first; !item.isEmpty() && items.size() < 20;
         item = db.scalar("SELECT xywxdm FROM z_lcjd WHERE ywxdm = ?", {item}).toString())
        items << item;
    return items;
}

TEST_P(SchemaTest, CatalogueHoldsTheWorkflowsAndBusinessesTheModuleStarts) {
    TestDatabase db(dialect());
    // (The inspection's own chain, item by item, is the workflow tests'.)
    for (const char* first : {"40101", "16001", "20101", "19101"}) {
        const QStringList chain = chainOf(db, first);
        EXPECT_GE(chain.size(), 2) << first;
        // Every item of a chain belongs to the business of its first item, and
        // no other item of that business leads into the first one.
        for (const QString& item : chain) EXPECT_TRUE(item.startsWith(QString(first).left(3))) << item.toStdString();
        EXPECT_EQ(db.scalar("SELECT count(*) FROM z_lcjd WHERE xywxdm = ?", {QLatin1String(first)}).toInt(), 0);
    }
    // Every workflow item is grantable (the alarm code's grant is the workflow test's).
    EXPECT_EQ(db.scalar("SELECT count(*) FROM z_lcjd l WHERE NOT EXISTS (SELECT 1 FROM z_ywx y WHERE y.ywxdm = l.ywxdm)").toInt(), 0);
    // The businesses the texts name are catalogued; business expansion is class 0001.
    for (const char* ywdm : {"160", "191", "201", "401", "402", "405", "120", "135"})
        EXPECT_EQ(db.scalar("SELECT count(*) FROM z_dlyxyw WHERE ywdm = ?", {QLatin1String(ywdm)}).toInt(), 1) << ywdm;
    EXPECT_GT(db.scalar("SELECT count(*) FROM z_dlyxyw WHERE ywlbdm = '0001'").toInt(), 5);
}

// ---------------------------------------------------------------------------
// The screening views, on a small utility: unit 01 with customers A..E.

class ScreeningViews : public EngineTest {
protected:
    void SetUp() override {
        const char* customers[] = {
            "INSERT INTO w_khlx (dm, mc) VALUES ('01', '居民')",
            "INSERT INTO w_dydj (dm, mc) VALUES ('02', '10kV')",
            // A, B, D under periodic inspection; C closed; E and F without a cycle.
            "INSERT INTO y_khda (hh, hm, dw, khlx, dydj, htrl, cbcbh, xhbz, jczq) VALUES ('000000000A', '甲', '01', '01', '02', 50, 'C1', '否', 12)",
            "INSERT INTO y_khda (hh, hm, dw, khlx, dydj, htrl, cbcbh, jczq) VALUES ('000000000B', '乙', '01', '01', '02', 315, 'C1', 6)",
            "INSERT INTO y_khda (hh, hm, dw, htrl, xhbz, jczq) VALUES ('000000000C', '丙', '01', 8, '是', 12)",
            "INSERT INTO y_khda (hh, hm, dw, htrl, jczq) VALUES ('000000000D', '丁', '02', 8, 12)",
            "INSERT INTO y_khda (hh, hm, dw, htrl) VALUES ('000000000E', '戊', '01', 8)",
            "INSERT INTO y_khda (hh, hm, dw, htrl, jczq) VALUES ('000000000F', '己', '01', 8, 0)",
            // A: main source a public area, backup from a dedicated transformer; B: dedicated only.
            "INSERT INTO y_gddy (hh, xh, dyxz, dylx, xlbh, byqbh) VALUES ('000000000A', 1, '主供', '公变', 'X1', 'T1'), "
            "('000000000A', 2, '备用', '专变', 'X2', 'T9'), ('000000000B', 1, '主供', '专变', 'X1', 'T2')",
            "INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, dw) VALUES ('T1', '一号台区', '公变', '01')",
            "INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, dw, hh) VALUES ('T2', '乙专变', '专变', '01', '000000000B')",
        };
        for (const char* s : customers) db_.exec(s);
    }
    void ledger(const char* hh, const char* ny, const char* jfdbh, double peak, double flat, double valley) {
        db_.exec("INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl) VALUES (?, ?, ?, ?, ?, ?)",
                  {QLatin1String(hh), QLatin1String(ny), QLatin1String(jfdbh), peak, flat, valley});
    }
    TestDatabase db_{dialect()};
};

TEST_P(ScreeningViews, CustomerMasterAndZeroReadingRuns) {
    // Every open account, whatever its cycle (E and F have none): not the
    // closed C; B has a dedicated transformer, so no area.
    EXPECT_EQ(rows(db_, "SELECT hh, khlx, dydj, dydjdm, khlxdm, tch, xlbh, tqbh FROM v_yckhda ORDER BY hh"),
              QStringList({"000000000A|居民|10kV|02|01|C1|X1|T1", "000000000B|居民|10kV|02|01|C1|X1|",
                           "000000000D|||||||", "000000000E|||||||", "000000000F|||||||"}));

    // Runs of zero readings count back to the last month with energy.
    ledger("000000000A", "200401", "1", 10, 80, 10);
    ledger("000000000A", "200402", "1", 0, 0, 0);
    ledger("000000000A", "200403", "1", 0, 0, 0);
    ledger("000000000A", "200403", "2", 0, 0, 0);  // two billing points, both zero: one month
    ledger("000000000A", "200404", "1", 0, 5, 0);
    ledger("000000000A", "200405", "1", 0, 0, 0);
    ledger("000000000B", "200403", "1", 0, 0, 0);  // zero from its first reading on
    ledger("000000000B", "200404", "1", 0, 0, 0);
    EXPECT_EQ(rows(db_, "SELECT hh, ny, lxldys FROM v_lxld ORDER BY hh, ny"),
              QStringList({"000000000A|200401|0", "000000000A|200402|1", "000000000A|200403|2", "000000000A|200404|0",
                           "000000000A|200405|1", "000000000B|200403|1", "000000000B|200404|2"}));
    // Changed and removed readings count at once (PostgreSQL keeps the month
    // figures beside the ledger).
    db_.exec("UPDATE b_dltzxx SET jfpdl = 0 WHERE hh = '000000000A' AND ny = '200404'");
    db_.exec("DELETE FROM b_dltzxx WHERE hh = '000000000B' AND ny = '200403'");
    EXPECT_EQ(rows(db_, "SELECT hh, ny, lxldys FROM v_lxld WHERE ny >= '200403' ORDER BY hh, ny"),
              QStringList({"000000000A|200403|2", "000000000A|200404|3", "000000000A|200405|4", "000000000B|200404|1"}));
}

TEST_P(ScreeningViews, YearOnYearSwingPeakValleyRatioAndAreaLoss) {
    ledger("000000000A", "200307", "1", 20, 50, 30);
    ledger("000000000A", "200407", "1", 30, 80, 40);   // 150 against 100: 50 %
    ledger("000000000A", "200408", "1", 30, 80, 40);   // no 200308
    ledger("000000000B", "200307", "1", 0, 0, 0);
    ledger("000000000B", "200407", "1", 10, 10, 10);   // last year zero
    ledger("000000000B", "200407", "2", 10, 10, 0);    // second point: no valley
    EXPECT_EQ(rows(db_, "SELECT hh, ny, bdl FROM v_qntqdlbd WHERE ny >= '200407' ORDER BY hh, ny"),
              QStringList({"000000000A|200407|50", "000000000A|200408|", "000000000B|200407|"}));
    EXPECT_DOUBLE_EQ(db_.scalar("SELECT fgb FROM v_fgdlyc WHERE hh = '000000000A' AND ny = '200407'").toDouble(), 75.0);
    EXPECT_TRUE(db_.scalar("SELECT fgb FROM v_fgdlyc WHERE hh = '000000000B' AND ny = '200407' AND jfdbh = '2'").isNull());
    // Peak 10 against valley 10 is 100 %, not below it.
    EXPECT_EQ(db_.scalar("SELECT count(*) FROM v_fgdlyc WHERE ny = ? AND fgb < ?", {"200407", "100"}).toInt(), 1);
    // Area T1 feeds A alone: 150 of its 200 billed.
    db_.exec("INSERT INTO g_tqgdl (tqbh, ny, dw, gdl, shsx, shxx) VALUES ('T1', '200407', '01', 200, 8, 2), "
              "('T1', '200408', '01', 0, NULL, NULL)");
    EXPECT_EQ(rows(db_, "SELECT tqbh, ny, tqmc, xsl, shsx FROM g_gytqshfx WHERE dw = '01' ORDER BY ny"),
              QStringList({"T1|200407|一号台区|25|8", "T1|200408|一号台区||"}));
    EXPECT_EQ(db_.scalar("SELECT count(*) FROM v_gybyq WHERE dw = '01'").toInt(), 1);
}

TARVIN_INSTANTIATE_ENGINES(SchemaTest);
TARVIN_INSTANTIATE_ENGINES(ScreeningViews);

}  // namespace
