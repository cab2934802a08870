// tarvin-alarms: raises the suspicious-customer alarms of one month.
//
//   tarvin-alarms --db URL --ny YYYYMM [--unit DW] [--days N]
//
// One line per alarm kind as it runs, then a summary line. Running it again
// for the same month adds nothing. Exit codes: 0 done, 1 database failure
// (nothing written), 2 bad arguments.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include "AlarmScan.h"
#include "data/Connection.h"
#include "data/MidasQuery.h"

namespace {

QTextStream& out() {
    static QTextStream s(stdout);
    return s;
}
QTextStream& err() {
    static QTextStream s(stderr);
    return s;
}

int usageError(const QString& message, const QCommandLineParser& cli) {
    err() << "tarvin-alarms: " << message << "\n\n" << cli.helpText();
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarvin-alarms"));
    namespace al = tarvin::alarms;

    QCommandLineParser cli;
    cli.setApplicationDescription(QStringLiteral(
        "Finds the customers of one month that fall under the six suspicious-customer alarm kinds\n"
        "and raises one reminder (e_bjtx, '未处理') per month, account and kind. Running it again\n"
        "for the same month adds nothing."));
    cli.addHelpOption();
    cli.addOption({QStringLiteral("db"), QStringLiteral("Database: sqlite:PATH or postgresql://user@host:port/db (required)."),
                   QStringLiteral("URL")});
    cli.addOption({QStringLiteral("ny"), QStringLiteral("The month, YYYYMM (required)."), QStringLiteral("YYYYMM")});
    cli.addOption({QStringLiteral("unit"), QStringLiteral("Only customers of this unit and the units directly under it."),
                   QStringLiteral("DW")});
    cli.addOption({QStringLiteral("days"),
                   QStringLiteral("Kind 06: remind of temporary supply ending within N days (default %1).").arg(al::kDefaultDays),
                   QStringLiteral("N"), QString::number(al::kDefaultDays)});
    if (!cli.parse(app.arguments())) return usageError(cli.errorText(), cli);
    if (cli.isSet(QStringLiteral("help"))) {
        out() << cli.helpText();
        return 0;
    }
    if (!cli.positionalArguments().isEmpty())
        return usageError(QStringLiteral("unexpected argument '%1'").arg(cli.positionalArguments().first()), cli);
    if (!cli.isSet(QStringLiteral("db"))) return usageError(QStringLiteral("--db URL is required"), cli);
    if (!cli.isSet(QStringLiteral("ny"))) return usageError(QStringLiteral("--ny YYYYMM is required"), cli);

    al::ScanOptions o;
    o.ny = cli.value(QStringLiteral("ny")).trimmed();
    o.unit = cli.value(QStringLiteral("unit")).trimmed();
    bool ok = false;
    o.days = cli.value(QStringLiteral("days")).toInt(&ok);
    if (!ok || o.days < 0 || o.days > al::kMaxDays)
        return usageError(QStringLiteral("--days needs a whole number from 0 to %1, not '%2'").arg(al::kMaxDays).arg(cli.value(QStringLiteral("days"))),
                          cli);
    try {
        al::referenceDay(o.ny, QDate::currentDate().addYears(100));  // the form of --ny, before connecting
    } catch (const std::invalid_argument& e) {
        return usageError(QStringLiteral("--ny: ") + QString::fromUtf8(e.what()), cli);
    }

    try {
        tarvin::db::openConnection(cli.value(QStringLiteral("db")));
    } catch (const std::invalid_argument& e) {
        return usageError(QStringLiteral("--db: ") + QString::fromUtf8(e.what()), cli);
    } catch (const EDatabaseError& e) {
        err() << "tarvin-alarms: cannot open the database: " << e.message() << "\n";
        return 1;
    }

    try {
        const al::ScanResult r = al::scanAlarms(o, QStringLiteral("Shdl"), [](const al::KindResult& k) {
            out() << k.kind.code << ' ' << k.kind.caption << ": " << k.inserted << " new\n";
            out().flush();
        });
        QStringList parts;
        for (const al::KindResult& k : r.kinds) parts << k.kind.code + QLatin1Char(' ') + QString::number(k.inserted);
        out() << r.ny << (o.unit.isEmpty() ? QString() : QStringLiteral(" unit ") + o.unit) << ": " << r.inserted()
              << " new alarms (" << parts.join(QStringLiteral(", ")) << "); temporary supply counted from "
              << r.referenceDay.toString(QStringLiteral("yyyy-MM-dd")) << ", " << o.days << " days ahead\n";
    } catch (const std::invalid_argument& e) {
        err() << "tarvin-alarms: " << QString::fromUtf8(e.what()) << "\n";
        return 2;
    } catch (const EDatabaseError& e) {
        err() << "tarvin-alarms: " << e.message() << "\nNothing was written.\n";
        return 1;
    }
    return 0;
}
