// The reference schema: its scripts, its installer, and the tables, views
// and catalogue rows the module's SQL texts rely on, on SQLite and
// PostgreSQL.
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <gtest/gtest.h>

#include "data/MidasQuery.h"
#include "Schema.h"
#include "TestDb.h"

using tarvin::db::createSchema;
using tarvin::db::schemaScript;
using tarvin::db::splitStatements;
using tarvin::sql::Dialect;
using tarvin::test::EngineTest;
using tarvin::test::TestDatabase;

namespace {

// ---------------------------------------------------------------------------
// Splitting scripts into statements

TEST(SplitStatements, SemicolonsInsideTextsCommentsAndBodiesDoNotSplit) {
    const QString script = QStringLiteral(
        "-- a comment; with a semicolon\n"
        "CREATE TABLE t (a VARCHAR(10) DEFAULT 'x;y', \"b;c\" NUMERIC);\n"
        "INSERT INTO t (a) VALUES ('it''s; fine'); /* block; comment */\n"
        "CREATE FUNCTION f() RETURNS void LANGUAGE plpgsql AS $$\n"
        "BEGIN\n"
        "    -- inside the body; kept\n"
        "    DELETE FROM t WHERE a = 'q;';\n"
        "END\n"
        "$$;\n"
        "CREATE FUNCTION g() RETURNS text LANGUAGE sql AS $body$ SELECT '$$;' $body$;\n"
        "SELECT $1;\n"
        "SELECT E'a\\';b', 'c\\';\n"
        "   ;  \n");
    const QStringList s = splitStatements(script);
    ASSERT_EQ(s.size(), 6) << s.join(QStringLiteral("\n----\n")).toStdString();
    EXPECT_EQ(s[0], QStringLiteral("CREATE TABLE t (a VARCHAR(10) DEFAULT 'x;y', \"b;c\" NUMERIC)"));
    EXPECT_EQ(s[1], QStringLiteral("INSERT INTO t (a) VALUES ('it''s; fine')"));
    EXPECT_TRUE(s[2].startsWith(QStringLiteral("CREATE FUNCTION f()")));
    EXPECT_TRUE(s[2].contains(QStringLiteral("-- inside the body; kept")));
    EXPECT_TRUE(s[2].endsWith(QStringLiteral("END\n$$")));
    EXPECT_EQ(s[3], QStringLiteral("CREATE FUNCTION g() RETURNS text LANGUAGE sql AS $body$ SELECT '$$;' $body$"));
    EXPECT_EQ(s[4], QStringLiteral("SELECT $1"));
    EXPECT_EQ(s[5], QStringLiteral("SELECT E'a\\';b', 'c\\'"));
}

TEST(SplitStatements, UnterminatedPiecesAreReportedWithTheirLine) {
    const auto messageOf = [](const QString& script) {
        try {
            splitStatements(script);
        } catch (const EDatabaseError& e) {
            return e.message();
        }
        return QString();
    };
    EXPECT_TRUE(messageOf(QStringLiteral("SELECT 1;\nSELECT 'open")).contains(QStringLiteral("line 2")));
    EXPECT_TRUE(messageOf(QStringLiteral("SELECT 1;\n\nCREATE FUNCTION f() AS $$ BEGIN")).contains(QStringLiteral("line 3")));
    EXPECT_TRUE(messageOf(QStringLiteral("/* never closed")).contains(QStringLiteral("comment")));
    EXPECT_TRUE(splitStatements(QStringLiteral(" -- only a comment\n")).isEmpty());
}

TEST(SchemaScript, TablesAndCatalogueComeBeforeEachEnginesViewsAndRoutines) {
    for (Dialect d : {Dialect::SQLite, Dialect::PostgreSQL}) {
        const QString script = schemaScript(d);
        const qsizetype tables = script.indexOf(QStringLiteral("-- 10_tables.sql"));
        const qsizetype views = script.indexOf(QStringLiteral("-- 20_views.sql"));
        const qsizetype seed = script.indexOf(QStringLiteral("-- 40_seed.sql"));
        EXPECT_TRUE(tables >= 0 && views > tables && seed > views) << dialectName(d).toStdString();
    }
}

TEST(SchemaScript, OracleHasNoReferenceSchema) {
    EXPECT_THROW(schemaScript(Dialect::Oracle), EDatabaseError);
    EXPECT_FALSE(schemaScript(Dialect::SQLite).isEmpty());
    EXPECT_TRUE(schemaScript(Dialect::PostgreSQL).contains(QStringLiteral("CREATE FUNCTION jc_pjdlbd")));
}

// ---------------------------------------------------------------------------
// Every table and view the module's texts use, with the columns they use.

struct Object {
    const char* name;
    const char* columns;
};

const Object kObjects[] = {
    {"dual", "dummy"},
    // organisation, operators, posts
    {"v_dw", "dm, mc, sjdw"},
    {"z_bmbm", "dm, mc"},
    {"z_xtczy", "dm, xingming"},
    {"z_czyygw", "czydm, zdm"},
    {"z_gw", "dm, sfyx"},
    {"z_gwyzn", "gwdm, zndm"},
    {"z_ywzn", "dm, sfyx"},
    {"z_znyywx", "zndm, cldm"},
    // workflow
    {"z_dlyxyw", "ywdm, ywmc, ywlbdm"},
    {"z_ywx", "ywxdm, ywxmc, ywdm"},
    {"z_lcjd", "ywxdm, ywxmc, ywdm, xywxdm"},
    {"z_dqgw", "cdbh, khbh, hm, yddz, dqywx, lastywxmc, dqywxmc, czy, glbm"},
    {"z_lcls", "cdbh, xh, ywxdm, czy, jssj, wcsj"},
    {"z_gzdxx", "cdbh, xh, jsczy, fssj"},
    {"z_report", "bbmc, mb"},
    // code tables
    {"w_khlx", "dm, mc"},
    {"w_dydj", "dm, mc"},
    {"c_dydj", "dm, mc"},
    {"w_ydlb", "dm, mc"},
    {"w_zyhy", "dm, mc"},
    {"w_qy", "dm, mc"},
    {"w_yhdm", "dm, mc"},
    {"v_fkfs", "dm, mc"},
    {"w_jclx", "dm, mc"},
    {"w_jcxm", "dm, mc"},
    {"w_qxxz", "dm, mc"},
    {"w_gzxz", "dm, mc"},
    {"w_dblb", "dm, mc"},
    {"w_dl", "mc"},
    {"w_xx", "mc"},
    {"w_dbdy", "mc"},
    {"w_dnbjd", "dm, dmsm"},
    {"w_hgqlb", "dm, mc"},
    {"w_hgqjd", "dm, mc"},
    {"w_dlbb", "mc"},
    {"w_dybb", "mc"},
    {"b_djb", "djm, djmc"},
    {"all_djm", "djm, djmc"},
    // network
    {"y_bdz", "bdzbh, bdzmc"},
    {"y_xl", "xlbh, xlmc, sjxlbh, bdzbh, dw"},
    {"y_yxbyq", "byqbh, byqmc"},
    {"v_gybyq", "byqbh, byqmc, dw"},
    {"g_gytqshfx", "dw, ny, tqbh, tqmc, xsl, shsx, shxx"},
    // customer file
    {"y_khda",
     "hh, hm, yddz, pym, khlx, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, "
     "xzq, sfxyh, zwlxdh, zwlxr, zwlxdz, zzsyh, zzszh, zzsh, zzsm, zcdz, scbc, zxr, cbcbh, yhh, xhbz, scjcrq, jczq, cdbh"},
    {"g_khda", "hh, hm"},
    {"y_gddy", "hh, dyxz, dylx, xlbh, byqbh"},
    {"y_jfxx", "hh, djm, js, jflx, dldbz"},
    {"y_htxx", "hh, yxrq"},
    {"y_yxdnb",
     "hh, jfdbh, jldbh, txm, byqbh, dnbcch, dblb, dl, xx, jddj, dy, bj, cbsx, zhbl, cq, ckbbz, gkbbz, jlzzdfl, zbwz, jbh, "
     "ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, dw"},
    {"y_yxhgq", "hh, hgqbh, jldbh, sddbh, hgqcch, hgqlb, hgqbb, dw"},
    {"e_zbdygl", "hh"},
    {"v_yckhda",
     "hh, hm, yddz, khlx, htrl, dydj, scjcrq, jczq, zxr, lxr, lxdh, dw, dydjdm, khlxdm, ydlb, tch, xlbh, tqbh, hyfl, cdbh"},
    {"v_lxld", "ny, lxldys, hh, hm, dw, dydjdm, khlxdm, ydlb, htrl, tch, xlbh, tqbh, hyfl"},
    {"v_qntqdlbd", "ny, bdl, hh, hm, dw, dydjdm, khlxdm, ydlb, htrl, tch, xlbh, tqbh, hyfl"},
    {"v_fgdlyc", "hh, ny, fgb"},
    // billing
    {"b_cbc", "cbcbh, cbcmc, dw"},
    {"b_dltzxx", "hh, ny, jffdl, jfpdl, jfgdl, sjll, llkhbz"},
    {"c_dfxx", "hh, ny, ysdf"},
    {"b_tbjl", "tbcdh, glcdbh"},
    {"b_tbdfxx", "tbcdh, fdl, gdl, pdl, fdf, gdf, pdf, dsk6, dsk7, rldf, xldf, lldf"},
    // applications
    {"a_khsqxx",
     "cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, fkfs, hyfl, ydlb, "
     "dydj, yhdm, yhzh, dw, xzq, sfxyh, zwlxdh, zwlxr, zwlxdz, zzsyh, zzszh, zzsh, zzsm, zcdz, scbc, zxr, cbcbh, yhh"},
    {"a_ykkzb", "cdbh, sfygz, sfxyb, sfcjx, sfxysf, htrl"},
    {"a_h_khsqxx", "hh, cdbh, ywdm, sqrq"},
    {"a_h_ykkzb", "cdbh, sfwyqd, sfygz"},
    {"a_gdfa", "gdfabh, cdbh, hh, kcr, kcbz, kcrq"},
    {"a_dnbfa",
     "id, cdbh, hh, jfdbh, jldbh, txm, byqbh, dnbcch, dblb, gzlx, dl, xx, bgsm, jddj, dy, bj, cbsx, dw, zhbl, cq, ckbbz, "
     "gkbbz, jlzzdfl, thdl, thxx, zbwz, jbh, ygxsjsfs, ygxsjsz, wgxsjsfs, wgxsjsz, cblb, sslx"},
    {"a_hgqfa", "id, cdbh, hh, jldbh, sddbh, hgqcch, hgqbh, hgqlb, hgqbb, bgsm, zs, gzlb, dw"},
    // inspection
    {"e_jcjh", "jhbh, jhlx, zdr, zdrq, zdbm, dw, jhjcqrq, jhjczrq, jcbm, jchs, jcnr, bz"},
    {"e_jcryxx", "czydm, xm, jczh, jczjb, xb, dw"},
    {"e_jcgzap", "jcph, jcbm, jcnr, dw, bz, zdr, zdsj, spr, spyj, sprq"},
    {"e_jcgzjl",
     "cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, jcry, jczh, qtry, hjrs, zt, jcph, "
     "dybz, jcrq, jczg, fjlxdh, khqz, jcjg, czwt"},
    {"e_jcjg", "cdbh, dm, mc, xcqk"},
    {"e_qxqkjl", "cdbh, hh"},
    {"e_jlycgzd",
     "cdbh, hh, hm, yddz, jcry, jczh, ycxz, gzlx, rdyj, jcrq, jcbz, dw, ywdm, sfcl, zbzdl, zbdldf, zbjbdf, zblldf, "
     "wysydf, yzbdf, clbz, clry, clrq, spry, sprq"},
    {"j_wyydqd", "cdbh, hh"},
    {"j_wymx", "cdbh"},
    // alarms
    {"e_bjxz", "czydm, bjdm, sfyx"},
    {"e_bjtx", "ny, hh, bjdm, bjxm, dw, zt, txrq, clqk, clr, clrq"},
};

class SchemaTest : public EngineTest {};

TEST_P(SchemaTest, EveryTableAndViewHasTheColumnsTheTextsUse) {
    TestDatabase db(dialect());
    QStringList missing;
    for (const Object& o : kObjects) {
        QSqlQuery q(db.db());
        const QString sql = QStringLiteral("SELECT %1 FROM %2 WHERE 1 = 0").arg(QLatin1String(o.columns), QLatin1String(o.name));
        if (!q.exec(sql)) missing << QStringLiteral("%1: %2").arg(QLatin1String(o.name), q.lastError().text());
    }
    EXPECT_TRUE(missing.isEmpty()) << missing.join(QLatin1Char('\n')).toStdString();
}

// Texts that join tables and name columns without a prefix (outer joins
// written as the bridge writes them): no column may be ambiguous.
TEST_P(SchemaTest, JoinedTextsNameNoAmbiguousColumn) {
    TestDatabase db(dialect());
    const char* texts[] = {
        "select jhbh, jhlx, zdr, zdrq, zdbm, dw, jhjcqrq, jhjczrq, jcbm, jchs, jcnr, bz, b.mc zdbmmc "
        "from e_jcjh a LEFT JOIN z_bmbm b ON a.zdbm = b.dm where a.dw = '01' and a.jhlx = '年计划'",
        "select jcph, b.mc jcbmmc, jcnr, spr, spyj, sprq, dw, bz jhbz, zdr, zdsj zdrq "
        "from e_jcgzap a LEFT JOIN z_bmbm b ON a.jcbm = b.dm where jcph = '1'",
        "select CDBH, KHBH, HM, YDDZ, DQYWX, LASTYWXMC, DQYWXMC, CZY, C.XINGMING "
        "from Z_DQGW A JOIN Z_LCJD B ON A.DQYWX = B.YWXDM LEFT JOIN Z_XTCZY C ON A.CZY = C.DM",
        "select jldbh, bgsm, dnbcch, dblb, b.mc gzlxmc, xx, dy, dl, zhbl "
        "from A_DNBFA a LEFT JOIN w_gzxz b ON a.gzlx = b.dm where bgsm = '换取' and cdbh = '1'",
        "SELECT CDBH, HH, HM, YDDZ, jclx, JHJCRQ, JCRY, ZT, dybz FROM E_JCGZJL A LEFT JOIN E_JCGZAP C ON A.JCPH = C.JCPH "
        "WHERE cdbh in (select cdbh from z_dqgw where dqywx = '40103') and C.dw = '01'",
        "select a.*, b.mc xzqmc from a_KHSQXX a LEFT JOIN w_qy b ON a.xzq = b.dm where CDBH = '1'",
        "Select A.cdbh, A.HH, A.Hm, B.dqywxmc, a.ywdm From A_KHSQXX A, Z_DQGW B Where A.HH = '1' and A.CDbh = B.Cdbh",
        "SELECT DISTINCT C.*, D.HM, D.YDDZ FROM e_bjtx C, Y_KHDA D, Z_YWX E WHERE C.ZT = '未处理' AND C.HH = D.HH and c.dw = '01' "
        "And exists(select 1 from z_czyygw a1, z_gw b1, z_gwyzn c1, z_ywzn d1, z_znyywx e1 where a1.czydm = 'x' "
        "and a1.zdm = c1.gwdm and c1.gwdm = b1.dm and b1.sfyx = 1 and c1.zndm = e1.zndm and e1.zndm = d1.dm "
        "and d1.sfyx = 1 and e1.cldm = '40099') AND EXISTS(SELECT 1 FROM e_bjxz WHERE czydm = 'x' AND bjdm = c.bjdm AND sfyx = '是') "
        "order by c.bjdm, c.txrq",
    };
    for (const char* text : texts) {
        QSqlQuery q(db.db());
        EXPECT_TRUE(q.exec(QString::fromUtf8(text))) << text << "\n" << q.lastError().text().toStdString();
    }
}

TEST_P(SchemaTest, ASecondInstallFailsNamingTheStatementAndChangesNothing) {
    TestDatabase db(dialect(), /*withSchema=*/false);
    db.exec(QStringLiteral("CREATE TABLE z_report (bbmc VARCHAR(100))"));
    db.exec(QStringLiteral("INSERT INTO z_report (bbmc) VALUES ('kept')"));
    QString message;
    try {
        createSchema(db.db());
    } catch (const EDatabaseError& e) {
        message = e.message();
    }
    EXPECT_TRUE(message.contains(QStringLiteral("CREATE TABLE z_report"))) << message.toStdString();
    // The tables created before the failing statement went with the rollback.
    QSqlQuery q(db.db());
    EXPECT_FALSE(q.exec(QStringLiteral("SELECT dummy FROM dual")));
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT bbmc FROM z_report")).toString(), QStringLiteral("kept"));

    db.exec(QStringLiteral("DROP TABLE z_report"));
    EXPECT_NO_THROW(createSchema(db.db()));
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM dual")).toInt(), 1);
}

// The workflow of a business: its items from the first, following xywxdm.
QStringList chainOf(TestDatabase& db, const QString& first) {
    QStringList items;
    QString item = first;
    while (!item.isEmpty() && items.size() < 20) {
        items << item;
        item = db.scalar(QStringLiteral("SELECT xywxdm FROM z_lcjd WHERE ywxdm = ?"), {item}).toString();
    }
    return items;
}

TEST_P(SchemaTest, CatalogueHoldsTheWorkflowsAndBusinessesTheModuleStarts) {
    TestDatabase db(dialect());
    EXPECT_EQ(chainOf(db, QStringLiteral("40101")),
              QStringList({QStringLiteral("40101"), QStringLiteral("40102"), QStringLiteral("40103"), QStringLiteral("40104")}));
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT ywxmc FROM z_lcjd WHERE ywxdm = '40103'")).toString(), QStringLiteral("检查工作单打印"));
    for (const char* first : {"16001", "20101", "19101"}) {
        const QStringList chain = chainOf(db, QLatin1String(first));
        EXPECT_GE(chain.size(), 2) << first;
        // Every item of a chain belongs to the business of its first item, and
        // no other item of that business leads into the first one.
        for (const QString& item : chain) EXPECT_TRUE(item.startsWith(QLatin1String(first).left(3))) << item.toStdString();
        EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM z_lcjd WHERE xywxdm = ?"), {QLatin1String(first)}).toInt(), 0);
    }
    // Every workflow item is grantable, and so is the alarm-handling code.
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM z_lcjd l WHERE NOT EXISTS (SELECT 1 FROM z_ywx y WHERE y.ywxdm = l.ywxdm)")).toInt(), 0);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM z_ywx WHERE ywxdm = '40099'")).toInt(), 1);
    // The businesses the texts name are catalogued; business expansion is class 0001.
    for (const char* ywdm : {"160", "191", "201", "401", "402", "405", "120", "135"})
        EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM z_dlyxyw WHERE ywdm = ?"), {QLatin1String(ywdm)}).toInt(), 1) << ywdm;
    EXPECT_GT(db.scalar(QStringLiteral("SELECT count(*) FROM z_dlyxyw WHERE ywlbdm = '0001'")).toInt(), 5);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT dummy FROM dual")).toString(), QStringLiteral("X"));
}

// ---------------------------------------------------------------------------
// The screening views, on a small utility: unit 01 with customers A..E.

class ScreeningViews : public EngineTest {
protected:
    void SetUp() override {
        db_ = std::make_unique<TestDatabase>(dialect());
        TestDatabase& d = *db_;
        d.exec(QStringLiteral("INSERT INTO w_khlx (dm, mc) VALUES ('01', '居民')"));
        d.exec(QStringLiteral("INSERT INTO w_dydj (dm, mc) VALUES ('02', '10kV')"));
        const char* customers[] = {
            // A, B, D under periodic inspection; C closed; E and F without a cycle.
            "INSERT INTO y_khda (hh, hm, dw, khlx, dydj, htrl, cbcbh, xhbz, jczq) VALUES ('000000000A', '甲', '01', '01', '02', 50, 'C1', '否', 12)",
            "INSERT INTO y_khda (hh, hm, dw, khlx, dydj, htrl, cbcbh, jczq) VALUES ('000000000B', '乙', '01', '01', '02', 315, 'C1', 6)",
            "INSERT INTO y_khda (hh, hm, dw, htrl, xhbz, jczq) VALUES ('000000000C', '丙', '01', 8, '是', 12)",
            "INSERT INTO y_khda (hh, hm, dw, htrl, jczq) VALUES ('000000000D', '丁', '02', 8, 12)",
            "INSERT INTO y_khda (hh, hm, dw, htrl) VALUES ('000000000E', '戊', '01', 8)",
            "INSERT INTO y_khda (hh, hm, dw, htrl, jczq) VALUES ('000000000F', '己', '01', 8, 0)",
            // A: main source a public area, backup from a dedicated transformer; B: dedicated only.
            "INSERT INTO y_gddy (hh, xh, dyxz, dylx, xlbh, byqbh) VALUES ('000000000A', 1, '主供', '公变', 'X1', 'T1')",
            "INSERT INTO y_gddy (hh, xh, dyxz, dylx, xlbh, byqbh) VALUES ('000000000A', 2, '备用', '专变', 'X2', 'T9')",
            "INSERT INTO y_gddy (hh, xh, dyxz, dylx, xlbh, byqbh) VALUES ('000000000B', 1, '主供', '专变', 'X1', 'T2')",
            "INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, dw) VALUES ('T1', '一号台区', '公变', '01')",
            "INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, dw, hh) VALUES ('T2', '乙专变', '专变', '01', '000000000B')",
        };
        for (const char* s : customers) d.exec(QString::fromUtf8(s));
    }
    void ledger(const char* hh, const char* ny, const char* jfdbh, double peak, double flat, double valley) {
        db_->exec(QStringLiteral("INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl) VALUES (?, ?, ?, ?, ?, ?)"),
                  {QLatin1String(hh), QLatin1String(ny), QLatin1String(jfdbh), peak, flat, valley});
    }
    std::unique_ptr<TestDatabase> db_;
};

TEST_P(ScreeningViews, CustomerMasterHasOneRowPerOpenAccountWithItsMainSource) {
    TestDatabase& d = *db_;
    // Open accounts under periodic inspection only: not the closed C, not E
    // and F without a cycle.
    EXPECT_EQ(d.scalar(QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE a.dw = ? AND 1 = 1"), {QStringLiteral("01")}).toInt(), 2);
    EXPECT_EQ(d.scalar(QStringLiteral("SELECT count(*) FROM v_yckhda WHERE hh IN ('000000000C', '000000000E', '000000000F')")).toInt(), 0);
    d.exec(QStringLiteral("UPDATE y_khda SET jczq = 24 WHERE hh = '000000000E'"));
    EXPECT_EQ(d.scalar(QStringLiteral("SELECT jczq FROM v_yckhda WHERE hh = '000000000E'")).toInt(), 24);
    QSqlQuery q(d.db());
    ASSERT_TRUE(q.exec(QStringLiteral("SELECT hh, khlx, dydj, dydjdm, khlxdm, tch, xlbh, tqbh FROM v_yckhda ORDER BY hh")));
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(0).toString(), QStringLiteral("000000000A"));
    EXPECT_EQ(q.value(1).toString(), QStringLiteral("居民"));
    EXPECT_EQ(q.value(2).toString(), QStringLiteral("10kV"));
    EXPECT_EQ(q.value(3).toString(), QStringLiteral("02"));
    EXPECT_EQ(q.value(4).toString(), QStringLiteral("01"));
    EXPECT_EQ(q.value(5).toString(), QStringLiteral("C1"));
    EXPECT_EQ(q.value(6).toString(), QStringLiteral("X1"));
    EXPECT_EQ(q.value(7).toString(), QStringLiteral("T1"));
    ASSERT_TRUE(q.next());  // B: dedicated transformer, so no area
    EXPECT_EQ(q.value(6).toString(), QStringLiteral("X1"));
    EXPECT_TRUE(q.value(7).isNull());
    // The contracted capacity compares as a number with a bound text.
    EXPECT_EQ(d.scalar(QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE a.htrl >= ? AND a.htrl <= ? AND a.dw = '01'"),
                       {QStringLiteral("9"), QStringLiteral("100")}).toInt(), 1);
    EXPECT_EQ(d.scalar(QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE a.tqbh = ?"), {QStringLiteral("T1")}).toInt(), 1);
}

TEST_P(ScreeningViews, ZeroReadingRunsCountBackToTheLastMonthWithEnergy) {
    ledger("000000000A", "200401", "1", 10, 80, 10);
    ledger("000000000A", "200402", "1", 0, 0, 0);
    ledger("000000000A", "200403", "1", 0, 0, 0);
    ledger("000000000A", "200403", "2", 0, 0, 0);  // two billing points, both zero: one month
    ledger("000000000A", "200404", "1", 0, 5, 0);
    ledger("000000000A", "200405", "1", 0, 0, 0);
    ledger("000000000B", "200403", "1", 0, 0, 0);  // zero from its first reading on
    ledger("000000000B", "200404", "1", 0, 0, 0);
    TestDatabase& d = *db_;
    const auto run = [&](const char* hh, const char* ny) {
        return d.scalar(QStringLiteral("SELECT lxldys FROM v_lxld a WHERE a.hh = ? AND ny = ?"), {QLatin1String(hh), QLatin1String(ny)});
    };
    EXPECT_EQ(run("000000000A", "200401").toInt(), 0);
    EXPECT_EQ(run("000000000A", "200402").toInt(), 1);
    EXPECT_EQ(run("000000000A", "200403").toInt(), 2);
    EXPECT_EQ(run("000000000A", "200404").toInt(), 0);
    EXPECT_EQ(run("000000000A", "200405").toInt(), 1);
    EXPECT_EQ(run("000000000B", "200404").toInt(), 2);
    EXPECT_EQ(d.scalar(QStringLiteral("SELECT count(*) FROM v_lxld a WHERE a.hh = '000000000A' AND ny = '200403'")).toInt(), 1);
    // As the screening text binds them: the month and the run length as texts.
    EXPECT_EQ(d.scalar(QStringLiteral(" SELECT count(*) jls FROM V_LXLD A WHERE  NY=? AND LXLDYS>? AND  a.Dw=?  and  1=1"),
                       {QStringLiteral("200403"), QStringLiteral("1"), QStringLiteral("01")}).toInt(), 1);
    EXPECT_EQ(d.scalar(QStringLiteral(" SELECT count(*) jls FROM V_LXLD A WHERE  NY=? AND LXLDYS=? AND  a.Dw=?  and  1=1"),
                       {QStringLiteral("200404"), QStringLiteral("2"), QStringLiteral("01")}).toInt(), 1);
}

TEST_P(ScreeningViews, YearOnYearSwingAndPeakValleyRatio) {
    ledger("000000000A", "200307", "1", 20, 50, 30);
    ledger("000000000A", "200407", "1", 30, 80, 40);   // 150 against 100: 50 %
    ledger("000000000A", "200408", "1", 30, 80, 40);   // no 200308
    ledger("000000000B", "200307", "1", 0, 0, 0);
    ledger("000000000B", "200407", "1", 10, 10, 10);   // last year zero
    ledger("000000000B", "200407", "2", 10, 10, 0);    // second point: no valley
    TestDatabase& d = *db_;
    EXPECT_DOUBLE_EQ(d.scalar(QStringLiteral("SELECT bdl FROM v_qntqdlbd a WHERE a.hh = '000000000A' AND ny = '200407'")).toDouble(), 50.0);
    EXPECT_TRUE(d.scalar(QStringLiteral("SELECT bdl FROM v_qntqdlbd a WHERE a.hh = '000000000A' AND ny = '200408'")).isNull());
    EXPECT_TRUE(d.scalar(QStringLiteral("SELECT bdl FROM v_qntqdlbd a WHERE a.hh = '000000000B' AND ny = '200407'")).isNull());
    EXPECT_EQ(d.scalar(QStringLiteral(" SELECT count(*) jls FROM v_qntqdlbd A WHERE  NY=? AND BDL>? AND  a.Dw=?  and  1=1"),
                       {QStringLiteral("200407"), QStringLiteral("30"), QStringLiteral("01")}).toInt(), 1);
    EXPECT_EQ(d.scalar(QStringLiteral(" SELECT count(*) jls FROM v_qntqdlbd A WHERE  NY=? AND BDL>? AND  a.Dw=?  and  1=1"),
                       {QStringLiteral("200407"), QStringLiteral("50"), QStringLiteral("01")}).toInt(), 0);

    EXPECT_DOUBLE_EQ(d.scalar(QStringLiteral("SELECT fgb FROM v_fgdlyc WHERE hh = '000000000A' AND ny = '200407'")).toDouble(), 75.0);
    EXPECT_TRUE(d.scalar(QStringLiteral("SELECT fgb FROM v_fgdlyc WHERE hh = '000000000B' AND ny = '200407' AND jfdbh = '2'")).isNull());
    // Peak 10 against valley 10 is 100 %, not below it.
    EXPECT_EQ(d.scalar(QStringLiteral("SELECT count(*) FROM v_fgdlyc b WHERE b.ny = ? AND b.fgb < ?"),
                       {QStringLiteral("200407"), QStringLiteral("100")}).toInt(), 1);
}

TEST_P(ScreeningViews, AreaLossComparesSuppliedWithBilledEnergy) {
    TestDatabase& d = *db_;
    d.exec(QStringLiteral("INSERT INTO g_tqgdl (tqbh, ny, dw, gdl, shsx, shxx) VALUES ('T1', '200407', '01', 200, 8, 2)"));
    d.exec(QStringLiteral("INSERT INTO g_tqgdl (tqbh, ny, dw, gdl) VALUES ('T1', '200408', '01', 0)"));
    ledger("000000000A", "200407", "1", 30, 80, 40);  // A is fed from T1: 150 of 200 billed
    ledger("000000000B", "200407", "1", 30, 80, 40);  // B is not
    QSqlQuery q(d.db());
    ASSERT_TRUE(q.exec(QStringLiteral(" select * from g_gytqshfx  where dw='01' and  ny='200407' ")));
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(QStringLiteral("tqmc")).toString(), QStringLiteral("一号台区"));
    EXPECT_DOUBLE_EQ(q.value(QStringLiteral("xsl")).toDouble(), 25.0);
    EXPECT_DOUBLE_EQ(q.value(QStringLiteral("shsx")).toDouble(), 8.0);
    EXPECT_FALSE(q.next());
    EXPECT_TRUE(d.scalar(QStringLiteral("SELECT xsl FROM g_gytqshfx WHERE ny = '200408'")).isNull());
    EXPECT_EQ(d.scalar(QStringLiteral("SELECT count(*) FROM v_gybyq WHERE dw = '01'")).toInt(), 1);
}

TARVIN_INSTANTIATE_ENGINES(SchemaTest);
TARVIN_INSTANTIATE_ENGINES(ScreeningViews);

}  // namespace
