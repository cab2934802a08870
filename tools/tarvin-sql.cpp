// tarvin-sql: shows how the dialect bridge rewrites an Oracle text, or runs
// it on a database through the module's own data layer and prints the rows
// as tab-separated text with a header line.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

#include "data/Connection.h"
#include "data/MidasQuery.h"
#include "data/SqlDialect.h"

namespace {

QTextStream& out() {
    static QTextStream s(stdout);
    return s;
}
QTextStream& err() {
    static QTextStream s(stderr);
    return s;
}

struct ParamSpec {
    QString name;
    QString type;  // text, int, float, date, datetime, out
    QString value;
};

ParamSpec parseParam(const QString& arg) {
    const int eq = arg.indexOf(QLatin1Char('='));
    QString head = eq < 0 ? arg : arg.left(eq);
    ParamSpec p;
    p.value = eq < 0 ? QString() : arg.mid(eq + 1);
    const int colon = head.indexOf(QLatin1Char(':'));
    p.name = colon < 0 ? head : head.left(colon);
    p.type = colon < 0 ? (eq < 0 ? QStringLiteral("out") : QStringLiteral("text")) : head.mid(colon + 1).toLower();
    static const QStringList known{"text", "int", "float", "date", "datetime", "out"};
    if (p.name.isEmpty() || !known.contains(p.type))
        throw std::invalid_argument(
            QStringLiteral("bad parameter '%1': use NAME=VALUE, NAME:TYPE=VALUE (TYPE: int, float, date, datetime) or NAME:out")
                .arg(arg).toStdString());
    return p;
}

void bind(TParam& param, const ParamSpec& p) {
    if (p.type == QLatin1String("text")) param.SetAsString(p.value);
    else if (p.type == QLatin1String("int")) {
        bool ok = false;
        const qint64 v = p.value.toLongLong(&ok);
        if (!ok) throw std::invalid_argument(("not an integer: " + p.value).toStdString());
        param.SetAsInteger(v);
    } else if (p.type == QLatin1String("float")) {
        bool ok = false;
        const double v = p.value.toDouble(&ok);
        if (!ok) throw std::invalid_argument(("not a number: " + p.value).toStdString());
        param.SetAsFloat(v);
    } else if (p.type == QLatin1String("date") || p.type == QLatin1String("datetime")) {
        QDateTime dt = QDateTime::fromString(p.value, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (!dt.isValid()) dt = QDate::fromString(p.value, QStringLiteral("yyyy-MM-dd")).startOfDay();
        if (!dt.isValid()) throw std::invalid_argument(("not a date (yyyy-mm-dd[ hh:mm:ss]): " + p.value).toStdString());
        if (p.type == QLatin1String("date")) param.SetAsDate(dt);
        else param.SetAsDateTime(dt);
    } else {
        param.ParamType = ptOutput;
        param.DataType = ftString;
    }
}

QString cell(const QString& s) {
    QString t = s;
    t.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    return t;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarvin-sql"));
    QCommandLineParser cli;
    cli.setApplicationDescription(QStringLiteral(
        "Runs an Oracle SQL text of the inspection module on a database, or shows how it is rewritten."));
    cli.addHelpOption();
    cli.addOption({QStringLiteral("db"), QStringLiteral("Database: sqlite:PATH or postgresql://user@host:port/db."), QStringLiteral("URL")});
    cli.addOption({QStringLiteral("dialect"), QStringLiteral("Target dialect for --translate-only: sqlite, postgresql, oracle."), QStringLiteral("NAME")});
    cli.addOption({QStringLiteral("translate-only"), QStringLiteral("Print the rewritten text and do not run it.")});
    cli.addOption({{QStringLiteral("p"), QStringLiteral("param")},
                   QStringLiteral("Parameter: NAME=VALUE (text), NAME:int=, NAME:float=, NAME:date=, NAME:datetime=, NAME:out."),
                   QStringLiteral("SPEC")});
    cli.addPositionalArgument(QStringLiteral("SQL"), QStringLiteral("The Oracle text; '-' reads it from standard input."));
    cli.process(app);

    const QStringList pos = cli.positionalArguments();
    if (pos.size() != 1) {
        err() << "tarvin-sql: give exactly one SQL text (quote it), or '-' to read it from standard input\n";
        return 2;
    }
    QString sql = pos.first();
    if (sql == QLatin1String("-")) sql = QTextStream(stdin).readAll();

    try {
        QList<ParamSpec> specs;
        for (const QString& a : cli.values(QStringLiteral("p"))) specs << parseParam(a);

        if (cli.isSet(QStringLiteral("translate-only"))) {
            tarvin::sql::Dialect d = tarvin::sql::Dialect::SQLite;
            if (cli.isSet(QStringLiteral("dialect"))) d = tarvin::sql::dialectFromName(cli.value(QStringLiteral("dialect")));
            else if (cli.isSet(QStringLiteral("db"))) d = tarvin::db::DatabaseUrl::parse(cli.value(QStringLiteral("db"))).dialect;
            const tarvin::sql::Translated t = tarvin::sql::translate(sql, d);
            QStringList places;
            for (const QString& n : t.params) places << QLatin1Char(':') + n;
            out() << t.withLiterals(places) << "\n";
            return 0;
        }
        if (!cli.isSet(QStringLiteral("db"))) {
            err() << "tarvin-sql: --db URL is needed to run a text (or use --translate-only --dialect NAME)\n";
            return 2;
        }
        tarvin::db::openConnection(cli.value(QStringLiteral("db")));
        TMidasQuery q;
        q.SQL().SetText(sql);
        const tarvin::sql::Translated t = tarvin::sql::translate(sql, TCustomMidasDataBase::ByName().Dialect());
        for (const QString& o : t.outputs)
            if (TParam* p = q.Params().FindParam(o)) p->ParamType = ptOutput;
        for (const ParamSpec& s : specs) {
            TParam* p = q.Params().FindParam(s.name);
            if (!p) {
                err() << "tarvin-sql: the text has no parameter :" << s.name << "\n";
                return 2;
            }
            bind(*p, s);
        }
        if (t.kind == tarvin::sql::Translated::Kind::Query) {
            q.Open();
            out() << q.FieldNames().join(QLatin1Char('\t')) << "\n";
            for (q.First(); !q.Eof(); q.Next()) {
                QStringList row;
                for (int i = 0; i < q.FieldCount(); ++i) row << cell(q.Fields(i).AsString());
                out() << row.join(QLatin1Char('\t')) << "\n";
            }
        } else {
            q.ExecSQL();
            bool any = false;
            for (int i = 0; i < q.Params().Count(); ++i) {
                TParam& p = q.Params()[i];
                if (p.ParamType == ptOutput) {
                    out() << p.Name << "=" << p.AsString() << "\n";
                    any = true;
                }
            }
            if (!any && t.kind == tarvin::sql::Translated::Kind::Statement)
                out() << "rows affected: " << q.RowsAffected() << "\n";
        }
        return 0;
    } catch (const tarvin::sql::TranslateError& e) {
        err() << "tarvin-sql: cannot translate: " << e.message() << "\n";
    } catch (const EDatabaseError& e) {
        err() << "tarvin-sql: " << e.message() << "\n";
    } catch (const std::exception& e) {
        err() << "tarvin-sql: " << e.what() << "\n";
    }
    return 1;
}
