// The customer picker's search on the demo utility: the picker's own search
// (Bbtn_CxClick: the count, then the list into the grid, repainted) against
// the same two engine texts run directly through QSqlQuery with every column
// of every row read, in the same process on the same database. Best of 3.
//
//   bench_customer_picker [CUSTOMERS] [--db URL]   (default 100000, SQLite
//   in a temporary file; URL names a new, empty database, e.g. PostgreSQL)
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include "data/Connection.h"
#include "data/DataModules.h"
#include "DemoGenerator.h"
#include "pickers/Frm_Gy_Qkhbh.h"
#include "frame/MessageService.h"
#include "data/MidasQuery.h"

namespace {

constexpr int kRounds = 3;  // best of, for each measurement
constexpr qint64 kGuard = 1000;

double seconds(const QElapsedTimer& t) { return double(t.nsecsElapsed()) / 1e9; }

template <class F>
double best(F f) {
    double b = 1e9;
    for (int i = 0; i < kRounds; ++i) b = std::min(b, f());
    return b;
}

QVariant scalar(const QSqlDatabase& db, const QString& sql) {
    QSqlQuery q(db);
    if (!q.exec(sql) || !q.next()) throw EDatabaseError(QStringLiteral("cannot run: %1").arg(sql));
    return q.value(0);
}

// The engine text run as the dataset runs it: every column of every row read.
qint64 readAll(const QSqlDatabase& db, const QString& sql) {
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.exec(sql)) throw EDatabaseError(QStringLiteral("cannot run: %1").arg(sql));
    const int columns = q.record().count();
    qint64 rows = 0;
    qint64 chars = 0;
    while (q.next()) {
        for (int c = 0; c < columns; ++c) chars += q.value(c).toString().size();
        ++rows;
    }
    if (chars < 0) std::printf("%lld\n", static_cast<long long>(chars));  // keeps the reads
    return rows;
}

struct Case {
    const char* what;
    QCheckBox* box;
    QLineEdit* input;
    QString text;
};

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::int64_t customers = 100000;
    QString url;
    for (int i = 1; i < argc; ++i) {
        const QString a = QString::fromLocal8Bit(argv[i]);
        if (a == QLatin1String("--db") && i + 1 < argc) url = QString::fromLocal8Bit(argv[++i]);
        else customers = a.toLongLong();
    }
    if (customers < 2 || customers > tarvin::demo::kMaxCustomers) {
        std::fprintf(stderr, "bench_customer_picker: CUSTOMERS must be from 2 to %lld\n",
                     static_cast<long long>(tarvin::demo::kMaxCustomers));
        return 2;
    }
    QTemporaryDir dir;
    if (url.isEmpty()) url = QStringLiteral("sqlite:") + dir.filePath(QStringLiteral("demo.sqlite"));
    // Boxes are answered at once; the guard's tip is counted, not shown.
    int tips = 0;
    tarvin::MessageService::setHandler([&](const tarvin::MessageRequest& r) {
        if (r.caption != QStringLiteral("提示")) std::fprintf(stderr, "message: %s\n", qPrintable(r.text));
        ++tips;
        return QMessageBox::Ok;
    });
    try {
        QSqlDatabase db = tarvin::db::openConnection(url, QStringLiteral("Shdl"));
        const char* engine = tarvin::db::dialectOf(db) == tarvin::sql::Dialect::SQLite ? "SQLite" : "PostgreSQL";
        std::fprintf(stderr, "writing the demo utility (%lld customers) ...\n", static_cast<long long>(customers));
        tarvin::demo::DemoOptions o;
        o.customers = customers;
        const tarvin::demo::DemoSummary summary = tarvin::demo::createDemoDatabase(db, o);
        if (tarvin::db::dialectOf(db) == tarvin::sql::Dialect::PostgreSQL) {
            QSqlQuery q(db);
            q.exec(QStringLiteral("ANALYZE"));
        }
        CreateDataModules();

        // The texts searched come from the data itself: the most frequent
        // surname that still lists (at most 1000 customers), the address of
        // one building, an account number, and a whole district (more than
        // the guard: only the count runs).
        QString surname;
        {
            QSqlQuery q(db);
            // Personal names (two or three characters) begin with the surname.
            if (!q.exec(QStringLiteral("SELECT substr(hm, 1, 1) AS c, COUNT(*) AS n FROM y_khda WHERE length(hm) <= 3 "
                                       "GROUP BY substr(hm, 1, 1) ORDER BY n DESC")))
                throw EDatabaseError(QStringLiteral("cannot group the names"));
            while (q.next())
                if (q.value(1).toLongLong() <= kGuard) {
                    surname = q.value(0).toString();
                    break;
                }
        }
        const QString address = scalar(db, QStringLiteral("SELECT yddz FROM y_khda WHERE hh = '0000000002'")).toString();
        const QString building = address.contains(QStringLiteral("栋")) ? address.left(address.indexOf(QStringLiteral("栋")) + 1)
                                                                         : address;
        const QString district = address.left(3);

        QElapsedTimer open;
        open.start();
        TGy_Qkhbh_Frm picker;
        picker.show();
        QApplication::processEvents();
        const double openSeconds = seconds(open);

        const std::vector<Case> cases = {
            {"name prefix", picker.Ckb_hm, picker.Edt_hm, surname},
            {"address prefix (one building)", picker.Ckb_yddz, picker.Edt_yddz, building},
            {"account number", picker.Ckb_Hh, picker.Edt_Hh, QStringLiteral("123")},
            {"address prefix (a district, over the guard)", picker.Ckb_yddz, picker.Edt_yddz, district},
        };

        std::printf("bench_customer_picker (%s): %lld customers; picker opened in %.1f ms\n", engine,
                    static_cast<long long>(summary.customers), openSeconds * 1e3);
        std::printf("  %-44s %8s %10s %10s %7s\n", "search", "rows", "picker ms", "direct ms", "ratio");
        double worst = 0;
        for (const Case& c : cases) {
            for (QCheckBox* b : picker.findChildren<QCheckBox*>())
                if (b->isChecked()) b->click();
            c.box->click();
            c.input->setText(c.text);
            Gy_Khcx_Dm->Mqry_Fkhbh->Close();
            const int tipsBefore = tips;
            picker.Bbtn_CxClick();  // warm-up, and the texts to run directly
            const bool guarded = tips != tipsBefore;
            const QString countSql = Gy_Khcx_Dm->Mqry_Select->LastEngineSql();
            const QString listSql = guarded ? QString() : Gy_Khcx_Dm->Mqry_Fkhbh->LastEngineSql();
            const qint64 listed = guarded ? 0 : Gy_Khcx_Dm->Mqry_Fkhbh->RecordCount();
            const qint64 count = scalar(db, countSql).toLongLong();

            const double p = best([&] {
                QElapsedTimer t;
                t.start();
                picker.Bbtn_CxClick();
                QApplication::processEvents();  // the grid repainted
                return seconds(t);
            });
            const double d = best([&] {
                QElapsedTimer t;
                t.start();
                scalar(db, countSql);
                if (!listSql.isEmpty() && readAll(db, listSql) != listed)
                    throw EDatabaseError(QStringLiteral("the direct list differs from the picker's"));
                return seconds(t);
            });
            worst = std::max(worst, p);
            std::printf("  %-44s %8lld %10.2f %10.2f %7.2f   %s \"%s\"\n", c.what,
                        static_cast<long long>(guarded ? count : listed), p * 1e3, d * 1e3, p / d,
                        guarded ? "count only, tip shown:" : "listed:", qPrintable(c.text));
        }
        std::printf("  slowest picker search: %.1f ms\n", worst * 1e3);
        picker.hide();
        FreeDataModules();
        db = QSqlDatabase();
        tarvin::db::closeConnection(QStringLiteral("Shdl"));
    } catch (const EDatabaseError& e) {
        std::fprintf(stderr, "bench_customer_picker: %s\n", e.what());
        return 1;
    } catch (const std::invalid_argument& e) {
        std::fprintf(stderr, "bench_customer_picker: %s\n", e.what());
        return 1;
    }
    return 0;
}
