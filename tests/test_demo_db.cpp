// The demo utility generator: determinism, coherence of what it writes, the
// planted screening cases, the refusal of a database that already holds the
// schema, and the command-line program.
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "data/Connection.h"
#include "data/MidasQuery.h"
#include "DemoGenerator.h"
#include "Fixtures.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;
using tarvin::demo::createDemoDatabase;
using tarvin::demo::DemoOptions;
using tarvin::demo::DemoSummary;
using tarvin::sql::Dialect;

namespace {

DemoOptions smallDemo(std::uint64_t seed = 7) { return {.customers = 400, .seed = seed, .today = QDate(2025, 1, 2)}; }

// Key tables in key order, read asText (alike on both engines), hashed.
QByteArray checksum(TestDatabase& d) {
    static const char* tables[][2] = {
        {"z_dwbm", "dm"}, {"z_xtczy", "dm"}, {"z_czyygw", "czydm, zdm"}, {"z_gwyzn", "gwdm, zndm"}, {"e_jcryxx", "czydm"},
        {"y_xl", "xlbh"}, {"y_yxbyq", "byqbh"}, {"g_tqgdl", "tqbh, ny"}, {"y_khda", "hh"}, {"y_gddy", "hh, xh"},
        {"y_jfxx", "hh, jfdbh"}, {"y_htxx", "hh, htbh"}, {"y_yxdnb", "txm"}, {"y_yxhgq", "hgqbh"}, {"b_dltzxx", "hh, ny, jfdbh"},
        {"c_dfxx", "hh, ny, xh"}, {"a_h_khsqxx", "cdbh"}, {"a_h_ykkzb", "cdbh"}, {"e_jcgzap", "jcph"}, {"e_jcgzjl", "cdbh"},
        {"z_dqgw", "cdbh"}, {"z_lcls", "cdbh, xh"}, {"a_dnbfa", "id"}, {"e_bjtx", "ny, hh, bjdm"}};
    QCryptographicHash h(QCryptographicHash::Sha256);
    for (const auto& t : tables)
        h.addData(rows(d, u"SELECT '%1', x.* FROM %1 x ORDER BY %2"_s.arg(QLatin1String(t[0]), QLatin1String(t[1]))).join(u'\n').toUtf8());
    return h.result().toHex();
}

class DemoDb : public EngineTest {
protected:
    std::unique_ptr<TestDatabase> demo(const DemoOptions& o, DemoSummary* summary = nullptr,
                                       const QString& connection = u"Shdl"_s) {
        auto d = std::make_unique<TestDatabase>(dialect(), false, connection);
        const DemoSummary s = createDemoDatabase(d->db(), o);
        if (summary) *summary = s;
        return d;
    }
};

TEST_P(DemoDb, OneSeedGivesOneUtilityAnotherSeedAnother) {
    const auto a = demo(smallDemo(7), nullptr, u"demo_a"_s);
    const auto b = demo(smallDemo(7), nullptr, u"demo_b"_s);
    const auto c = demo(smallDemo(8), nullptr, u"demo_c"_s);
    const QByteArray sa = checksum(*a);
    EXPECT_EQ(sa, checksum(*b));
    EXPECT_NE(sa, checksum(*c));
    EXPECT_EQ(c->scalar(u"SELECT count(*) FROM v_yckhda WHERE dw = '0101' AND jczq > 0"_s).toInt(), 30) << "the same shape";
}

TEST(DemoAcrossEngines, OneSeedWritesTheSameUtilityOnSQLiteAndPostgreSQL) {
    if (tarvin::test::engines().size() < 2) GTEST_SKIP() << "no PostgreSQL server (TARVIN_TEST_PG_URL)";
    TestDatabase lite(Dialect::SQLite, false, u"demo_lite"_s);
    TestDatabase pg(Dialect::PostgreSQL, false, u"demo_pg"_s);
    createDemoDatabase(lite.db(), smallDemo(11));
    createDemoDatabase(pg.db(), smallDemo(11));
    EXPECT_EQ(checksum(lite), checksum(pg));
}

TEST_P(DemoDb, CustomersMetersSourcesAndDocumentsHangTogether) {
    DemoSummary s;
    const auto d = demo(smallDemo(), &s);
    TestDatabase& db = *d;
    EXPECT_EQ(s.units, QStringList({u"0101"_s, u"0102"_s}));
    EXPECT_EQ(s.inspectedFirstUnit, 30);
    // Two years of ledger up to the current month; open cases at the approval of the first unit.
    EXPECT_EQ(db.scalar(u"SELECT max(ny) FROM b_dltzxx"_s).toString(), u"202501"_s);
    EXPECT_GT(db.scalar(u"SELECT count(*) FROM z_dqgw WHERE dqywx = '40102' AND glbm = '0101'"_s).toInt(), 0);
    // The high-loss area docs/demo.md names, which the screening tests use.
    EXPECT_EQ(rows(db, u"SELECT tqbh FROM g_gytqshfx WHERE dw = '0101' AND ny = '202501' AND xsl > shsx"_s),
              QStringList{u"T0100001"_s});

    // Each finds the rows that break a rule: there must be none.
    QStringList broken{
        // Exactly one main source per customer, and a meter.
        u"SELECT hh FROM y_khda k WHERE (SELECT count(*) FROM y_gddy g WHERE g.hh = k.hh AND g.dyxz = '主供') <> 1"_s,
        u"SELECT hh FROM y_khda k WHERE NOT EXISTS (SELECT 1 FROM y_yxdnb m WHERE m.hh = k.hh)"_s,
        // The file's last document is an archived business-expansion application of the customer.
        u"SELECT hh FROM y_khda k WHERE NOT EXISTS (SELECT 1 FROM a_h_khsqxx a, z_dlyxyw y "
         "WHERE a.cdbh = k.cdbh AND a.hh = k.hh AND y.ywdm = a.ywdm AND y.ywlbdm = '0001')"_s,
        // Network: feeders climb to '00001', areas are public transformers of the unit, books exist.
        u"SELECT xlbh FROM y_xl x WHERE x.sjxlbh <> '00001' AND NOT EXISTS "
         "(SELECT 1 FROM y_xl p WHERE p.xlbh = x.sjxlbh AND p.sjxlbh = '00001' AND p.dw = x.dw)"_s,
        u"SELECT hh FROM y_gddy g WHERE NOT EXISTS (SELECT 1 FROM y_xl x WHERE x.xlbh = g.xlbh AND x.dw = g.dw)"_s,
        u"SELECT hh FROM y_gddy g WHERE NOT EXISTS (SELECT 1 FROM y_yxbyq b WHERE b.byqbh = g.byqbh AND b.byqlx = g.dylx)"_s,
        u"SELECT hh FROM y_khda k WHERE NOT EXISTS (SELECT 1 FROM b_cbc c WHERE c.cbcbh = k.cbcbh AND c.dw = k.dw)"_s,
        u"SELECT hh FROM y_khda WHERE length(cbcbh) > 6 OR length(hh) <> 10"_s,
        u"SELECT xlbh FROM y_xl WHERE length(xlbh) > 7"_s,
        // Customers under inspection have 24 months of ledger; the last inspection date is
        // that of the customer's last completed inspection.
        u"SELECT hh FROM v_yckhda a WHERE a.jczq > 0 AND (SELECT count(DISTINCT ny) FROM b_dltzxx b WHERE b.hh = a.hh) <> 24"_s,
        u"SELECT hh FROM y_khda k WHERE k.scjcrq IS NOT NULL AND k.scjcrq <> "
         "(SELECT max(j.jhjcrq) FROM e_jcgzjl j WHERE j.hh = k.hh AND j.zt = '已检查')"_s,
        // Planted anomalies are customers the screening sees.
        u"SELECT h.hh FROM a_h_khsqxx h, a_h_ykkzb k WHERE h.cdbh = k.cdbh AND k.sfwyqd = '是' "
         "AND to_char(h.sqrq, 'yyyy') = '2025' AND NOT EXISTS (SELECT 1 FROM v_yckhda a WHERE a.hh = h.hh)"_s,
        // Open cases stand at an item of the workflow, with the steps that led there.
        u"SELECT cdbh FROM z_dqgw d WHERE NOT EXISTS (SELECT 1 FROM z_lcjd l WHERE l.ywxdm = d.dqywx) "
         "OR NOT EXISTS (SELECT 1 FROM a_khsqxx a WHERE a.cdbh = d.cdbh) "
         "OR NOT EXISTS (SELECT 1 FROM z_lcls s WHERE s.cdbh = d.cdbh AND s.ywxdm = d.dqywx AND s.wcsj IS NULL)"_s,
    };
    // Everything hangs on a customer.
    for (const char* table : {"y_gddy", "y_yxdnb", "y_yxhgq", "y_jfxx", "y_htxx", "b_dltzxx", "c_dfxx", "a_h_khsqxx", "e_jcgzjl", "e_zbdygl", "g_khda"})
        broken << u"SELECT hh FROM %1 x WHERE NOT EXISTS (SELECT 1 FROM y_khda k WHERE k.hh = x.hh)"_s.arg(QLatin1String(table));
    // Every workflow item and the alarm code is granted to an operator of each unit.
    for (const char* unit : {"0101", "0102"})
        broken << u"SELECT ywxdm FROM z_ywx y WHERE NOT EXISTS (SELECT 1 FROM z_xtczy o, z_czyygw a, z_gw g, z_gwyzn c, "
                   "z_ywzn f, z_znyywx e WHERE o.dw = '%1' AND a.czydm = o.dm AND g.dm = a.zdm AND g.sfyx = 1 "
                   "AND c.gwdm = g.dm AND f.dm = c.zndm AND f.sfyx = 1 AND e.zndm = f.dm AND e.cldm = y.ywxdm)"_s.arg(QLatin1String(unit));
    for (const QString& sql : broken) EXPECT_EQ(rows(db, sql).mid(0, 5), QStringList()) << sql.toStdString();
}

TEST_P(DemoDb, NumberCountersArePastEveryNumberWritten) {
    const auto d = demo(smallDemo());
    TestDatabase& db = *d;
    const auto maxOf = [&](const char* sql) { return db.scalar(QLatin1String(sql)).toLongLong(); };
    const qint64 cdbh = std::max({maxOf("SELECT max(cdbh) FROM a_h_khsqxx"), maxOf("SELECT max(cdbh) FROM a_khsqxx"),
                                  maxOf("SELECT max(cdbh) FROM e_jcgzjl"), maxOf("SELECT max(cdbh) FROM z_dqgw"),
                                  maxOf("SELECT max(tbcdh) FROM b_tbjl")});
    const qint64 dnbid = std::max(maxOf("SELECT max(id) FROM a_dnbfa"), maxOf("SELECT max(id) FROM a_hgqfa"));
    EXPECT_GT(cdbh, 400);
    EXPECT_GT(dnbid, 0);
    EXPECT_EQ(maxOf("SELECT GET_CDBH()"), cdbh + 1);
    EXPECT_EQ(maxOf("SELECT GET_DNBID()"), dnbid + 1);
    EXPECT_EQ(maxOf("SELECT GET_JCPH()"), maxOf("SELECT max(jcph) FROM e_jcgzap") + 1);
    EXPECT_EQ(maxOf("SELECT GET_GDFABH()"), maxOf("SELECT max(gdfabh) FROM a_gdfa") + 1);
}

TEST_P(DemoDb, TheDatabaseClockDatesTheData) {
    TestDatabase d(dialect(), false);
    tarvin::db::setFixedClock(d.connectionName(), QDateTime(QDate(2023, 5, 20), QTime(10, 0)));
    EXPECT_EQ(createDemoDatabase(d.db(), {.customers = 60, .seed = 7}).today, QDate(2023, 5, 20));
    EXPECT_EQ(rows(d, u"SELECT min(ny), max(ny) FROM b_dltzxx"_s), QStringList{u"202106|202305"_s});
}

TEST_P(DemoDb, ADatabaseWithTheSchemaIsRefusedAndKeptAsItWas) {
    TestDatabase db(dialect());  // schema, no demo
    db.exec(u"INSERT INTO z_dwbm (dm, mc) VALUES ('99', '已有单位')"_s);
    try {
        createDemoDatabase(db.db(), smallDemo());
        FAIL() << "a database holding the schema was accepted";
    } catch (const EDatabaseError& e) {
        EXPECT_TRUE(e.message().contains(u"already holds the reference schema"_s)) << e.message().toStdString();
    }
    EXPECT_EQ(rows(db, u"SELECT count(*), (SELECT count(*) FROM y_khda) FROM z_dwbm"_s), QStringList{u"1|0"_s});

    // Options out of range are refused before anything is created.
    TestDatabase empty(dialect(), false, u"demo_empty"_s);
    EXPECT_THROW(createDemoDatabase(empty.db(), {.customers = 1, .units = 2}), EDatabaseError);
    EXPECT_FALSE(tarvin::demo::holdsReferenceSchema(empty.db()));
}

TARVIN_INSTANTIATE_ENGINES(DemoDb);

// ---------------------------------------------------------------------------
// The program

ProgramRun runDemoDb(const QStringList& args) { return runProgram(u"tarvin-demo-db"_s, args); }

TEST(DemoProgram, WritesANewFileShowsProgressAndRefusesToWriteItTwice) {
    QTemporaryDir dir;
    const QString file = dir.filePath(u"demo.sqlite"_s), url = u"sqlite:"_s + file;
    const ProgramRun first = runDemoDb({u"--db"_s, url, u"--customers"_s, u"300"_s, u"--seed=5"_s, u"--units"_s, u"3"_s});
    ASSERT_EQ(first.code, 0) << first.err.toStdString();
    EXPECT_TRUE(first.err.contains(u"\rcustomers 300 / 300"_s)) << first.err.toStdString();
    EXPECT_TRUE(first.out.contains(u"300 customers in units 0101, 0102, 0103"_s)) << first.out.toStdString();
    {
        // The statistics are the data's own, not the seeded ones of a large utility.
        QSqlQuery q(tarvin::db::openConnection(url, u"demo_file"_s));
        ASSERT_TRUE(q.exec(u"SELECT count(*), (SELECT stat FROM sqlite_stat1 WHERE idx = 'y_khda_dw') FROM y_khda"_s));
        ASSERT_TRUE(q.next());
        EXPECT_EQ(q.value(0).toInt(), 300);
        EXPECT_TRUE(q.value(1).toString().startsWith(u"300 "_s)) << q.value(1).toString().toStdString();
    }
    tarvin::db::closeConnection(u"demo_file"_s);

    const QDateTime written = QFileInfo(file).lastModified();
    const ProgramRun again = runDemoDb({u"--db"_s, url});
    EXPECT_EQ(again.code, 3);
    EXPECT_TRUE(again.err.contains(u"already holds the reference schema"_s)) << again.err.toStdString();
    EXPECT_EQ(QFileInfo(file).lastModified(), written);
}

TEST(DemoProgram, BadArgumentsAreNamedAndNothingIsCreated) {
    QTemporaryDir dir;
    const QString file = dir.filePath(u"never.sqlite"_s), db = u"sqlite:"_s + file;
    expectRefusals(u"tarvin-demo-db"_s, {
        {{}, u"--db URL is required"_s},
        {{u"--db"_s, db, u"--customers"_s, u"0"_s}, u"--customers needs a whole number"_s},
        {{u"--db"_s, db, u"--units"_s, u"100"_s}, u"--units needs a whole number from 1 to 99"_s},
        {{u"--db"_s, db, u"--seed"_s, u"-1"_s}, u"--seed needs a whole number"_s},
        {{u"--db"_s, db, u"--customers"_s, u"2"_s, u"--units"_s, u"3"_s}, u"at least one customer per unit"_s},
        {{u"--db"_s, db, u"--colour"_s}, u"unknown argument '--colour'"_s},
        {{u"--db"_s, u"sqlite:"_s + dir.filePath(u"no/such/folder.sqlite"_s)}, u"does not exist"_s},
    });
    EXPECT_FALSE(QFileInfo::exists(file));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::NoDotAndDotDot).size(), 0);
}

}  // namespace
