// Operators sending batches through the scheduling screen at the same time,
// each its own process (bench_dispatch --operator) on one database: every
// batch whole under its own number, and a batch whose connection dies in
// the middle of the send (its backend terminated on PostgreSQL, the process
// killed on SQLite) leaving nothing while the others go through.
#include <QProcess>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QThread>
#include <map>
#include <memory>

#include "Fixtures.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

constexpr int kOperators = 8, kTasks = 20;

QString hh(int i) { return u"41%1"_s.arg(i, 8, 10, QLatin1Char('0')); }  // i from 1

class DispatchConcurrency : public EngineTest {
protected:
    void SetUp() override {
        db = std::make_unique<TestDatabase>(dialect());
        units(*db);
        QSqlDatabase d = db->db();
        d.transaction();
        for (int i = 1; i <= kOperators * kTasks; ++i) customer(*db, hh(i), u"客户"_s + QString::number(i), u"工业路"_s);
        d.commit();
        db->exec(u"UPDATE y_khda SET htrl = 100"_s);
        db->exec(u"INSERT INTO z_bmbm (dm, mc) VALUES ('0101', '用电检查班')"_s);
        db->exec(u"INSERT INTO w_jclx (dm, mc) VALUES ('01', '周期检查')"_s);
        db->exec(u"INSERT INTO z_xtczy (dm, xingming, dw, sfyx) VALUES ('jc01', '王检', '0101', 1)"_s);
        grant(*db, u"jc01"_s, {u"40102"_s});
    }
    // Operator k sends the customers 20k+1 .. 20k+20.
    std::unique_ptr<QProcess> start(int k, const QStringList& more = {}) {
        auto p = std::make_unique<QProcess>();
        p->start(QStringLiteral(TARVIN_BIN_DIR "/bench_dispatch"),
                 QStringList{u"--operator"_s, u"--db"_s, db->url(), u"--first"_s, hh(k * kTasks + 1), u"--tasks"_s,
                             QString::number(kTasks)} + more);
        EXPECT_TRUE(p->waitForStarted());
        return p;
    }
    // The batch number the operator printed; empty when it failed.
    static QString batchOf(QProcess& p) {
        EXPECT_TRUE(p.waitForFinished(180000));
        const QString out = QString::fromUtf8(p.readAllStandardOutput());
        EXPECT_EQ(p.exitCode(), 0) << out.toStdString() << p.readAllStandardError().toStdString();
        return QRegularExpression(u"batch (\\d+)"_s).match(out).captured(1);
    }
    // Every row the sends write, and how many of them belong to a task.
    QStringList summary() {
        const auto linked = [](const char* label, const char* table, const char* extra) {
            return u"SELECT '%1', count(*), count(j.cdbh), %3 FROM %2 x LEFT JOIN e_jcgzjl j ON j.cdbh = x.cdbh"_s.arg(
                QLatin1String(label), QLatin1String(table), QLatin1String(extra));
        };
        return rows(*db, u"SELECT 'task', count(*), count(DISTINCT cdbh), CAST(count(DISTINCT jcph) AS VARCHAR(20)) FROM e_jcgzjl "
                         "UNION ALL SELECT 'ap', count(*), sum(CASE WHEN EXISTS (SELECT 1 FROM e_jcgzjl j WHERE j.jcph = a.jcph) "
                         "THEN 1 ELSE 0 END), '' FROM e_jcgzap a UNION ALL "_s +
                             linked("ykkzb", "a_ykkzb", "''") + u" UNION ALL "_s + linked("sqxx", "a_khsqxx", "''") +
                             u" UNION ALL "_s + linked("case", "z_dqgw", "min(x.dqywx)") + u" UNION ALL "_s +
                             linked("step", "z_lcls", "''"));
    }
    static QStringList whole(int batches) {
        const QString n = QString::number(batches * kTasks), b = QString::number(batches), s = QString::number(2 * batches * kTasks);
        return {u"task|%1|%1|%2"_s.arg(n, b), u"ap|%1|%1|"_s.arg(b), u"ykkzb|%1|%1|"_s.arg(n), u"sqxx|%1|%1|"_s.arg(n),
                u"case|%1|%1|40102"_s.arg(n), u"step|%1|%1|"_s.arg(s)};
    }
    // Each batch holds its operator's twenty customers, no one else's.
    void expectBatches(const std::map<int, QString>& batches) {
        QStringList expected;
        for (const auto& [k, jcph] : batches)
            expected << u"%1|%2|%3|%4"_s.arg(jcph, hh(k * kTasks + 1), hh(k * kTasks + kTasks)).arg(kTasks);
        EXPECT_EQ(rows(*db, u"SELECT jcph, min(hh), max(hh), count(*) FROM e_jcgzjl GROUP BY jcph ORDER BY min(hh)"_s), expected);
    }
    std::unique_ptr<TestDatabase> db;
};

TEST_P(DispatchConcurrency, EightOperatorsAtOnceEachSendABatchWhole) {
    std::vector<std::unique_ptr<QProcess>> ops;
    for (int k = 0; k < kOperators; ++k) ops.push_back(start(k));
    std::map<int, QString> batches;
    for (int k = 0; k < kOperators; ++k) batches[k] = batchOf(*ops[k]);
    EXPECT_EQ(summary(), whole(kOperators));
    expectBatches(batches);
}

// Operator 0 stops after five tasks, inside its transaction, and loses its
// connection while the seven others send.
TEST_P(DispatchConcurrency, AConnectionLostInTheMiddleOfASendLeavesNothingOfItsBatch) {
    auto lost = start(0, {u"--pause-after"_s, u"5"_s});
    QByteArray out;
    while (!out.contains("paused") && lost->waitForReadyRead(60000)) out += lost->readAllStandardOutput();
    const QRegularExpressionMatch paused = QRegularExpression(u"paused (\\d+) (\\d+)"_s).match(QString::fromUtf8(out));
    ASSERT_TRUE(paused.hasMatch()) << out.toStdString();
    std::vector<std::unique_ptr<QProcess>> ops;
    for (int k = 1; k < kOperators; ++k) ops.push_back(start(k));
    QThread::msleep(500);
    if (dialect() == tarvin::sql::Dialect::PostgreSQL) {
        QSqlQuery q = db->query(u"SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE application_name = ?"_s,
                                {u"bench_dispatch "_s + QString::number(lost->processId())});
        ASSERT_TRUE(q.next() && q.value(0).toBool()) << "the paused operator's session is not found";
        lost->write("go\n");
        lost->closeWriteChannel();
        ASSERT_TRUE(lost->waitForFinished(60000));
        out += lost->readAllStandardOutput();
        EXPECT_EQ(lost->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(lost->exitCode(), 1);
        EXPECT_TRUE(out.contains(u"当前客户流程发送错误，请尝试重新发送。"_s.toUtf8())) << out.toStdString();
    } else {
        lost->kill();
        lost->waitForFinished();
    }
    std::map<int, QString> batches;
    for (int k = 1; k < kOperators; ++k) batches[k] = batchOf(*ops[k - 1]);
    EXPECT_EQ(summary(), whole(kOperators - 1));
    expectBatches(batches);
    const QString jcph = paused.captured(1), cdbh = paused.captured(2), last = hh(kTasks);
    EXPECT_EQ(db->scalar(u"SELECT (SELECT count(*) FROM e_jcgzjl WHERE jcph = ? OR hh <= ?) + (SELECT count(*) FROM e_jcgzap "
                         "WHERE jcph = ?) + (SELECT count(*) FROM a_khsqxx WHERE hh <= ? OR cdbh = ?) + (SELECT count(*) FROM "
                         "z_dqgw WHERE khbh <= ? OR cdbh = ?) + (SELECT count(*) FROM a_ykkzb WHERE cdbh = ?)"_s,
                         {jcph, last, jcph, last, cdbh, last, cdbh, cdbh})
                  .toInt(),
              0);
}

TARVIN_INSTANTIATE_ENGINES(DispatchConcurrency);

}  // namespace
