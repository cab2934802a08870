// The demo utility generator: determinism, coherence of what it writes, the
// planted screening cases, the refusal of a database that already holds the
// schema, and the command-line program.
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "data/Connection.h"
#include "DemoGenerator.h"
#include "data/MidasQuery.h"
#include "Schema.h"
#include "TestDb.h"

using tarvin::demo::createDemoDatabase;
using tarvin::demo::DemoOptions;
using tarvin::demo::DemoSummary;
using tarvin::sql::Dialect;
using tarvin::test::EngineTest;
using tarvin::test::TestDatabase;

namespace {

// Early January: "this year" is two days long, the current month's reading
// is on the 2nd; the planted yearly counts must still be there.
const QDate kToday(2025, 1, 2);

DemoOptions smallDemo(std::uint64_t seed = 7) {
    DemoOptions o;
    o.customers = 400;
    o.seed = seed;
    o.today = kToday;
    return o;
}

// Key tables in key order, values written as text the same way on both
// engines (numbers to four places, date-times canonical), hashed.
QByteArray checksum(TestDatabase& d) {
    static const char* tables[][2] = {
        {"z_dwbm", "dm"}, {"z_xtczy", "dm"}, {"z_czyygw", "czydm, zdm"}, {"z_gwyzn", "gwdm, zndm"}, {"e_jcryxx", "czydm"},
        {"y_xl", "xlbh"}, {"y_yxbyq", "byqbh"}, {"g_tqgdl", "tqbh, ny"}, {"y_khda", "hh"}, {"y_gddy", "hh, xh"},
        {"y_jfxx", "hh, jfdbh"}, {"y_htxx", "hh, htbh"}, {"y_yxdnb", "txm"}, {"y_yxhgq", "hgqbh"}, {"b_dltzxx", "hh, ny, jfdbh"},
        {"c_dfxx", "hh, ny, xh"}, {"a_h_khsqxx", "cdbh"}, {"a_h_ykkzb", "cdbh"}, {"e_jcgzap", "jcph"}, {"e_jcgzjl", "cdbh"},
        {"z_dqgw", "cdbh"}, {"z_lcls", "cdbh, xh"}, {"a_dnbfa", "id"}, {"e_bjtx", "ny, hh, bjdm"}};
    QCryptographicHash h(QCryptographicHash::Sha256);
    QSqlQuery q(d.db());
    for (const auto& t : tables) {
        EXPECT_TRUE(q.exec(QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(QLatin1String(t[0]), QLatin1String(t[1]))))
            << t[0] << ": " << q.lastError().text().toStdString();
        h.addData(QByteArray(t[0]));
        while (q.next()) {
            QStringList row;
            for (int i = 0; i < q.record().count(); ++i) {
                const QVariant v = q.value(i);
                if (v.isNull()) row << QStringLiteral("~");
                else if (v.metaType().id() == QMetaType::QDateTime) row << v.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
                else if (v.metaType().id() == QMetaType::QString) row << v.toString();
                else row << QString::number(v.toDouble(), 'f', 4);
            }
            h.addData(row.join(QLatin1Char('|')).toUtf8());
        }
    }
    return h.result().toHex();
}

class DemoDb : public EngineTest {
protected:
    std::unique_ptr<TestDatabase> demo(const DemoOptions& o, DemoSummary* summary = nullptr,
                                       const QString& connection = QStringLiteral("Shdl")) {
        auto d = std::make_unique<TestDatabase>(dialect(), false, connection);
        const DemoSummary s = createDemoDatabase(d->db(), o);
        if (summary) *summary = s;
        return d;
    }
    static int count(TestDatabase& d, const QString& sql) { return d.scalar(sql).toInt(); }
};

TEST_P(DemoDb, OneSeedGivesOneUtilityAnotherSeedAnother) {
    const auto a = demo(smallDemo(7), nullptr, QStringLiteral("demo_a"));
    const auto b = demo(smallDemo(7), nullptr, QStringLiteral("demo_b"));
    const auto c = demo(smallDemo(8), nullptr, QStringLiteral("demo_c"));
    const QByteArray sa = checksum(*a);
    EXPECT_EQ(sa, checksum(*b));
    EXPECT_NE(sa, checksum(*c));
    // The same shape whatever the seed: units, customers, inspected ones.
    for (TestDatabase* d : {a.get(), c.get()}) {
        EXPECT_EQ(count(*d, QStringLiteral("SELECT count(*) FROM y_khda")), 400);
        EXPECT_EQ(count(*d, QStringLiteral("SELECT count(*) FROM v_yckhda WHERE dw = '0101'")), 30);
    }
}

TEST(DemoAcrossEngines, OneSeedWritesTheSameUtilityOnSQLiteAndPostgreSQL) {
    if (tarvin::test::engines().size() < 2) GTEST_SKIP() << "no PostgreSQL server (TARVIN_TEST_PG_URL)";
    TestDatabase lite(Dialect::SQLite, false, QStringLiteral("demo_lite"));
    TestDatabase pg(Dialect::PostgreSQL, false, QStringLiteral("demo_pg"));
    createDemoDatabase(lite.db(), smallDemo(11));
    createDemoDatabase(pg.db(), smallDemo(11));
    EXPECT_EQ(checksum(lite), checksum(pg));
}

TEST_P(DemoDb, CustomersMetersSourcesAndDocumentsHangTogether) {
    DemoSummary s;
    const auto d = demo(smallDemo(), &s);
    TestDatabase& db = *d;
    EXPECT_EQ(s.units, QStringList({QStringLiteral("0101"), QStringLiteral("0102")}));
    EXPECT_EQ(s.inspectedFirstUnit, 30);

    // Exactly one main source per customer; everything hangs on a customer.
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_khda k WHERE (SELECT count(*) FROM y_gddy g WHERE g.hh = k.hh AND g.dyxz = '主供') <> 1")), 0);
    for (const char* table : {"y_gddy", "y_yxdnb", "y_yxhgq", "y_jfxx", "y_htxx", "b_dltzxx", "c_dfxx", "a_h_khsqxx", "e_jcgzjl", "e_zbdygl", "g_khda"})
        EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM %1 x WHERE NOT EXISTS (SELECT 1 FROM y_khda k WHERE k.hh = x.hh)").arg(QLatin1String(table))), 0)
            << table;
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_khda k WHERE NOT EXISTS (SELECT 1 FROM y_yxdnb m WHERE m.hh = k.hh)")), 0);
    // The file's last document is an archived business-expansion application of the customer.
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_khda k WHERE NOT EXISTS (SELECT 1 FROM a_h_khsqxx a, z_dlyxyw y "
                                       "WHERE a.cdbh = k.cdbh AND a.hh = k.hh AND y.ywdm = a.ywdm AND y.ywlbdm = '0001')")), 0);
    // Network: feeders climb to '00001', areas are public transformers of the unit, books exist.
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_xl x WHERE x.sjxlbh <> '00001' AND NOT EXISTS "
                                       "(SELECT 1 FROM y_xl p WHERE p.xlbh = x.sjxlbh AND p.sjxlbh = '00001' AND p.dw = x.dw)")), 0);
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_gddy g WHERE NOT EXISTS (SELECT 1 FROM y_xl x WHERE x.xlbh = g.xlbh AND x.dw = g.dw)")), 0);
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_gddy g WHERE NOT EXISTS (SELECT 1 FROM y_yxbyq b WHERE b.byqbh = g.byqbh AND b.byqlx = g.dylx)")), 0);
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_khda k WHERE NOT EXISTS (SELECT 1 FROM b_cbc c WHERE c.cbcbh = k.cbcbh AND c.dw = k.dw)")), 0);
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_khda WHERE length(cbcbh) > 6 OR length(hh) <> 10")), 0);
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_xl WHERE length(xlbh) > 7")), 0);

    // Two years of ledger up to the current month for the customers under inspection.
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT max(ny) FROM b_dltzxx")).toString(), QStringLiteral("202501"));
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE (SELECT count(DISTINCT ny) FROM b_dltzxx b WHERE b.hh = a.hh) <> 24")), 0);
    // The last inspection date is that of the customer's last completed inspection.
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM y_khda k WHERE k.scjcrq IS NOT NULL AND k.scjcrq <> "
                                       "(SELECT max(j.jhjcrq) FROM e_jcgzjl j WHERE j.hh = k.hh AND j.zt = '已检查')")), 0);

    // Open cases stand at an item of the workflow, with the steps that led there.
    EXPECT_GT(count(db, QStringLiteral("SELECT count(*) FROM z_dqgw WHERE dqywx = '40102' AND glbm = '0101'")), 0);
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM z_dqgw d WHERE NOT EXISTS (SELECT 1 FROM z_lcjd l WHERE l.ywxdm = d.dqywx) "
                                       "OR NOT EXISTS (SELECT 1 FROM a_khsqxx a WHERE a.cdbh = d.cdbh) "
                                       "OR NOT EXISTS (SELECT 1 FROM z_lcls s WHERE s.cdbh = d.cdbh AND s.ywxdm = d.dqywx AND s.wcsj IS NULL)")), 0);
    // Every workflow item and the alarm code is granted to an operator of each unit.
    for (const char* unit : {"0101", "0102"})
        EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM z_ywx y WHERE NOT EXISTS (SELECT 1 FROM z_xtczy o, z_czyygw a, z_gw g, z_gwyzn c, "
                                           "z_ywzn f, z_znyywx e WHERE o.dw = '%1' AND a.czydm = o.dm AND g.dm = a.zdm AND g.sfyx = 1 "
                                           "AND c.gwdm = g.dm AND f.dm = c.zndm AND f.sfyx = 1 AND e.zndm = f.dm AND e.cldm = y.ywxdm)")
                                .arg(QLatin1String(unit))),
                  0)
            << unit;
}

TEST_P(DemoDb, NumberCountersArePastEveryNumberWritten) {
    const auto d = demo(smallDemo());
    TestDatabase& db = *d;
    const auto maxOf = [&](const char* sql) { return db.scalar(QLatin1String(sql)).toString().toLongLong(); };
    const qint64 cdbh = std::max({maxOf("SELECT max(cdbh) FROM a_h_khsqxx"), maxOf("SELECT max(cdbh) FROM a_khsqxx"),
                                  maxOf("SELECT max(cdbh) FROM e_jcgzjl"), maxOf("SELECT max(cdbh) FROM z_dqgw"),
                                  maxOf("SELECT max(tbcdh) FROM b_tbjl")});
    const qint64 dnbid = std::max(maxOf("SELECT max(id) FROM a_dnbfa"), maxOf("SELECT max(id) FROM a_hgqfa"));
    EXPECT_GT(cdbh, 400);
    EXPECT_GT(dnbid, 0);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT GET_CDBH()")).toString().toLongLong(), cdbh + 1);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT GET_DNBID()")).toString().toLongLong(), dnbid + 1);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT GET_JCPH()")).toString().toLongLong(), maxOf("SELECT max(jcph) FROM e_jcgzap") + 1);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT GET_GDFABH()")).toString().toLongLong(), maxOf("SELECT max(gdfabh) FROM a_gdfa") + 1);
}

// Every reachable screening category, written as engine-native SQL equal to
// the module's text with its default parameters and only the unit filter:
// each finds at least one and at most 300 customers of the first unit.
TEST_P(DemoDb, EveryScreeningCategoryFindsPlantedCustomersOfTheFirstUnit) {
    const auto d = demo(smallDemo());
    TestDatabase& db = *d;
    const QString ny = QStringLiteral("202501"), nf = QStringLiteral("2025"), today = QStringLiteral("2025-01-02 00:00:00");
    const QString halfYearAgo = QStringLiteral("2024-07-03 00:00:00"), yearAgo = QStringLiteral("2024-01-03 00:00:00");
    const QString unit = QStringLiteral(" AND a.dw = '0101'");
    const QString tq = db.scalar(QStringLiteral("SELECT tqbh FROM g_gytqshfx WHERE dw = '0101' AND ny = '%1' AND xsl > shsx").arg(ny)).toString();
    EXPECT_EQ(tq, QStringLiteral("T0100001")) << "the unit's high-loss area";
    const auto yearly = [&](const QString& businesses, const QString& flag) {
        return QStringLiteral("SELECT count(*) FROM v_yckhda a JOIN (SELECT a.hh, count(*) cs FROM v_yckhda a JOIN a_h_khsqxx b ON a.hh = b.hh "
                              "JOIN a_h_ykkzb c ON b.cdbh = c.cdbh WHERE b.ywdm IN (%1) %2 AND to_char(b.sqrq, 'yyyy') = '%3' GROUP BY a.hh) b "
                              "ON a.hh = b.hh WHERE b.cs > 3")
            .arg(businesses, flag, nf);
    };
    const std::pair<const char*, QString> categories[] = {
        {"2", QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE a.tqbh = '%1'").arg(tq)},
        {"10", QStringLiteral("SELECT count(*) FROM v_lxld a WHERE ny = '%1' AND lxldys > 0").arg(ny)},
        {"11", QStringLiteral("SELECT count(*) FROM v_lxld a WHERE ny = '%1' AND lxldys = 3").arg(ny)},
        {"12", QStringLiteral("SELECT count(*) FROM v_lxld a WHERE ny = '%1' AND lxldys > 3").arg(ny)},
        {"13", QStringLiteral("SELECT count(*) FROM (SELECT DISTINCT a.*, b.ny AS bny, jc_pjdlbd(a.hh, b.ny, 3, '1') bdl FROM v_yckhda a "
                              "LEFT JOIN b_dltzxx b ON a.hh = b.hh) a WHERE bny = '%1' AND bdl > 30").arg(ny)},
        {"14", QStringLiteral("SELECT count(*) FROM v_qntqdlbd a WHERE ny = '%1' AND bdl > 30").arg(ny)},
        {"15", QStringLiteral("SELECT count(DISTINCT a.hh) FROM v_yckhda a JOIN v_fgdlyc b ON a.hh = b.hh WHERE b.ny = '%1' AND b.fgb < 100").arg(ny)},
        {"16", QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE (SELECT sum(jffdl + jfpdl + jfgdl) FROM b_dltzxx WHERE hh = a.hh AND ny = '%1') > 500000 "
                              "AND a.ydlb = '03'").arg(ny)},
        {"17", QStringLiteral("SELECT count(DISTINCT a.hh) FROM v_yckhda a JOIN b_dltzxx b ON a.hh = b.hh WHERE b.ny = '%1' AND b.sjll > 95").arg(ny)},
        {"18", QStringLiteral("SELECT count(DISTINCT a.hh) FROM v_yckhda a JOIN c_dfxx b ON a.hh = b.hh WHERE b.ny = '%1' AND b.ysdf < 0 AND abs(b.ysdf) > 100").arg(ny)},
        {"19", QStringLiteral("SELECT count(DISTINCT a.hh) FROM v_yckhda a JOIN y_jfxx b ON b.hh = a.hh WHERE b.djm = '4102'")},
        {"20", yearly(QStringLiteral("'402', '401'"), QStringLiteral("AND c.sfwyqd = '是'"))},
        {"21", QStringLiteral("SELECT count(*) FROM v_yckhda a JOIN (SELECT a.hh, count(*) cs FROM v_yckhda a JOIN a_h_khsqxx b ON a.hh = b.hh "
                              "WHERE b.ywdm = '405' AND to_char(b.sqrq, 'yyyy') = '%1' GROUP BY a.hh) b ON a.hh = b.hh WHERE b.cs > 3").arg(nf)},
        {"22", QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE (SELECT count(1) FROM y_gddy WHERE hh = a.hh) > 1")},
        {"23", QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE EXISTS (SELECT 1 FROM e_zbdygl WHERE hh = a.hh)")},
        {"24", QStringLiteral("SELECT count(DISTINCT a.hh) FROM v_yckhda a JOIN y_jfxx b ON a.hh = b.hh WHERE b.js > 1 AND b.jflx <> '抄表'")},
        {"25", QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE (COALESCE(a.scjcrq, '%1') < '%2' OR a.scjcrq > '%3')").arg(yearAgo, halfYearAgo, today)},
        {"30", QStringLiteral("SELECT count(DISTINCT a.hh) FROM v_yckhda a, z_dlyxyw b, a_h_khsqxx c WHERE a.cdbh = c.cdbh AND b.ywdm = c.ywdm "
                              "AND c.sqrq >= '%1' AND c.sqrq <= '%1' AND b.ywlbdm = '0001'").arg(today)},
        {"31", QStringLiteral("SELECT count(*) FROM v_yckhda a JOIN y_htxx b ON a.hh = b.hh WHERE b.yxrq < '%1'").arg(today)},
        {"40", yearly(QStringLiteral("'160', '401'"), QStringLiteral("AND c.sfygz = '是'"))},
        {"99", QStringLiteral("SELECT count(*) FROM v_yckhda a WHERE 1 = 1")},
    };
    for (const auto& [code, sql] : categories) {
        const int n = count(db, sql + unit);
        EXPECT_GE(n, 1) << "category " << code;
        EXPECT_LE(n, 300) << "category " << code;
    }
    // Planted anomalies are customers the screening sees.
    EXPECT_EQ(count(db, QStringLiteral("SELECT count(*) FROM a_h_khsqxx h, a_h_ykkzb k WHERE h.cdbh = k.cdbh AND k.sfwyqd = '是' "
                                       "AND to_char(h.sqrq, 'yyyy') = '%1' AND NOT EXISTS (SELECT 1 FROM v_yckhda a WHERE a.hh = h.hh)").arg(nf)),
              0);
}

TEST_P(DemoDb, TheDatabaseClockDatesTheData) {
    auto d = std::make_unique<TestDatabase>(dialect(), false);
    tarvin::db::setFixedClock(d->connectionName(), QDateTime(QDate(2023, 5, 20), QTime(10, 0)));
    DemoOptions o = smallDemo();
    o.today = QDate();
    o.customers = 60;
    const DemoSummary s = createDemoDatabase(d->db(), o);
    EXPECT_EQ(s.today, QDate(2023, 5, 20));
    EXPECT_EQ(d->scalar(QStringLiteral("SELECT max(ny) FROM b_dltzxx")).toString(), QStringLiteral("202305"));
    EXPECT_EQ(d->scalar(QStringLiteral("SELECT min(ny) FROM b_dltzxx")).toString(), QStringLiteral("202106"));
}

TEST_P(DemoDb, ADatabaseWithTheSchemaIsRefusedAndKeptAsItWas) {
    TestDatabase db(dialect());  // schema, no demo
    db.exec(QStringLiteral("INSERT INTO z_dwbm (dm, mc) VALUES ('99', '已有单位')"));
    try {
        createDemoDatabase(db.db(), smallDemo());
        FAIL() << "a database holding the schema was accepted";
    } catch (const EDatabaseError& e) {
        EXPECT_TRUE(e.message().contains(QStringLiteral("already holds the reference schema"))) << e.message().toStdString();
    }
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM z_dwbm")).toInt(), 1);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM y_khda")).toInt(), 0);

    // Options out of range are refused before anything is created.
    TestDatabase empty(dialect(), false, QStringLiteral("demo_empty"));
    DemoOptions bad = smallDemo();
    bad.customers = 1;
    bad.units = 2;
    EXPECT_THROW(createDemoDatabase(empty.db(), bad), EDatabaseError);
    EXPECT_FALSE(tarvin::demo::holdsReferenceSchema(empty.db()));
}

TARVIN_INSTANTIATE_ENGINES(DemoDb);

// ---------------------------------------------------------------------------
// The program

struct ProgramRun {
    int code;
    QString out, err;
};

ProgramRun runDemoDb(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral(TARVIN_BIN_DIR "/tarvin-demo-db"), args);
    EXPECT_TRUE(p.waitForFinished(120000));
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

TEST(DemoProgram, WritesANewFileShowsProgressAndRefusesToWriteItTwice) {
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("demo.sqlite"));
    const ProgramRun first = runDemoDb({QStringLiteral("--db"), QStringLiteral("sqlite:") + file, QStringLiteral("--customers"), QStringLiteral("300"),
                                 QStringLiteral("--seed=5"), QStringLiteral("--units"), QStringLiteral("3")});
    ASSERT_EQ(first.code, 0) << first.err.toStdString();
    EXPECT_TRUE(first.err.contains(QStringLiteral("\rcustomers 300 / 300"))) << first.err.toStdString();
    EXPECT_TRUE(first.out.contains(QStringLiteral("300 customers in units 0101, 0102, 0103"))) << first.out.toStdString();
    {
        QSqlDatabase db = tarvin::db::openConnection(QStringLiteral("sqlite:") + file, QStringLiteral("demo_file"));
        QSqlQuery q(db);
        ASSERT_TRUE(q.exec(QStringLiteral("SELECT count(*) FROM y_khda")) && q.next());
        EXPECT_EQ(q.value(0).toInt(), 300);
        // The statistics are the data's own, not the seeded ones of a large utility.
        ASSERT_TRUE(q.exec(QStringLiteral("SELECT stat FROM sqlite_stat1 WHERE idx = 'y_khda_dw'")) && q.next());
        EXPECT_TRUE(q.value(0).toString().startsWith(QStringLiteral("300 "))) << q.value(0).toString().toStdString();
    }
    tarvin::db::closeConnection(QStringLiteral("demo_file"));

    const QDateTime written = QFileInfo(file).lastModified();
    const ProgramRun again = runDemoDb({QStringLiteral("--db"), QStringLiteral("sqlite:") + file});
    EXPECT_EQ(again.code, 3);
    EXPECT_TRUE(again.err.contains(QStringLiteral("already holds the reference schema"))) << again.err.toStdString();
    EXPECT_EQ(QFileInfo(file).lastModified(), written);
}

TEST(DemoProgram, BadArgumentsAreNamedAndNothingIsCreated) {
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("never.sqlite"));
    const QString db = QStringLiteral("sqlite:") + file;
    const struct {
        QStringList args;
        const char* says;
    } cases[] = {
        {{}, "--db URL is required"},
        {{QStringLiteral("--db"), db, QStringLiteral("--customers"), QStringLiteral("0")}, "--customers needs a whole number"},
        {{QStringLiteral("--db"), db, QStringLiteral("--customers"), QStringLiteral("lots")}, "not 'lots'"},
        {{QStringLiteral("--db"), db, QStringLiteral("--units"), QStringLiteral("100")}, "--units needs a whole number from 1 to 99"},
        {{QStringLiteral("--db"), db, QStringLiteral("--seed"), QStringLiteral("-1")}, "--seed needs a whole number"},
        {{QStringLiteral("--db"), db, QStringLiteral("--customers"), QStringLiteral("2"), QStringLiteral("--units"), QStringLiteral("3")},
         "at least one customer per unit"},
        {{QStringLiteral("--db"), db, QStringLiteral("--colour")}, "unknown argument '--colour'"},
        {{QStringLiteral("--db"), QStringLiteral("sqlite:") + dir.filePath(QStringLiteral("no/such/folder.sqlite"))}, "does not exist"},
    };
    for (const auto& c : cases) {
        const ProgramRun r = runDemoDb(c.args);
        EXPECT_EQ(r.code, 2) << c.says;
        EXPECT_TRUE(r.err.contains(QLatin1String(c.says))) << r.err.toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(file));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::NoDotAndDotDot).size(), 0);
}

}  // namespace
