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
#include <functional>
#include <map>
#include <optional>
#include <vector>

class TMidasQuery;

namespace tarvin::corpus {

struct Param {
    QString name, type;  // "string", "integer", "float", "date", "datetime";
    QJsonValue value;    // "missing": the text lacks the name, binding it must be refused
    // The sample value with the screen's type.
    QVariant typed() const;
};

// A common screening filter's sample values; its clause is the screening
// table's.
struct Filter {
    QVector<Param> params;
};

// Texts the corpus names instead of holding: the screening categories'
// texts, the filter clauses and the closing line live in the screening
// table, which this reader cannot link (it sits below the module). A
// program that reads those entries hands them over first.
struct ScreeningTexts {
    // A category's text by name ("row", "count", ...); none when unknown.
    std::function<std::optional<QString>(int code, const QString& which)> category;
    // The lines a search sends: the text, the filters named in their fixed
    // order, then the closing line.
    std::function<QStringList(const QString& text, const QStringList& filters)> lines;
};
void useScreeningTexts(ScreeningTexts texts);

struct Entry {
    QString id, section, file;
    QStringList lines;        // the text as the screen's lines, or
    QJsonArray concat;        // fixed pieces and {"v": sample value} pieces, or
    int category = 0;         // a screening category's text, by name
    QString which;
    QVector<Param> declared;  // a parameter list built by hand (blocks)
    QVector<Param> params;
    QStringList filters;  // common screening filters appended, then the closing line
    bool exec = false;
    QStringList setup, cleanup;
    QJsonObject expect;

    // The text as the data layer receives it (lines joined by line breaks).
    // EDatabaseError for a screening text that is not there.
    QString text() const;
    // A query that only reads: no statement, block, setup or refusal.
    bool readsOnly() const;
};

struct Corpus {
    std::vector<Entry> entries;
    std::map<QString, Filter> filters;
    QStringList problems;  // data that could not be read

    QString text(const Entry& e) const { return e.text(); }
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
