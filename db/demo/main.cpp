// tarvin-demo-db: creates the reference schema on a new database and writes
// the demo utility into it.
//
//   tarvin-demo-db --db URL [--customers N] [--seed S] [--units K]
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <cstdio>

#include "data/Connection.h"
#include "DemoGenerator.h"
#include "data/MidasQuery.h"
#include "Schema.h"

namespace {

const char* kUsage =
    "usage: tarvin-demo-db --db URL [--customers N] [--seed S] [--units K]\n"
    "\n"
    "Creates the reference schema on a new database and writes a demo utility:\n"
    "units, operators, network, customers with two years of energy and charges,\n"
    "past business and planted suspicious customers for every screening category.\n"
    "\n"
    "  --db URL         sqlite:PATH or postgresql://user@host:port/database (required;\n"
    "                   the database must not hold the schema yet)\n"
    "  --customers N    number of customers (default 20000)\n"
    "  --seed S         seed of the data, a whole number (default 1); the same seed\n"
    "                   writes the same utility on SQLite and PostgreSQL\n"
    "  --units K        number of supply units (default 2)\n";

void fail(const QString& message) {
    std::fprintf(stderr, "tarvin-demo-db: %s\n", message.toUtf8().constData());
}

struct Args {
    QString url;
    tarvin::demo::DemoOptions options;
};

// Returns false (after a message) when the command line is not usable.
bool parse(const QStringList& argv, Args& a, bool& help) {
    for (int i = 1; i < argv.size(); ++i) {
        const QString& arg = argv[i];
        if (arg == QLatin1String("-h") || arg == QLatin1String("--help")) {
            help = true;
            return true;
        }
        QString name = arg, value;
        const int eq = arg.indexOf(QLatin1Char('='));
        if (arg.startsWith(QLatin1String("--")) && eq > 0) {
            name = arg.left(eq);
            value = arg.mid(eq + 1);
        } else if (i + 1 < argv.size()) {
            value = argv[i + 1];
            if (name.startsWith(QLatin1String("--"))) ++i;
        }
        bool ok = false;
        if (name == QLatin1String("--db")) {
            a.url = value;
            ok = !value.isEmpty();
        } else if (name == QLatin1String("--customers")) {
            const qint64 n = value.toLongLong(&ok);
            ok = ok && n >= 1 && n <= tarvin::demo::kMaxCustomers;
            a.options.customers = n;
            if (!ok) {
                fail(QStringLiteral("--customers needs a whole number from 1 to %1, not '%2'").arg(tarvin::demo::kMaxCustomers).arg(value));
                return false;
            }
        } else if (name == QLatin1String("--seed")) {
            a.options.seed = value.toULongLong(&ok);
            if (!ok) {
                fail(QStringLiteral("--seed needs a whole number from 0 to 18446744073709551615, not '%1'").arg(value));
                return false;
            }
        } else if (name == QLatin1String("--units")) {
            const int k = value.toInt(&ok);
            ok = ok && k >= 1 && k <= tarvin::demo::kMaxUnits;
            a.options.units = k;
            if (!ok) {
                fail(QStringLiteral("--units needs a whole number from 1 to %1, not '%2'").arg(tarvin::demo::kMaxUnits).arg(value));
                return false;
            }
        } else {
            fail(QStringLiteral("unknown argument '%1'").arg(arg));
            return false;
        }
        if (!ok) {
            fail(QStringLiteral("%1 needs a value").arg(name));
            return false;
        }
    }
    if (a.url.isEmpty()) {
        fail(QStringLiteral("--db URL is required"));
        return false;
    }
    if (a.options.customers < a.options.units) {
        fail(QStringLiteral("%1 customers cannot fill %2 units: give at least one customer per unit")
                 .arg(a.options.customers).arg(a.options.units));
        return false;
    }
    return true;
}

QString grouped(qint64 n) {
    QString s = QString::number(n);
    for (int i = int(s.size()) - 3; i > 0; i -= 3) s.insert(i, QLatin1Char(','));
    return s;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Args a;
    bool help = false;
    if (!parse(app.arguments(), a, help)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    if (help) {
        std::fputs(kUsage, stdout);
        return 0;
    }

    tarvin::db::DatabaseUrl url;
    try {
        url = tarvin::db::DatabaseUrl::parse(a.url);
    } catch (const std::invalid_argument& e) {
        fail(QString::fromUtf8(e.what()));
        return 2;
    }
    // A SQLite file this run creates is removed again if the run fails, so a
    // failure leaves things as they were.
    const bool sqlite = url.dialect == tarvin::sql::Dialect::SQLite;
    const bool newFile = sqlite && url.path != QLatin1String(":memory:") && !QFileInfo::exists(url.path);
    if (sqlite && newFile && !QFileInfo(url.path).absoluteDir().exists()) {
        fail(QStringLiteral("the folder of %1 does not exist").arg(url.path));
        return 2;
    }

    const QString connection = QStringLiteral("tarvin_demo");
    bool schemaCreated = false;
    int rc = 0;
    try {
        QSqlDatabase db = tarvin::db::openConnection(a.url, connection);
        if (tarvin::demo::holdsReferenceSchema(db)) {
            fail(QStringLiteral("%1 already holds the reference schema. The demo utility is written only into a new, "
                                "empty database; nothing was changed. Give a new file or database.")
                     .arg(url.toString()));
            rc = 3;
        } else {
            QElapsedTimer timer;
            timer.start();
            qint64 lastShown = -1000;
            const auto progress = [&](std::int64_t written, std::int64_t total) {
                const qint64 ms = timer.elapsed();
                if (written < total && ms - lastShown < 200) return;
                lastShown = ms;
                const double rate = ms > 0 ? double(written) * 1000.0 / double(ms) : 0.0;
                std::fprintf(stderr, "\rcustomers %s / %s  (%s a second)   ", grouped(written).toUtf8().constData(),
                             grouped(total).toUtf8().constData(), grouped(qint64(rate)).toUtf8().constData());
                std::fflush(stderr);
            };
            std::fprintf(stderr, "creating the reference schema on %s\n", url.toString().toUtf8().constData());
            tarvin::db::createSchema(db);
            schemaCreated = true;
            const tarvin::demo::DemoSummary s = tarvin::demo::writeDemo(db, a.options, progress);
            std::fprintf(stderr, "\n");
            std::printf("demo utility written: %s %s in units %s under %s, %s rows, data up to %s, seed %llu, %.1f s\n",
                        grouped(s.customers).toUtf8().constData(), s.customers == 1 ? "customer" : "customers", s.units.join(QStringLiteral(", ")).toUtf8().constData(),
                        s.parentUnit.toUtf8().constData(), grouped(s.rows).toUtf8().constData(),
                        s.today.toString(QStringLiteral("yyyy-MM-dd")).toUtf8().constData(),
                        static_cast<unsigned long long>(a.options.seed), double(timer.elapsed()) / 1000.0);
        }
    } catch (const EDatabaseError& e) {
        std::fprintf(stderr, "\n");
        fail(e.message());
        rc = 1;
    }
    tarvin::db::closeConnection(connection);
    if (rc == 1 && newFile) {
        for (const char* suffix : {"", "-wal", "-shm", "-journal"}) QFile::remove(url.path + QLatin1String(suffix));
        if (schemaCreated) fail(QStringLiteral("the new file %1 was removed again").arg(url.path));
    } else if (rc == 1 && schemaCreated) {
        fail(QStringLiteral("the reference schema was created but holds no demo data; drop and recreate the database before trying again"));
    }
    return rc;
}
