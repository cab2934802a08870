#include "SqlCorpus.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include "data/MidasQuery.h"

namespace tarvin::corpus {

QVariant Param::typed() const {
    if (type == QLatin1String("integer")) return value.toInteger();
    if (type == QLatin1String("float")) return value.toDouble();
    if (type == QLatin1String("date")) return QDate::fromString(value.toString(), Qt::ISODate);
    if (type == QLatin1String("datetime"))
        return QDateTime::fromString(value.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return value.toString();
}

namespace {
ScreeningTexts& screening() {
    static ScreeningTexts texts;
    return texts;
}
}  // namespace

void useScreeningTexts(ScreeningTexts texts) { screening() = std::move(texts); }

QString Entry::text() const {
    QStringList all = lines;
    if (!concat.isEmpty()) {
        QString s;
        for (const QJsonValue& v : concat) s += v.isObject() ? v.toObject().value(QLatin1String("v")).toString() : v.toString();
        all << s;
    }
    if (category == 0 && filters.isEmpty()) return all.join(QLatin1Char('\n'));
    const ScreeningTexts& s = screening();
    if (!s.category || !s.lines) throw EDatabaseError(QStringLiteral("corpus: %1 needs the screening texts, not handed over").arg(id));
    QString base = all.join(QLatin1Char('\n'));
    if (category != 0) {
        const std::optional<QString> t = s.category(category, which);
        if (!t) throw EDatabaseError(QStringLiteral("corpus: %1: category %2 has no text %3").arg(id).arg(category).arg(which));
        base = *t;
    }
    return filters.isEmpty() ? base : s.lines(base, filters).join(QLatin1Char('\n'));
}

bool Entry::readsOnly() const {
    return !exec && setup.isEmpty() && declared.isEmpty() && !expect.value(QLatin1String("error")).toBool();
}

QVector<Param> Corpus::allParams(const Entry& e) const {
    QVector<Param> out;
    for (const QString& f : e.filters) out += filters.at(f).params;
    return out + e.params;
}

const Entry* Corpus::find(const QString& id) const {
    for (const Entry& e : entries)
        if (e.id == id) return &e;
    return nullptr;
}

QVector<Param> readParams(const QJsonArray& a) {
    QVector<Param> out;
    for (const QJsonValue& v : a) {
        const QJsonArray p = v.toArray();
        out.push_back({p.at(0).toString(), p.at(1).toString(), p.at(2)});
    }
    return out;
}

QStringList readStrings(const QJsonArray& a) {
    QStringList out;
    for (const QJsonValue& v : a) out << v.toString();
    return out;
}

QString corpusDir() { return QStringLiteral(TARVIN_CORPUS_DIR); }

const Corpus& corpus() {
    static const Corpus c = [] {
        Corpus c;
        const QStringList files = QDir(corpusDir()).entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
        if (files.isEmpty()) c.problems << QStringLiteral("no corpus files in ") + corpusDir();
        for (const QString& name : files) {
            QFile f(corpusDir() + QLatin1Char('/') + name);
            if (!f.open(QIODevice::ReadOnly)) {
                c.problems << name + QStringLiteral(": cannot open");
                continue;
            }
            QJsonParseError err;
            const QJsonDocument doc = QJsonDocument::fromJson(f.readAll(), &err);
            if (doc.isNull()) {
                c.problems << QStringLiteral("%1: %2 at offset %3").arg(name, err.errorString()).arg(err.offset);
                continue;
            }
            const QJsonObject root = doc.object();
            for (const QJsonValue& fv : root.value(QLatin1String("filters")).toArray()) {
                const QJsonObject fo = fv.toObject();
                const QString fname = fo.value(QLatin1String("name")).toString();
                c.filters[fname] = Filter{readParams(fo.value(QLatin1String("params")).toArray())};
            }
            for (const QJsonValue& ev : root.value(QLatin1String("entries")).toArray()) {
                const QJsonObject o = ev.toObject();
                Entry e;
                e.file = name;
                e.id = o.value(QLatin1String("id")).toString();
                e.section = o.value(QLatin1String("section")).toString();
                e.lines = readStrings(o.value(QLatin1String("lines")).toArray());
                e.concat = o.value(QLatin1String("concat")).toArray();
                e.category = o.value(QLatin1String("category")).toInt();
                e.which = o.value(QLatin1String("text")).toString();
                e.declared = readParams(o.value(QLatin1String("declare")).toArray());
                e.params = readParams(o.value(QLatin1String("params")).toArray());
                e.filters = readStrings(o.value(QLatin1String("filters")).toArray());
                e.exec = o.value(QLatin1String("run")).toString() == QLatin1String("exec");
                e.setup = readStrings(o.value(QLatin1String("setup")).toArray());
                e.cleanup = readStrings(o.value(QLatin1String("cleanup")).toArray());
                e.expect = o.value(QLatin1String("expect")).toObject();
                c.entries.push_back(std::move(e));
            }
        }
        return c;
    }();
    return c;
}

void bindParam(TMidasQuery& q, const Param& p) {
    TParam& t = q.ParamByName(p.name);  // raises for a name the text lacks
    if (p.type == QLatin1String("string"))
        t.SetAsString(p.value.toString());
    else if (p.type == QLatin1String("integer"))
        t.SetAsInteger(p.value.toInteger());
    else if (p.type == QLatin1String("float"))
        t.SetAsFloat(p.value.toDouble());
    else if (p.type == QLatin1String("date"))
        t.SetAsDate(p.typed().toDate());
    else if (p.type == QLatin1String("datetime"))
        t.SetAsDateTime(p.typed().toDateTime());
    else
        throw EDatabaseError(QStringLiteral("corpus: unknown parameter type ") + p.type);
}

}  // namespace tarvin::corpus
