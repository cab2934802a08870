// The demo generator's speed on SQLite, against a plain prepared-insert loop
// of the same number of rows into one ledger-shaped table, in the same
// process and on the same disk.
//
//   bench_demo [CUSTOMERS]   (default 20000)
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlDriver>
#include <QTemporaryDir>
#include <cstdio>
#include <sqlite3.h>

#include "data/Connection.h"
#include "DemoGenerator.h"
#include "data/MidasQuery.h"

namespace {

sqlite3* handleOf(const QSqlDatabase& db) {
    const QVariant v = db.driver()->handle();
    return *static_cast<sqlite3* const*>(v.data());
}

void check(sqlite3* h, int rc, const char* what) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW)
        throw EDatabaseError(QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromUtf8(sqlite3_errmsg(h))));
}

// rows rows of (account, month, point, three energies, power factor, date),
// keyed like the ledger, in one transaction.
double baselineSeconds(const QString& file, std::int64_t rows) {
    QSqlDatabase db = tarvin::db::openConnection(QStringLiteral("sqlite:") + file, QStringLiteral("baseline"));
    sqlite3* h = handleOf(db);
    check(h, sqlite3_exec(h, "CREATE TABLE t (hh VARCHAR(10), ny VARCHAR(6), jfdbh VARCHAR(20), jffdl NUMERIC, jfpdl NUMERIC, "
                             "jfgdl NUMERIC, sjll NUMERIC, cbrq TIMESTAMP(0), PRIMARY KEY (hh, ny, jfdbh))",
                          nullptr, nullptr, nullptr),
          "create");
    QElapsedTimer timer;
    timer.start();
    check(h, sqlite3_exec(h, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), "begin");
    sqlite3_stmt* s = nullptr;
    check(h, sqlite3_prepare_v2(h, "INSERT INTO t VALUES (?, ?, ?, ?, ?, ?, ?, ?)", -1, &s, nullptr), "prepare");
    char hh[24], ny[8];
    for (std::int64_t i = 0; i < rows; ++i) {
        std::snprintf(hh, sizeof hh, "%010lld", static_cast<long long>(i / 24 + 1));
        std::snprintf(ny, sizeof ny, "2024%02d", int(i % 24) / 2 + 1);
        sqlite3_bind_text(s, 1, hh, -1, SQLITE_STATIC);
        sqlite3_bind_text(s, 2, ny, -1, SQLITE_STATIC);
        sqlite3_bind_text(s, 3, i % 2 ? "02" : "01", -1, SQLITE_STATIC);
        sqlite3_bind_double(s, 4, double(i % 1000));
        sqlite3_bind_double(s, 5, double(i % 777));
        sqlite3_bind_double(s, 6, double(i % 555));
        sqlite3_bind_double(s, 7, 90.5);
        sqlite3_bind_text(s, 8, "2024-01-25 09:00:00", -1, SQLITE_STATIC);
        check(h, sqlite3_step(s), "insert");
        sqlite3_reset(s);
    }
    sqlite3_finalize(s);
    check(h, sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr), "commit");
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    db = QSqlDatabase();
    tarvin::db::closeConnection(QStringLiteral("baseline"));
    return seconds;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::int64_t customers = 20000;
    if (argc > 1) customers = std::atoll(argv[1]);
    if (customers < 2 || customers > tarvin::demo::kMaxCustomers) {
        std::fprintf(stderr, "bench_demo: CUSTOMERS must be from 2 to %lld\n", static_cast<long long>(tarvin::demo::kMaxCustomers));
        return 2;
    }
    QTemporaryDir dir;
    try {
        QSqlDatabase db = tarvin::db::openConnection(QStringLiteral("sqlite:") + dir.filePath(QStringLiteral("demo.sqlite")),
                                                     QStringLiteral("demo"));
        tarvin::demo::DemoOptions o;
        o.customers = customers;
        QElapsedTimer timer;
        timer.start();
        const tarvin::demo::DemoSummary s = tarvin::demo::createDemoDatabase(db, o);
        const double demoSeconds = double(timer.nsecsElapsed()) / 1e9;
        db = QSqlDatabase();
        tarvin::db::closeConnection(QStringLiteral("demo"));

        const double base = baselineSeconds(dir.filePath(QStringLiteral("baseline.sqlite")), s.rows);
        std::printf("bench_demo (SQLite): %lld customers, %lld rows\n", static_cast<long long>(s.customers), static_cast<long long>(s.rows));
        std::printf("  demo generator (schema, data, ANALYZE): %.2f s  = %.0f customers a second, %.0f a minute\n", demoSeconds,
                    double(s.customers) / demoSeconds, double(s.customers) * 60.0 / demoSeconds);
        std::printf("  baseline, the same number of rows by a plain prepared insert into one table: %.2f s\n", base);
        std::printf("  ratio generator / baseline: %.2f\n", demoSeconds / base);
    } catch (const EDatabaseError& e) {
        std::fprintf(stderr, "bench_demo: %s\n", e.what());
        return 1;
    }
    return 0;
}
