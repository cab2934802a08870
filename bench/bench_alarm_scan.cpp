// The alarm scan's speed on SQLite over the demo utility, against a plain
// scan of the month's ledger rows (every row read and summed) in the same
// process, on the same file.
//
//   bench_alarm_scan [CUSTOMERS]   (default 100000)
//   bench_alarm_scan --db URL      (an existing demo database, any engine)
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "AlarmScan.h"
#include "data/Connection.h"
#include "DemoGenerator.h"
#include "data/MidasQuery.h"
#include "data/SqlDialect.h"

namespace {

constexpr int kRounds = 3;  // best of, for each measurement

double seconds(const QElapsedTimer& t) { return double(t.nsecsElapsed()) / 1e9; }

// Every ledger row of the month read and its energies summed.
double baselineSeconds(const QSqlDatabase& db, const QString& ny, qint64& rows) {
    QSqlQuery q(db);
    q.setForwardOnly(true);
    QElapsedTimer t;
    t.start();
    if (!q.prepare(QStringLiteral("SELECT hh, jffdl, jfpdl, jfgdl, wgdl FROM b_dltzxx WHERE ny = ?")))
        throw EDatabaseError(QStringLiteral("baseline: cannot prepare"));
    q.addBindValue(ny);
    if (!q.exec()) throw EDatabaseError(QStringLiteral("baseline: cannot run"));
    double sum = 0;
    rows = 0;
    while (q.next()) {
        sum += q.value(1).toDouble() + q.value(2).toDouble() + q.value(3).toDouble() + q.value(4).toDouble();
        ++rows;
    }
    const double s = seconds(t);
    if (sum < 0) std::printf("%f\n", sum);  // keeps the reads
    return s;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::int64_t customers = 100000;
    QString url;
    if (argc > 2 && QLatin1String(argv[1]) == QLatin1String("--db")) url = QString::fromLocal8Bit(argv[2]);
    else if (argc > 1) customers = std::atoll(argv[1]);
    if (url.isEmpty() && (customers < 2 || customers > tarvin::demo::kMaxCustomers)) {
        std::fprintf(stderr, "bench_alarm_scan: CUSTOMERS must be from 2 to %lld\n", static_cast<long long>(tarvin::demo::kMaxCustomers));
        return 2;
    }
    QTemporaryDir dir;
    try {
        const QString connection = QStringLiteral("Shdl");
        QSqlDatabase db = tarvin::db::openConnection(
            url.isEmpty() ? QStringLiteral("sqlite:") + dir.filePath(QStringLiteral("demo.sqlite")) : url, connection);
        tarvin::demo::DemoSummary s;
        if (url.isEmpty()) {
            std::fprintf(stderr, "writing the demo utility (%lld customers) ...\n", static_cast<long long>(customers));
            tarvin::demo::DemoOptions o;
            o.customers = customers;
            s = tarvin::demo::createDemoDatabase(db, o);
        } else {
            QSqlQuery q(db);
            if (!q.exec(QStringLiteral("select count(*) from y_khda")) || !q.next())
                throw EDatabaseError(QStringLiteral("not a demo database: ") + url);
            s.customers = q.value(0).toLongLong();
            TMidasQuery clock;
            OpenSql(&clock, QStringLiteral("select sysdate from dual"));
            s.today = clock.Fields(0).AsDateTime().date();
        }
        const QString ny = s.today.toString(QStringLiteral("yyyyMM"));

        tarvin::alarms::ScanOptions scan;
        scan.ny = ny;
        scan.today = s.today;
        const auto clear = [&] {
            QSqlQuery q(db);
            if (!q.exec(QStringLiteral("DELETE FROM e_bjtx WHERE ny = '%1'").arg(ny))) throw EDatabaseError(QStringLiteral("cannot clear the month"));
        };

        std::vector<double> base, full, again;
        qint64 rows = 0;
        int raised = 0;
        std::vector<double> perKind(tarvin::alarms::alarmKinds().size(), 1e9);
        for (int round = 0; round < kRounds; ++round) {
            base.push_back(baselineSeconds(db, ny, rows));
            clear();
            QElapsedTimer t, k;
            t.start();
            k.start();
            std::size_t kind = 0;
            raised = tarvin::alarms::scanAlarms(scan, connection, [&](const tarvin::alarms::KindResult&) {
                         perKind[kind] = std::min(perKind[kind], seconds(k));
                         ++kind;
                         k.restart();
                     }).inserted();
            full.push_back(seconds(t));
            t.restart();
            tarvin::alarms::scanAlarms(scan, connection);  // nothing left to raise
            again.push_back(seconds(t));
        }
        const double b = *std::min_element(base.begin(), base.end());
        const double f = *std::min_element(full.begin(), full.end());
        const double a = *std::min_element(again.begin(), again.end());

        std::printf("bench_alarm_scan (%s): %lld customers, month %s: %lld ledger rows, %d alarms raised\n",
                    qPrintable(tarvin::sql::dialectName(tarvin::db::dialectOf(db))), static_cast<long long>(s.customers), qPrintable(ny), static_cast<long long>(rows), raised);
        std::printf("  baseline, a plain scan of the month's ledger rows: %.3f s\n", b);
        std::printf("  the alarm scan, six kinds in one transaction:       %.3f s\n", f);
        for (std::size_t i = 0; i < perKind.size(); ++i)
            std::printf("    %s %s: %.3f s\n", qPrintable(tarvin::alarms::alarmKinds()[i].code),
                        qPrintable(tarvin::alarms::alarmKinds()[i].caption), perKind[i]);
        std::printf("  the scan run again (nothing new):                   %.3f s\n", a);
        std::printf("  ratio scan / baseline: %.2f\n", f / b);
        std::printf("  ratio repeated scan / baseline: %.2f\n", a / b);
        db = QSqlDatabase();
        tarvin::db::closeConnection(connection);
    } catch (const EDatabaseError& e) {
        std::fprintf(stderr, "bench_alarm_scan: %s\n", e.what());
        return 1;
    } catch (const std::invalid_argument& e) {
        std::fprintf(stderr, "bench_alarm_scan: %s\n", e.what());
        return 1;
    }
    return 0;
}
