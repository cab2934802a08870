// The SQL corpus: every SQL text the module sends, as data
// (tests/corpus/*.json), with the parameters a screen binds and what Oracle
// returns over tests/corpus/fixture.sql. Read by the corpus test and by the
// tests that run the same texts over the demo utility.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVector>
#include <map>
#include <vector>

#include "data/MidasQuery.h"

namespace tarvin::test {
class TestDatabase;
}

namespace tarvin::test::corpus {

struct Param {
    QString name, type;
    QJsonValue value;
};

struct Filter {
    QString line;
    QVector<Param> params;
};

struct Entry {
    QString id, section, file;
    QStringList lines;     // the text as the screen's lines, or
    QJsonArray concat;     // fixed pieces and {"v": sample value} pieces
    QVector<Param> declared;  // a parameter list built by hand (blocks)
    QVector<Param> params;
    QStringList filters;   // common screening filters appended, then the closing line
    bool exec = false;
    QStringList setup, cleanup;
    QJsonObject expect;

    // The text as the data layer receives it (lines joined by line breaks).
    QString text(const std::map<QString, Filter>& filterDefs, const QString& closing) const {
        QStringList all = lines;
        if (!concat.isEmpty()) {
            QString s;
            for (const QJsonValue& v : concat) s += v.isObject() ? v.toObject().value(QLatin1String("v")).toString() : v.toString();
            all << s;
        }
        for (const QString& f : filters) all << filterDefs.at(f).line;
        if (!filters.isEmpty()) all << closing;
        return all.join(QLatin1Char('\n'));
    }
};

struct Corpus {
    std::vector<Entry> entries;
    std::map<QString, Filter> filters;
    QStringList filterOrder;  // the order in which the search appends them
    QString closing;
    QStringList problems;  // data that could not be read
};

QVector<Param> readParams(const QJsonArray& a);
QStringList readStrings(const QJsonArray& a);
QString corpusDir();
// Every entry of every corpus file, read once.
const Corpus& corpus();
// The entry with this id; an empty one, and a test failure, when there is none.
const Entry& entry(const QString& id);
// The rows of tests/corpus/fixture.sql, committed, and the corpus's clock.
void loadFixture(TestDatabase& db);
// Binds one parameter with the screen's type ("string", "integer", "float",
// "date", "datetime"; "missing": the name is not in the text, and binding
// it must be refused).
void bind(TMidasQuery& q, const Param& p);

}  // namespace tarvin::test::corpus
