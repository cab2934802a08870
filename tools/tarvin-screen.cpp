// tarvin-screen: one screening category of one unit, searched as the
// screening screen searches it, every customer found on its own line with
// the rule's figures for that customer.
//
//   tarvin-screen --db URL --unit DW --category N [--param NAME=VALUE ...]
//                 [--format tsv|csv] [--quiet]
//
// Exit codes: 0 done (no customer found is no failure), 1 database failure,
// 2 bad arguments or a category or parameter the screen would refuse.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMap>
#include <QTextStream>
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <unistd.h>

#include "common/unit_zt_pubfun.h"
#include "data/Connection.h"
#include "data/DataModules.h"
#include "data/MidasQuery.h"
#include "screening/Unt_Jc_Kycslb.h"

using namespace Qt::StringLiterals;

namespace {

QTextStream out(stdout), err(stderr);

// Refused before anything is searched: exit code 2.
struct Refusal : std::runtime_error {
    explicit Refusal(const QString& message) : std::runtime_error(message.toStdString()) {}
};

// The base columns a line starts with; the category's extra ones and the
// reason follow.
const QStringList kBase{u"HH"_s, u"HM"_s, u"YDDZ"_s, u"DW"_s};

// Values as a person reads them: dates without a midnight time, numbers
// without trailing zeros.
QString text(const QVariant& v) {
    if (v.isNull()) return {};
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: {
        QString s = QString::number(v.toDouble(), 'f', 2);
        while (s.endsWith(u'0')) s.chop(1);
        if (s.endsWith(u'.')) s.chop(1);
        return s;
    }
    case QMetaType::QDate: return v.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime: {
        const QDateTime t = v.toDateTime();
        return t.time() == QTime(0, 0) ? t.date().toString(Qt::ISODate) : t.toString(u"yyyy-MM-dd HH:mm:ss"_s);
    }
    default: {
        // SQLite keeps date-times as text (looked at closer only when it
        // has their shape: parsing every cell would cost more than the search).
        const QString s = v.toString();
        const bool shape = s.size() == 19 && s[4] == u'-' && s[13] == u':';
        const QDateTime t = shape ? QDateTime::fromString(s, u"yyyy-MM-dd HH:mm:ss"_s) : QDateTime();
        return t.isValid() ? text(t) : s;
    }
    }
}

// The parameters a search binds, by upper-cased name, with their values as
// the screen binds them (dates as dates, the refund amount as a number).
using Values = QMap<QString, QVariant>;

// The category's parameters, the filters' (but the unit's) and the kind.
QVector<TKycsParam> offered(const TKycsCategory& c) {
    QVector<TKycsParam> all = c.Params;
    for (const TKycsFilter& f : KycsFilters())
        if (f.Name != u"Dw") all += f.Params;
    return all;
}

QVariant bound(const TKycsParam& p, const QString& typed) {
    const QString t = typed.trimmed();
    if (p.Type == TKycsType::Float) return t.toDouble();
    if (p.Type != TKycsType::Date) return t;
    const QDate d = QDate::fromString(t, Qt::ISODate);
    if (!d.isValid()) throw Refusal(u"--param %1: a date as yyyy-mm-dd, not '%2'"_s.arg(p.Name, typed));
    return d;
}

struct Search {
    const TKycsCategory* category = nullptr;
    bool oneKind = false;
    QStringList filters;  // the filters on, by name
    Values values;
};

// What the command line asks for, checked as the screen checks it; the
// defaults of the server's clock are filled in later.
Search plan(int code, const QString& unit, const QStringList& given) {
    Search s;
    s.category = KycsCategory(code);
    if (!s.category) throw Refusal(u"there is no screening category %1"_s.arg(code));
    const TKycsCategory& c = *s.category;
    if (c.Placeholder || !c.RadioEnabled)
        throw Refusal(u"category %1 (%2) cannot be chosen on the screening screen"_s.arg(code).arg(c.Caption));
    const QVector<TKycsParam> params = offered(c);
    QMap<QString, QString> typed;
    for (const QString& g : given) {
        const int eq = g.indexOf(u'=');
        const QString name = g.left(eq).trimmed();
        const auto p = std::find_if(params.begin(), params.end(), [&](const TKycsParam& k) { return k.Name.compare(name, Qt::CaseInsensitive) == 0; });
        if (eq < 0 || p == params.end()) {
            QStringList names;
            for (const TKycsParam& k : params) names << k.Name;
            throw Refusal(u"--param %1: category %2 takes NAME=VALUE with NAME one of %3"_s.arg(g).arg(code).arg(names.join(u", "_s)));
        }
        const QString value = g.mid(eq + 1);
        if (!KycsPasses(p->Check, value)) throw Refusal(p->Message);
        typed[p->Name] = value;
    }
    s.oneKind = !c.KindSql.Row.isEmpty() && typed.value(u"YWDM"_s, KycsAllKinds).trimmed() != KycsAllKinds;
    // A filter is on when its value is given, the unit's always.
    if (unit.trimmed().isEmpty()) throw Refusal(KycsFilter(u"Dw"_s)->Message);
    s.values[u"DW"_s] = unit.trimmed();
    for (const TKycsFilter& f : KycsFilters()) {
        const bool on = f.Name == u"Dw" || f.Name == c.ForcedFilter ||
                        std::any_of(f.Params.begin(), f.Params.end(), [&](const TKycsParam& p) { return typed.contains(p.Name); });
        if (!on) continue;
        for (const TKycsParam& p : f.Params) {
            if (p.Name == u"Dw") continue;
            const QString value = typed.value(p.Name).trimmed().isEmpty() ? p.Default : typed.value(p.Name);
            if (value.trimmed().isEmpty()) throw Refusal(f.Message);
            s.values[p.Name.toUpper()] = bound(p, value);
        }
        s.filters << f.Name;
    }
    if (const TKycsFilter* f = KycsFilter(c.RequiredFilter); f && !s.filters.contains(f->Name)) throw Refusal(f->Message);
    for (const TKycsParam& p : c.Params) {
        if (p.KindOnly && !s.oneKind) continue;
        if (typed.contains(p.Name)) s.values[p.Name.toUpper()] = bound(p, typed[p.Name]);
        else if (p.From == TKycsDefault::Text && p.Default.isEmpty())
            throw Refusal(u"category %1 needs --param %2=VALUE (the screen has no default for it)"_s.arg(code).arg(p.Name));
    }
    return s;
}

// The screen's defaults for what was not given: the server's year-month,
// year and dates, the design's texts.
void fillDefaults(Search& s) {
    const QString ny = GetServerNy();
    const QDate today = GetServerDateTime().date();
    for (const TKycsParam& p : s.category->Params) {
        const QString name = p.Name.toUpper();
        if (s.values.contains(name) || (p.KindOnly && !s.oneKind)) continue;
        switch (p.From) {
        case TKycsDefault::ServerNy: s.values[name] = ny; break;
        case TKycsDefault::ServerYear: s.values[name] = ny.left(4); break;
        case TKycsDefault::ServerDate: s.values[name] = today.addDays(-p.DaysBefore); break;
        case TKycsDefault::Text: s.values[name] = bound(p, p.Default); break;
        }
    }
}

void checkUnit(const QString& unit) {
    TMidasQuery q;
    OpenSql(&q, u"select count(*) jls from z_dwbm where dm=:dw"_s, {{"dw", unit}});
    if (q.FieldByName(u"jls"_s).AsInteger() == 0) throw Refusal(u"the unit '%1' is not in the unit register (z_dwbm)"_s.arg(unit));
}

// A customer's reason: the category's format filled with its figures.
class Reasons {
public:
    Reasons(const TKycsReason& r, const Values& values) : r_(r), values_(values) {
        if (!r_.Sql.isEmpty()) PrepareSql(&figures_, r_.Sql);
    }

    QString of(TMidasQuery& hit) {
        hit_ = &hit;
        if (!r_.Sql.isEmpty()) {
            figures_.Close();
            for (int i = 0; i < figures_.Params().Count(); ++i) {
                TParam& p = figures_.Params()[i];
                const int field = hit.FindFieldIndex(p.Name);
                if (values_.contains(p.Name.toUpper())) p.SetValue(values_.value(p.Name.toUpper()));
                else if (field >= 0) p.SetValue(hit.Fields(field).Value());
                else throw std::logic_error(("the reason has no value for :" + p.Name).toStdString());
            }
            figures_.Open();
        }
        QString done;
        const QString& f = r_.Format;
        for (int i = 0; i < f.size();) {
            const int open = f.indexOf(u'[', i);
            if (open < 0) {
                done += fill(f.mid(i), 0);
                break;
            }
            const int close = f.indexOf(u']', open);
            done += fill(f.mid(i, open - i), 0);
            QStringList each;
            for (int row = 0; row < rows(); ++row) each << fill(f.mid(open + 1, close - open - 1), row);
            done += each.join(u"、"_s);
            i = close + 1;
        }
        return done;
    }

private:
    int rows() const { return r_.Sql.isEmpty() ? 0 : figures_.RecordCount(); }

    QString fill(const QString& part, int row) const {
        QString done;
        for (int i = 0; i < part.size();) {
            const int open = part.indexOf(u'{', i);
            if (open < 0) {
                done += part.mid(i);
                break;
            }
            const int close = part.indexOf(u'}', open);
            done += part.mid(i, open - i);
            const QString inner = part.mid(open + 1, close - open - 1);
            const int bar = inner.indexOf(u'|');
            const QString value = figure(bar < 0 ? inner : inner.left(bar), row);
            done += value.isEmpty() && bar >= 0 ? inner.mid(bar + 1) : value;
            i = close + 1;
        }
        return done;
    }

    QString figure(const QString& name, int row) const {
        if (name == u"#") return QString::number(rows());
        if (name.startsWith(u':')) {
            const QString key = name.mid(1).toUpper();
            if (!values_.contains(key)) throw std::logic_error(("the reason names no parameter " + name).toStdString());
            return text(values_.value(key));
        }
        if (!r_.Sql.isEmpty()) {
            if (const int f = figures_.FindFieldIndex(name); f >= 0) return row < rows() ? text(figures_.valueAt(row, f)) : QString();
        }
        const int f = hit_->FindFieldIndex(name);
        if (f < 0) throw std::logic_error(("the reason names no column " + name).toStdString());
        return text(hit_->Fields(f).Value());
    }

    const TKycsReason& r_;
    const Values& values_;
    TMidasQuery figures_;
    TMidasQuery* hit_ = nullptr;
};

QString cell(const QString& s, bool csv) {
    if (!csv) {
        QString t = s;
        return t.replace(u'\t', u' ').replace(u'\n', u' ').replace(u'\r', u' ');
    }
    if (!s.contains(u',') && !s.contains(u'"') && !s.contains(u'\n') && !s.contains(u'\r')) return s;
    QString t = s;
    return u'"' + t.replace(u"\""_s, u"\"\""_s) + u'"';
}

void line(const QStringList& cells, bool csv) {
    QStringList done;
    for (const QString& c : cells) done << cell(c, csv);
    out << done.join(csv ? u',' : u'\t') << '\n';
}

// One line updated in place on a terminal.
class Progress {
public:
    explicit Progress(bool on) : on_(on) { clock_.start(); }
    void say(const QString& what) {
        if (!on_) return;
        err << u"\r\x1b[K"_s << what;
        err.flush();
        clock_.restart();
    }
    void row(int n, int of) {
        if (on_ && (n == of || clock_.elapsed() > 250)) say(u"%1 of %2"_s.arg(n).arg(of));
    }
    void end(const QString& summary) {
        if (on_) err << u"\r\x1b[K"_s << summary << u"\n"_s;
    }

private:
    bool on_;
    QElapsedTimer clock_;
};

int run(const QCommandLineParser& cli) {
    bool ok = false;
    const int code = cli.value(u"category"_s).toInt(&ok);
    if (!ok) throw Refusal(u"--category needs a category code (a number), not '%1'"_s.arg(cli.value(u"category"_s)));
    const QString format = cli.value(u"format"_s);
    if (format != u"tsv" && format != u"csv") throw Refusal(u"--format is tsv or csv, not '%1'"_s.arg(format));
    const bool csv = format == u"csv";
    Search s = plan(code, cli.value(u"unit"_s), cli.values(u"param"_s));
    const TKycsCategory& c = *s.category;

    try {
        tarvin::db::openConnection(cli.value(u"db"_s));
    } catch (const std::invalid_argument& e) {
        throw Refusal(u"--db: "_s + QString::fromUtf8(e.what()));
    }
    CreateDataModules();
    checkUnit(s.values[u"DW"_s].toString());
    fillDefaults(s);

    Progress progress(!cli.isSet(u"quiet"_s) && isatty(fileno(stderr)));
    progress.say(u"searching %1 %2…"_s.arg(c.Code).arg(c.Caption));
    TMidasQuery hits;
    PrepareSql(&hits, KycsSqlLines(KycsSentSql(c, false, s.oneKind), s.filters).join(u'\n'));
    for (int i = 0; i < hits.Params().Count(); ++i) {
        TParam& p = hits.Params()[i];
        p.SetValue(s.values.value(p.Name.toUpper()));
    }
    hits.Open();

    QStringList head = kBase;
    for (const TKycsColumn& x : c.Columns) head << x.Field.toUpper();
    QStringList names;
    for (const QString& h : head) names << h.toLower();
    line(names << u"reason"_s, csv);
    Reasons reasons(c.Reason, s.values);
    const int total = hits.RecordCount();
    int n = 0;
    for (hits.First(); !hits.Eof(); hits.Next()) {
        QStringList cells;
        for (const QString& h : head) cells << text(hits.FieldByName(h).Value());
        line(cells << reasons.of(hits), csv);
        progress.row(++n, total);
    }
    out.flush();
    progress.end(u"%1 %2: %3 customers"_s.arg(c.Code).arg(c.Caption).arg(total));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"tarvin-screen"_s);
    QCommandLineParser cli;
    cli.setApplicationDescription(
        u"Searches one screening category in one unit as the screening screen does (its texts, parameters,\n"
        "checks and defaults, the unit filter and the filters given), without the screen's limit of 300,\n"
        "and prints every customer found: account, name, address, unit, the category's extra columns and\n"
        "a reason giving the rule's figures for that customer. A header line comes first.\n"
        "Parameters not given take the screen's defaults (the server's year-month, year and dates).\n"
        "On a terminal stderr shows what is being done and how many lines are written; --quiet keeps it\n"
        "silent. Exit codes: 0 done, 1 database failure, 2 refused (the screen's message on stderr)."_s);
    cli.addHelpOption();
    cli.addOption({u"db"_s, u"Database: sqlite:PATH or postgresql://user@host:port/db (required)."_s, u"URL"_s});
    cli.addOption({u"unit"_s, u"The unit (the screen's unit filter; required)."_s, u"DW"_s});
    cli.addOption({u"category"_s, u"The category code: 2, 10-25, 30, 31, 40 or 99 (required)."_s, u"N"_s});
    cli.addOption({{u"p"_s, u"param"_s},
                   u"A parameter as the screen binds it, e.g. NY=202611, YS=3, JCRQQ=2026-05-01, YWDM=110; or a filter's "
                   "value, which turns the filter on: DYDJ, KHLX, ydlb, HTRLQ, HTRLZ, TCH, XLBH, TQBH, hylb, HH."_s,
                   u"NAME=VALUE"_s});
    cli.addOption({u"format"_s, u"tsv (the default) or csv."_s, u"FORMAT"_s, u"tsv"_s});
    cli.addOption({u"quiet"_s, u"No progress on stderr (there is none when stderr is not a terminal)."_s});
    if (!cli.parse(app.arguments())) {
        err << "tarvin-screen: " << cli.errorText() << "\n\n" << cli.helpText();
        return 2;
    }
    if (cli.isSet(u"help"_s)) {
        out << cli.helpText();
        return 0;
    }
    for (const char* required : {"db", "unit", "category"})
        if (!cli.isSet(QString::fromLatin1(required))) {
            err << "tarvin-screen: --" << required << " is required\n\n" << cli.helpText();
            return 2;
        }
    try {
        return run(cli);
    } catch (const Refusal& e) {
        err << "tarvin-screen: " << QString::fromUtf8(e.what()) << "\n";
        return 2;
    } catch (const std::exception& e) {
        err << "tarvin-screen: " << QString::fromUtf8(e.what()) << "\n";
        return 1;
    }
}
