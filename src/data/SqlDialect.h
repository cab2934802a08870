// The SQL dialect bridge: the module writes Oracle texts; the engine behind
// the `Shdl` connection may be Oracle, SQLite or PostgreSQL. A text is
// tokenized, the structure of its SELECTs parsed, and an equivalent
// statement written for the target engine. A text that cannot be
// translated raises TranslateError; nothing half-rewritten is ever returned.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <stdexcept>

namespace tarvin::sql {

enum class Dialect { Oracle, SQLite, PostgreSQL };

QString dialectName(Dialect d);
// "oracle", "sqlite", "postgresql" (also "pg", "psql"); throws std::invalid_argument.
Dialect dialectFromName(const QString& name);

class TranslateError : public std::runtime_error {
public:
    TranslateError(const QString& construct, int position, const QString& detail);
    // The construct that could not be translated, e.g. "(+)", "rownum", "block".
    const QString& construct() const { return construct_; }
    // Character offset into the Oracle text (0-based).
    int position() const { return position_; }
    QString message() const { return QString::fromUtf8(what()); }

private:
    QString construct_;
    int position_;
};

struct Translated {
    enum class Kind {
        Query,      // returns rows
        Statement,  // INSERT/UPDATE/DELETE/DDL
        Call,       // an anonymous block: runs as a query of one row; its
                    // columns, in order, are the values of `outputs`
        Commit      // the statement "commit": the data layer commits
    };
    Kind kind = Kind::Query;
    // The translated text split at the parameter places:
    //   pieces[0] P(params[0]) pieces[1] P(params[1]) ... pieces[n]
    QStringList pieces;
    // Parameter name at each place, upper-cased, in order of appearance;
    // a name used several times appears at each of its places.
    QStringList params;
    // Output parameters of an anonymous block (upper-cased), in column order.
    QStringList outputs;

    // The text with each place written as `placeholder` ("?" for SQLite).
    QString withPlaceholders(const QString& placeholder = QStringLiteral("?")) const;
    // The text with each place written as its literal (PostgreSQL), or as
    // ":NAME" (Oracle). `literals` has one entry per place.
    QString withLiterals(const QStringList& literals) const;
};

// Translate an Oracle text for the dialect. Oracle: unchanged apart from the
// split at parameter places. Throws TranslateError.
// Screens send the same texts again and again, so each (dialect, text) is
// translated once and remembered, a refusal as well as a result (a few
// thousand texts at most; the memory starts over when full). Safe to call
// from several threads; every caller gets its own copy.
Translated translate(const QString& oracleSql, Dialect dialect);
// The same translation without the memory: what a first call costs.
Translated translateUncached(const QString& oracleSql, Dialect dialect);

// Distinct parameter names of a text in order of first appearance, as
// written (case kept); the names the dataset offers in its parameter list.
QStringList parameterNames(const QString& oracleSql);

// A value written as an SQL literal for the dialect. Null and the empty text
// give NULL (Oracle's rule); every other value is a quoted text literal, so
// that the engine converts it by context as Oracle converts a bound value.
// Dates are written 'YYYY-MM-DD HH:MM:SS'.
QString literal(const QVariant& value, Dialect dialect);

}  // namespace tarvin::sql
