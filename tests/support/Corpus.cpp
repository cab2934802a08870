#include "Corpus.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <gtest/gtest.h>

#include "data/Connection.h"
#include "Schema.h"
#include "TestDb.h"

namespace tarvin::test::corpus {

namespace {

std::string show(const QString& s) { return s.toStdString(); }
}  // namespace

QString corpusDir() { return QStringLiteral(TARVIN_SOURCE_DIR "/tests/corpus"); }

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
                c.filters[fname] = Filter{fo.value(QLatin1String("line")).toString(), readParams(fo.value(QLatin1String("params")).toArray())};
                c.filterOrder << fname;
            }
            if (root.contains(QLatin1String("closing"))) c.closing = root.value(QLatin1String("closing")).toString();
            for (const QJsonValue& ev : root.value(QLatin1String("entries")).toArray()) {
                const QJsonObject o = ev.toObject();
                Entry e;
                e.file = name;
                e.id = o.value(QLatin1String("id")).toString();
                e.section = o.value(QLatin1String("section")).toString();
                e.lines = readStrings(o.value(QLatin1String("lines")).toArray());
                e.concat = o.value(QLatin1String("concat")).toArray();
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

const Entry& entry(const QString& id) {
    for (const Entry& e : corpus().entries)
        if (e.id == id) return e;
    ADD_FAILURE() << "no corpus entry " << show(id);
    static const Entry none;
    return none;
}

void loadFixture(TestDatabase& db) {
    QFile f(corpusDir() + QStringLiteral("/fixture.sql"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << show(f.fileName());
    ASSERT_TRUE(db.db().transaction());
    for (const QString& s : tarvin::db::splitStatements(QString::fromUtf8(f.readAll()))) db.exec(s);
    ASSERT_TRUE(db.db().commit());
    tarvin::db::setFixedClock(db.connectionName(), QDateTime(QDate(2024, 4, 15), QTime(10, 0)));
}

void bind(TMidasQuery& q, const Param& p) {
    if (p.type == QLatin1String("missing")) {
        // The screen binds a name the text does not have: the dataset refuses.
        EXPECT_THROW(q.ParamByName(p.name), EDatabaseError) << "parameter " << show(p.name);
        return;
    }
    TParam& t = q.ParamByName(p.name);
    if (p.type == QLatin1String("string"))
        t.SetAsString(p.value.toString());
    else if (p.type == QLatin1String("integer"))
        t.SetAsInteger(p.value.toInteger());
    else if (p.type == QLatin1String("float"))
        t.SetAsFloat(p.value.toDouble());
    else if (p.type == QLatin1String("date"))
        t.SetAsDate(QDate::fromString(p.value.toString(), Qt::ISODate));
    else if (p.type == QLatin1String("datetime"))
        t.SetAsDateTime(QDateTime::fromString(p.value.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    else
        ADD_FAILURE() << "unknown parameter type " << show(p.type);
}

}  // namespace tarvin::test::corpus
