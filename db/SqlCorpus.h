// The SQL corpus: every SQL text the module sends, as data
// (tests/corpus/*.json), with the parameters a screen binds and what Oracle
// returns over tests/corpus/fixture.sql. One reader for the tests that run
// the texts, the benchmarks that time them and the tools.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <map>
#include <vector>

class TMidasQuery;

namespace tarvin::corpus {

struct Param {
    QString name, type;  // "string", "integer", "float", "date", "datetime";
    QJsonValue value;    // "missing": the text lacks the name, binding it must be refused
    // The sample value with the screen's type.
    QVariant typed() const;
};

struct Filter {
    QString line;
    QVector<Param> params;
};

struct Entry {
    QString id, section, file;
    QStringList lines;        // the text as the screen's lines, or
    QJsonArray concat;        // fixed pieces and {"v": sample value} pieces
    QVector<Param> declared;  // a parameter list built by hand (blocks)
    QVector<Param> params;
    QStringList filters;  // common screening filters appended, then the closing line
    bool exec = false;
    QStringList setup, cleanup;
    QJsonObject expect;

    // The text as the data layer receives it (lines joined by line breaks).
    QString text(const std::map<QString, Filter>& filterDefs, const QString& closing) const;
    // A query that only reads: no statement, block, setup or refusal.
    bool readsOnly() const;
};

struct Corpus {
    std::vector<Entry> entries;
    std::map<QString, Filter> filters;
    QStringList filterOrder;  // the order in which the search appends them
    QString closing;
    QStringList problems;  // data that could not be read

    QString text(const Entry& e) const { return e.text(filters, closing); }
    // The entry's parameters and those of its filters, in binding order.
    QVector<Param> allParams(const Entry& e) const;
    const Entry* find(const QString& id) const;
};

QVector<Param> readParams(const QJsonArray& a);
QStringList readStrings(const QJsonArray& a);
// The corpus folder of the source tree.
QString corpusDir();
// Every entry of every corpus file, read once.
const Corpus& corpus();
// Binds one parameter with the screen's type; EDatabaseError for a name the
// text lacks or a type the corpus does not know.
void bindParam(TMidasQuery& q, const Param& p);

}  // namespace tarvin::corpus
