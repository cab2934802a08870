// The workflow library as the module meets it: loaded by path, its five C
// functions called by name on the "Shdl" connection, on both engines.
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <cmath>
#include <dlfcn.h>
#include <limits>

#include "../workflow/Prj_zt_pubfun.h"
#include "data/Connection.h"
#include "DemoGenerator.h"
#include "Fixtures.h"
#include "ModuleLoader.h"
#include "Schema.h"

namespace {

using namespace tarvin::test;

const char* const kLibrary = TARVIN_LIB_DIR "/libPrj_zt_pubfun.so";

// The five functions, resolved by name once.
struct Workflow {
    void* handle = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
    template <class F>
    F sym(const char* name) const { return handle ? reinterpret_cast<F>(dlsym(handle, name)) : nullptr; }
    getsysdate_fn getsysdate = sym<getsysdate_fn>("getsysdate");
    fristywx_fn tryfristywx = sym<fristywx_fn>("tryfristywx"), fristywx = sym<fristywx_fn>("fristywx");
    lcsend_fn lcsend = sym<lcsend_fn>("lcsend");
    SendGzdMess_fn SendGzdMess = sym<SendGzdMess_fn>("SendGzdMess");
};

const Workflow& wf() {
    static Workflow w;
    return w;
}

// TDateTime of a wall-clock time, computed independently of the library.
double td(int y, int m, int d, int h = 0, int mi = 0, int s = 0) {
    return double(QDate(1899, 12, 30).daysTo(QDate(y, m, d))) + (h * 3600 + mi * 60 + s) / 86400.0;
}

const char* const kWorkflowTables[] = {"z_dqgw", "z_lcls", "z_gzdxx", "a_khsqxx", "a_ykkzb", "a_h_khsqxx", "a_h_ykkzb"};

// Arguments of one start, as the dispatch screen passes them.
struct Start {
    QByteArray cdbh = "0000000101", ywdm = "401", ywxdm = "40101", dw = "01", hh = "0100000001", yxj = "一般",
               czydm = "01002", hm = "城关机械厂", yddz = "城关镇建设路1号";
    double kssj = td(2024, 7, 1, 9, 30);
};

class WorkflowTest : public EngineTest {
protected:
    void SetUp() override {
        ASSERT_NE(wf().handle, nullptr) << "cannot load " << kLibrary << ": " << dlerror();
        ASSERT_TRUE(wf().getsysdate && wf().tryfristywx && wf().fristywx && wf().lcsend && wf().SendGzdMess);
        db_ = std::make_unique<TestDatabase>(dialect());
    }

    TestDatabase& db() { return *db_; }

    static const char* c(const QByteArray& b) { return b.isNull() ? nullptr : b.constData(); }
    // fristywx, or with `tryOnly` tryfristywx.
    int start(const Start& s, bool tryOnly = false) {
        return (tryOnly ? wf().tryfristywx : wf().fristywx)(c(s.cdbh), c(s.ywdm), c(s.ywxdm), c(s.dw), c(s.hh), c(s.yxj), c(s.czydm), s.kssj,
                                                             c(s.hm), c(s.yddz), 0, 0);
    }
    int send(const QByteArray& cdbh, const char* item, double at, const char* czydm = "01003") { return wf().lcsend(c(cdbh), item, at, czydm, 0); }
    int tell(const QByteArray& cdbh) { return wf().SendGzdMess(c(cdbh)); }

    // The application rows a screen writes before it starts the case.
    void application(const QString& cdbh) {
        db().exec(QStringLiteral("INSERT INTO a_khsqxx (cdbh, slbm, ywdm, sqrq, hh, hm, yddz, htrl, dw) "
                                 "VALUES (?, '0101', '401', '2024-07-01 09:00:00', '0100000001', '城关机械厂', '城关镇建设路1号', 630, '01')"),
                  {cdbh});
        db().exec(QStringLiteral("INSERT INTO a_ykkzb (cdbh, sfygz, htrl) VALUES (?, '否', 630)"), {cdbh});
    }

    // "current item|name of the item left", or "" when the case is not open.
    QString at(const QString& cdbh) { return rows(QStringLiteral("SELECT dqywx, lastywxmc FROM z_dqgw WHERE cdbh = ?"), {cdbh}).value(0); }
    QStringList rows(const QString& sql, const QVariantList& binds = {}) { return tarvin::test::rows(db(), sql, binds); }
    int count(const char* table, const QString& cdbh) {
        return rows(QStringLiteral("SELECT count(*) FROM %1 WHERE cdbh = ?").arg(QLatin1String(table)), {cdbh}).value(0).toInt();
    }
    // Every row of every workflow table: what "changes nothing" compares.
    QStringList everything() {
        QStringList out;
        for (const char* table : kWorkflowTables)
            out << rows(QStringLiteral("SELECT '%1', t.* FROM %1 t ORDER BY 2, 3").arg(QLatin1String(table)));
        return out;
    }
    // The history of a case: "xh|item|name|operator|arrived|finished" per step.
    QStringList history(const QString& cdbh) {
        return rows(QStringLiteral("SELECT xh, ywxdm, ywxmc, czy, jssj, wcsj FROM z_lcls WHERE cdbh = ? ORDER BY xh"), {cdbh});
    }

    std::unique_ptr<TestDatabase> db_;
};

// ---------------------------------------------------------------------------
// A whole case, and the sends it refuses on the way

TEST_P(WorkflowTest, InspectionCaseGoesThroughEveryItemRefusingWrongSendsAndEndsArchived) {
    const Start s;
    const QString cdbh = QString::fromLatin1(s.cdbh);
    application(cdbh);
    ASSERT_EQ(start(s, true), WF_OK);
    ASSERT_EQ(start(s), WF_OK);

    // Dispatching is the first item itself: the case waits for approval.
    EXPECT_EQ(rows(QStringLiteral("SELECT ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj "
                                  "FROM z_dqgw WHERE cdbh = ?"), {cdbh}),
              QStringList{QStringLiteral("401|0100000001|城关机械厂|城关镇建设路1号|40102|检查工作审批|40101|检查任务下达|01002|01|一般|"
                                         "2024-07-01 09:30:00|2024-07-01 09:30:00")});

    const QStringList before = everything();
    const double day2 = td(2024, 7, 2);
    EXPECT_EQ(send(s.cdbh, "40101", day2), WF_NOT_AT_ITEM) << "an item already left";
    EXPECT_EQ(send(s.cdbh, "", day2), WF_NOT_AT_ITEM) << "the approval screen with an empty Ywxdm";
    EXPECT_EQ(send(s.cdbh, nullptr, day2), WF_NOT_AT_ITEM);
    EXPECT_EQ(send("0000000999", "40102", day2), WF_NO_CASE);
    EXPECT_EQ(send("", "40102", day2), WF_BAD_CDBH);
    EXPECT_EQ(send(s.cdbh, "40102", std::numeric_limits<double>::infinity()), WF_BAD_TIME);
    EXPECT_EQ(everything(), before) << "a refused send changes nothing";

    EXPECT_EQ(send(s.cdbh, "40102", td(2024, 7, 2, 10, 15), "01001"), WF_OK);
    EXPECT_EQ(send(s.cdbh, "40102", td(2024, 7, 2, 10, 15), "01001"), WF_NOT_AT_ITEM) << "the same send twice finds the case gone on";
    EXPECT_EQ(send(s.cdbh, "40103", td(2024, 7, 3, 8, 40)), WF_OK);
    EXPECT_EQ(count("a_khsqxx", cdbh), 1) << "the application stays until the case ends";
    EXPECT_EQ(send(s.cdbh, "40104", td(2024, 7, 5, 16, 30)), WF_OK);

    for (const char* table : {"z_dqgw", "a_khsqxx", "a_ykkzb"}) EXPECT_EQ(count(table, cdbh), 0) << table << " still holds the case";
    EXPECT_EQ(rows(QStringLiteral("SELECT a.hm, a.sqrq, a.gdsj, k.htrl, k.gdsj FROM a_h_khsqxx a, a_h_ykkzb k "
                                                      "WHERE k.cdbh = a.cdbh AND a.cdbh = ?"), {cdbh}),
              QStringList{QStringLiteral("城关机械厂|2024-07-01 09:00:00|2024-07-05 16:30:00|630|2024-07-05 16:30:00")});
    EXPECT_EQ(history(cdbh), QStringList({QStringLiteral("1|40101|检查任务下达|01002|2024-07-01 09:30:00|2024-07-01 09:30:00"),
                                          QStringLiteral("2|40102|检查工作审批|01001|2024-07-01 09:30:00|2024-07-02 10:15:00"),
                                          QStringLiteral("3|40103|检查工作单打印|01003|2024-07-02 10:15:00|2024-07-03 08:40:00"),
                                          QStringLiteral("4|40104|检查结果录入|01003|2024-07-03 08:40:00|2024-07-05 16:30:00")}));

    // Finished: it can neither be sent again nor started again.
    EXPECT_EQ(send(s.cdbh, "40104", td(2024, 7, 6)), WF_NO_CASE);
    EXPECT_EQ(start(s, true), WF_CASE_CLOSED);
}

TEST_P(WorkflowTest, CasesStartedAtAnOrdinaryItemOrPlacedWithoutStepsAreSentRecordingTheirSteps) {
    // The anomaly screen starts its case at 16001 and then sends it on itself.
    const QString k = QStringLiteral("0000000201");
    ASSERT_EQ(start({.cdbh = "0000000201", .ywdm = "160", .ywxdm = "16001", .kssj = td(2024, 7, 1, 10)}), WF_OK);
    EXPECT_EQ(at(k), QStringLiteral("16001|"));
    EXPECT_EQ(history(k), QStringList({QStringLiteral("1|16001|计量异常记录||2024-07-01 10:00:00|")}));
    ASSERT_EQ(send("0000000201", "16001", td(2024, 7, 1, 16), "01007"), WF_OK);
    EXPECT_EQ(at(k), QStringLiteral("16002|计量异常记录"));
    EXPECT_EQ(history(k), QStringList({QStringLiteral("1|16001|计量异常记录|01007|2024-07-01 10:00:00|2024-07-01 16:00:00"),
                                       QStringLiteral("2|16002|计量装置装拆||2024-07-01 16:00:00|")}));

    // A case placed by other means (a migration, the demo data) without a
    // history row for its current item: the send records the step it closes.
    db().exec(QStringLiteral("INSERT INTO z_dqgw (cdbh, ywdm, khbh, dqywx, dqywxmc, glbm, jssj) "
                             "VALUES ('0000000301', '401', '0100000001', '40103', '检查工作单打印', '01', '2024-07-02 10:00:00')"));
    ASSERT_EQ(send("0000000301", "40103", td(2024, 7, 3, 9)), WF_OK);
    EXPECT_EQ(history(QStringLiteral("0000000301")),
              QStringList({QStringLiteral("1|40103|检查工作单打印|01003|2024-07-02 10:00:00|2024-07-03 09:00:00"),
                           QStringLiteral("2|40104|检查结果录入||2024-07-03 09:00:00|")}));
}

// ---------------------------------------------------------------------------
// Refusals

TEST_P(WorkflowTest, TryStartWritesNothingAndRefusesForEachReason) {
    // One case open, one finished, one archived, one business out of use.
    ASSERT_EQ(start({.cdbh = "0000000001"}), WF_OK);
    ASSERT_EQ(start({.cdbh = "0000000002"}), WF_OK);
    for (const char* item : {"40102", "40103", "40104"}) ASSERT_EQ(send("0000000002", item, td(2024, 7, 2)), WF_OK);
    db().exec(QStringLiteral("INSERT INTO a_h_khsqxx (cdbh, ywdm, hh) VALUES ('0000000003', '120', '0100000001')"));
    db().exec(QStringLiteral("UPDATE z_dlyxyw SET sfyx = 0 WHERE ywdm = '191'"));
    const QStringList before = everything();
    EXPECT_EQ(start(Start(), true), WF_OK);
    EXPECT_EQ(everything(), before) << "a ready try wrote something";

    const struct { const char* why; void (*change)(Start&); int code; } cases[] = {
        {"no document number", [](Start& s) { s.cdbh = QByteArray(); }, WF_BAD_CDBH},
        {"blank document number", [](Start& s) { s.cdbh = "   "; }, WF_BAD_CDBH},
        {"document number too long", [](Start& s) { s.cdbh = "00000001011"; }, WF_BAD_CDBH},
        {"no unit", [](Start& s) { s.dw = QByteArray(); }, WF_NO_UNIT},
        {"time not a number", [](Start& s) { s.kssj = std::numeric_limits<double>::quiet_NaN(); }, WF_BAD_TIME},
        {"unknown business", [](Start& s) { s.ywdm = "999"; }, WF_UNKNOWN_BUSINESS},
        {"no business", [](Start& s) { s.ywdm = QByteArray(); }, WF_UNKNOWN_BUSINESS},
        {"business out of use", [](Start& s) { s.ywdm = "191"; s.ywxdm = "19101"; }, WF_UNKNOWN_BUSINESS},
        {"unknown item", [](Start& s) { s.ywxdm = "40199"; }, WF_UNKNOWN_ITEM},
        {"the alarm code is no workflow item", [](Start& s) { s.ywxdm = "40099"; }, WF_UNKNOWN_ITEM},
        {"item of another business", [](Start& s) { s.ywxdm = "16001"; }, WF_ITEM_OF_OTHER_BUSINESS},
        {"item not the first", [](Start& s) { s.ywxdm = "40102"; }, WF_NOT_FIRST_ITEM},
        {"document already open", [](Start& s) { s.cdbh = "0000000001"; }, WF_CASE_OPEN},
        {"document already finished", [](Start& s) { s.cdbh = "0000000002"; }, WF_CASE_CLOSED},
        {"document already archived", [](Start& s) { s.cdbh = "0000000003"; }, WF_CASE_CLOSED},
    };
    for (const auto& k : cases) {
        Start s;
        k.change(s);
        EXPECT_EQ(start(s, true), k.code) << k.why;
        EXPECT_EQ(start(s), k.code) << k.why << " (fristywx refuses alike)";
        EXPECT_EQ(everything(), before) << k.why << ": something was written";
    }
}

// ---------------------------------------------------------------------------
// Transactions: the caller's, never the library's own

TEST_P(WorkflowTest, CallsGoWithTheCallersTransactionAndAFailedSendTakesBackOnlyItsOwnWrites) {
    const QString cdbh = QStringLiteral("0000000101");
    application(cdbh);
    QSqlDatabase d = db().db();
    ASSERT_TRUE(d.transaction());
    ASSERT_EQ(start(Start()), WF_OK);
    EXPECT_EQ(at(cdbh), QStringLiteral("40102|检查任务下达")) << "visible inside the transaction";
    ASSERT_TRUE(d.rollback());
    EXPECT_EQ(count("z_dqgw", cdbh) + count("z_lcls", cdbh), 0) << "rolled back with the caller";
    ASSERT_TRUE(d.transaction());
    ASSERT_EQ(start(Start()), WF_OK);
    ASSERT_TRUE(d.commit());

    // A send rolled back with the caller leaves the case where it was.
    ASSERT_TRUE(d.transaction());
    ASSERT_EQ(send("0000000101", "40102", td(2024, 7, 2)), WF_OK);
    ASSERT_TRUE(d.rollback());
    EXPECT_EQ(at(cdbh), QStringLiteral("40102|检查任务下达"));
    EXPECT_EQ(count("z_lcls", cdbh), 2);

    // The archive already holds the document, so leaving the last item fails
    // half-way; the case must stay whole at its item, with or without the
    // caller's transaction, and the caller's own work must survive.
    ASSERT_EQ(send("0000000101", "40102", td(2024, 7, 2)), WF_OK);
    ASSERT_EQ(send("0000000101", "40103", td(2024, 7, 3)), WF_OK);
    db().exec(QStringLiteral("INSERT INTO a_h_ykkzb (cdbh, sfygz) VALUES ('0000000101', '是')"));
    const QStringList before = everything();
    for (const bool inTransaction : {true, false}) {
        ASSERT_TRUE(!inTransaction || d.transaction());
        db().exec(QStringLiteral("INSERT INTO w_jclx (dm, mc) VALUES (?, '周期检查')"), {inTransaction ? QStringLiteral("01") : QStringLiteral("02")});
        EXPECT_EQ(send("0000000101", "40104", td(2024, 7, 5)), WF_DATABASE_ERROR) << inTransaction;
        EXPECT_TRUE(!inTransaction || d.commit()) << "the caller's transaction is still usable";
        EXPECT_EQ(everything(), before) << inTransaction;
    }
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM w_jclx")).toInt(), 2);
}

// ---------------------------------------------------------------------------
// Work-order messages

TEST_P(WorkflowTest, WorkOrderMessagesReachOperatorsWhosePostsGrantTheCurrentItemAndNobodyElse) {
    // Functions: approving (in force), printing, approving (out of use).
    db().exec(QStringLiteral("INSERT INTO z_ywzn (dm, mc, sfyx) VALUES ('F1', '检查审批', 1), ('F2', '工作单打印', 1), ('F3', '旧审批', 0)"));
    db().exec(QStringLiteral("INSERT INTO z_znyywx (zndm, cldm) VALUES ('F1', '40102'), ('F2', '40103'), ('F3', '40102')"));
    // Posts: P1 and P5 approve, P2 prints, P3 approves but is out of use, P4
    // carries only the retired function.
    db().exec(QStringLiteral("INSERT INTO z_gw (dm, mc, dw, sfyx) VALUES ('P1', '班长', '01', 1), ('P2', '检查员', '01', 1), "
                             "('P3', '原班长', '01', 0), ('P4', '副班长', '01', 1), ('P5', '主任', '01', 1)"));
    db().exec(QStringLiteral("INSERT INTO z_gwyzn (gwdm, zndm) VALUES ('P1', 'F1'), ('P2', 'F2'), ('P3', 'F1'), ('P4', 'F3'), ('P5', 'F1')"));
    db().exec(QStringLiteral("INSERT INTO z_xtczy (dm, xingming, dw, sfyx) VALUES ('A', '甲', '01', 1), ('B', '乙', '01', 1), "
                             "('C', '丙', '01', 1), ('D', '丁', '01', 1), ('E', '戊', '02', 1), ('F', '己', '01', 1), ('G', '庚', '01', 0)"));
    db().exec(QStringLiteral("INSERT INTO z_czyygw (czydm, zdm) VALUES ('A', 'P1'), ('B', 'P2'), ('C', 'P3'), ('D', 'P4'), ('E', 'P1'), "
                             "('F', 'P1'), ('F', 'P5'), ('G', 'P1')"));
    tarvin::db::setFixedClock(db().connectionName(), QDateTime(QDate(2024, 7, 1), QTime(9, 31, 5)));
    const auto messages = [&] {
        return rows(QStringLiteral("SELECT xh, jsczy, ywxdm, fssj, ydbz FROM z_gzdxx WHERE cdbh = '0000000101' ORDER BY xh"));
    };

    // A case at an item no post grants: nobody to tell, nothing written.
    ASSERT_EQ(start({.cdbh = "0000000201", .ywdm = "160", .ywxdm = "16001"}), WF_OK);
    const QStringList before = everything();
    EXPECT_EQ(tell("0000000201"), WF_NO_RECIPIENT);
    EXPECT_EQ(tell("0000000999"), WF_NO_CASE);
    EXPECT_EQ(tell(QByteArray()), WF_BAD_CDBH);
    EXPECT_EQ(everything(), before);

    ASSERT_EQ(start(Start()), WF_OK);
    ASSERT_EQ(tell("0000000101"), WF_OK);
    // A holds the approving post; F holds two such posts and hears it once.
    // Not B (prints), C (post out of use), D (function out of use), E (other
    // unit), G (operator out of use).
    EXPECT_EQ(messages(),
              QStringList({QStringLiteral("1|A|40102|2024-07-01 09:31:05|否"), QStringLiteral("2|F|40102|2024-07-01 09:31:05|否")}));
    const QString text = db().scalar(QStringLiteral("SELECT nr FROM z_gzdxx WHERE cdbh = '0000000101' AND xh = 1")).toString();
    for (const QString& part : {QStringLiteral("检查工作审批"), QStringLiteral("0000000101"), QStringLiteral("城关机械厂")})
        EXPECT_TRUE(text.contains(part)) << text.toStdString();

    // After approval the printing post hears of it, numbered on.
    ASSERT_EQ(send("0000000101", "40102", td(2024, 7, 2)), WF_OK);
    ASSERT_EQ(tell("0000000101"), WF_OK);
    EXPECT_EQ(messages().mid(2), QStringList({QStringLiteral("3|B|40103|2024-07-01 09:31:05|否")}));
}

// ---------------------------------------------------------------------------
// The clock, and the connection it comes from

TEST_P(WorkflowTest, GetsysdateFollowsTheDatabaseClockAndEveryCallRefusesWithoutTheConnection) {
    // (A fixed clock after the epoch is the common functions' test, through
    // this library.) Before the epoch the days count back while the time
    // still counts on.
    tarvin::db::setFixedClock(db().connectionName(), QDateTime(QDate(1899, 12, 29), QTime(6, 0)));
    EXPECT_NEAR(wf().getsysdate(), -1.25, 0.1 / 86400);
    tarvin::db::setFixedClock(db().connectionName(), QDateTime());
    const QDateTime now = QDateTime::currentDateTime();
    EXPECT_LT(std::fabs(wf().getsysdate() - QDate(1899, 12, 30).daysTo(now.date()) - now.time().msecsSinceStartOfDay() / 86400000.0), 1.0)
        << "back on the real clock (the server's zone may differ by hours)";

    ASSERT_EQ(start(Start(), true), WF_OK);
    db().db().close();
    EXPECT_EQ(start(Start(), true), WF_NO_CONNECTION);
    EXPECT_EQ(start(Start()), WF_NO_CONNECTION);
    EXPECT_EQ(send("0000000101", "40102", td(2024, 7, 2)), WF_NO_CONNECTION);
    EXPECT_EQ(tell("0000000101"), WF_NO_CONNECTION);
    EXPECT_EQ(wf().getsysdate(), 0.0);
    ASSERT_TRUE(db().db().open());
    EXPECT_EQ(start(Start(), true), WF_OK) << "the connection opened again keeps nothing of the closed one";
}

// ---------------------------------------------------------------------------
// The catalogue the engine and the host's to-do list read

// The module's entries are the host's menu entries.
TEST_P(WorkflowTest, EveryWaitingItemIsWorkedByAnEntryOfTheModule) {
    QStringList exports;
    for (const tarvin::host::MenuEntry& e : tarvin::host::menuEntries()) exports << QLatin1String(e.exportName);
    const QString sql = QStringLiteral("SELECT e.ywxdm, e.export_name, y.ywxdm FROM tarvin_ywx_export e LEFT JOIN z_ywx y ON y.ywxdm = e.ywxdm");
    for (const QString& row : rows(sql)) {
        EXPECT_FALSE(row.endsWith(QLatin1Char('|'))) << row.toStdString() << ": not a grantable code";
        EXPECT_TRUE(exports.contains(row.section(QLatin1Char('|'), 1, 1))) << row.toStdString() << ": not an entry of the module";
    }
    EXPECT_EQ(rows(QStringLiteral("SELECT ywxdm, export_name FROM tarvin_ywx_export WHERE ywxdm IN ('16001', '40099', '40103', '40104') ORDER BY 1")),
              QStringList({QStringLiteral("16001|show_jc_jlyccl"), QStringLiteral("40099|show_jc_bjtx"), QStringLiteral("40103|show_jc_jcgzd"),
                           QStringLiteral("40104|show_jc_jcgzjgjl")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT ywxdm FROM z_lcjd l WHERE ywdm IN ('401', '160') AND NOT EXISTS "
                                  "(SELECT 1 FROM tarvin_ywx_export e WHERE e.ywxdm = l.ywxdm)")), QStringList())
        << "items of the businesses this module drives without a screen";
    // The one item finished by the start has somewhere to go.
    EXPECT_EQ(rows(QStringLiteral("SELECT count(*), count(nullif(xywxdm, '')) FROM z_lcjd WHERE fqwc = 1")), QStringList{QStringLiteral("1|1")});
}

// The catalogue script is run again on a database that has it, or most of
// it, as on a production database: it adds only what is missing and leaves
// what the utility changed.
TEST_P(WorkflowTest, CatalogueScriptAddsOnlyWhatIsMissing) {
    QFile f(QStringLiteral(":/db/common/45_workflow_catalogue.sql"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QStringList statements = tarvin::db::splitStatements(QString::fromUtf8(f.readAll()));
    ASSERT_GT(statements.size(), 20);
    const QString countsSql = QStringLiteral("SELECT (SELECT count(*) FROM z_dlyxyw), (SELECT count(*) FROM z_lcjd), (SELECT count(*) FROM z_ywx), "
                                             "(SELECT count(*) FROM tarvin_ywx_export)");
    const QStringList full = rows(countsSql);
    db().exec(QStringLiteral("DELETE FROM z_lcjd WHERE ywxdm = '40103'"));
    db().exec(QStringLiteral("DELETE FROM tarvin_ywx_export WHERE ywxdm = '40099'"));
    db().exec(QStringLiteral("UPDATE z_lcjd SET ywxmc = '检查工作审批（本单位）' WHERE ywxdm = '40102'"));
    for (const QString& st : statements) db().exec(st);
    EXPECT_EQ(rows(countsSql), full) << "nothing added twice";
    EXPECT_EQ(rows(QStringLiteral("SELECT (SELECT xywxdm FROM z_lcjd WHERE ywxdm = '40103'), (SELECT export_name FROM tarvin_ywx_export "
                                  "WHERE ywxdm = '40099'), (SELECT ywxmc FROM z_lcjd WHERE ywxdm = '40102')")),
              QStringList{QStringLiteral("40104|show_jc_bjtx|检查工作审批（本单位）")})
        << "the missing rows come back; the utility's own name is kept";
}

// ---------------------------------------------------------------------------
// On the demo utility: its waiting cases, posts and grants as a utility has them

class WorkflowOnDemo : public WorkflowTest {
protected:
    void SetUp() override {
        ASSERT_NE(wf().handle, nullptr) << dlerror();
        db_ = std::make_unique<TestDatabase>(dialect(), false);
        tarvin::demo::createDemoDatabase(db().db(), {.customers = 400, .seed = 3, .today = QDate(2025, 3, 10)});
        tarvin::db::setFixedClock(db().connectionName(), QDateTime(QDate(2025, 3, 10), QTime(9, 0)));
    }
    // The posts of the operators told of a case.
    QStringList toldPosts(const QString& cdbh) {
        return rows(QStringLiteral("SELECT DISTINCT g.mc FROM z_gzdxx m, z_czyygw cg, z_gw g WHERE m.cdbh = ? AND cg.czydm = m.jsczy "
                                   "AND g.dm = cg.zdm ORDER BY g.mc"), {cdbh});
    }
    // The first case of unit 0101 waiting at `item`, its messages cleared.
    QString firstCaseAt(const char* item) {
        const QString cdbh = rows(QStringLiteral("SELECT min(cdbh) FROM z_dqgw WHERE dqywx = ? AND glbm = '0101'"), {QLatin1String(item)}).value(0);
        db().exec(QStringLiteral("DELETE FROM z_gzdxx WHERE cdbh = ?"), {cdbh});
        return cdbh;
    }
};

TEST_P(WorkflowOnDemo, WaitingCasesGoOnToTheirPosts) {
    const QString cdbh = firstCaseAt("40102"), anomaly = firstCaseAt("16002");
    ASSERT_FALSE(cdbh.isEmpty() || anomaly.isEmpty()) << "the demo has an inspection waiting for approval and an anomaly case";
    ASSERT_EQ(send(cdbh.toLatin1(), "40102", td(2025, 3, 10, 9)), WF_OK);
    ASSERT_EQ(tell(cdbh.toLatin1()), WF_OK);
    // Printing is the inspectors' work, their leader's and the administrator's, in the case's unit only.
    EXPECT_EQ(toldPosts(cdbh), QStringList({QStringLiteral("用电检查员"), QStringLiteral("用电检查班长"), QStringLiteral("营销管理员")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT DISTINCT x.dw FROM z_gzdxx m, z_xtczy x WHERE m.cdbh = ? AND x.dm = m.jsczy"), {cdbh}),
              QStringList{QStringLiteral("0101")});

    // The anomaly goes on to the metering post.
    ASSERT_EQ(send(anomaly.toLatin1(), "16002", td(2025, 3, 10, 9)), WF_OK);
    EXPECT_EQ(at(anomaly).section(QLatin1Char('|'), 0, 0), QStringLiteral("16003"));
    ASSERT_EQ(tell(anomaly.toLatin1()), WF_OK);
    EXPECT_EQ(toldPosts(anomaly), QStringList({QStringLiteral("营销管理员"), QStringLiteral("计量专责")}));
}

TARVIN_INSTANTIATE_ENGINES(WorkflowOnDemo);
TARVIN_INSTANTIATE_ENGINES(WorkflowTest);

// ---------------------------------------------------------------------------
// The C interface itself

// A plain C program links the five functions and calls them; they are all
// the library exports.
TEST(WorkflowAbi, PlainCProgramLinksTheFiveFunctionsTheLibraryExportsAlone) {
    const ProgramRun r = runProgram(QStringLiteral("workflow_abi"), {}, 30000);
    EXPECT_EQ(r.code, 0) << r.out.toStdString() << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("getsysdate=0.0")) && r.out.count(QStringLiteral("=1\n")) == 7)
        << "every call made, and refused for want of a connection\n" << r.out.toStdString();

    const QString nm = QStandardPaths::findExecutable(QStringLiteral("nm"));
    if (nm.isEmpty()) GTEST_SKIP() << "nm is not installed";
    QProcess p;
    p.start(nm, {QStringLiteral("-D"), QStringLiteral("--defined-only"), QString::fromLatin1(kLibrary)});
    ASSERT_TRUE(p.waitForFinished(30000));
    QStringList names;
    for (const QString& line : QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        names << line.section(QLatin1Char(' '), -1);
    names.sort();
    EXPECT_EQ(names, QStringList({QStringLiteral("SendGzdMess"), QStringLiteral("fristywx"), QStringLiteral("getsysdate"),
                                  QStringLiteral("lcsend"), QStringLiteral("tryfristywx")}));
}

}  // namespace
