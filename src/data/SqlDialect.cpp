// Placeholder bridge: splits at parameters only.
#include "SqlDialect.h"
namespace tarvin::sql {
QString dialectName(Dialect d) { return d == Dialect::Oracle ? "oracle" : d == Dialect::SQLite ? "sqlite" : "postgresql"; }
Dialect dialectFromName(const QString& n) {
    const QString s = n.toLower();
    if (s == "oracle") return Dialect::Oracle;
    if (s == "sqlite") return Dialect::SQLite;
    if (s == "postgresql" || s == "pg" || s == "psql") return Dialect::PostgreSQL;
    throw std::invalid_argument(("unknown dialect " + n).toStdString());
}
TranslateError::TranslateError(const QString& c, int p, const QString& d)
    : std::runtime_error(QString("%1 at %2: %3").arg(c).arg(p).arg(d).toStdString()), construct_(c), position_(p) {}
QString Translated::withPlaceholders(const QString& ph) const {
    QString s = pieces.value(0);
    for (int i = 0; i < params.size(); ++i) s += ph + pieces.value(i + 1);
    return s;
}
QString Translated::withLiterals(const QStringList& lits) const {
    QString s = pieces.value(0);
    for (int i = 0; i < params.size(); ++i) s += lits.value(i) + pieces.value(i + 1);
    return s;
}
static Translated split(const QString& sql) {
    Translated t;
    QString cur;
    bool q = false;
    for (int i = 0; i < sql.size(); ++i) {
        QChar c = sql[i];
        if (c == '\'') q = !q;
        if (!q && c == ':' && i + 1 < sql.size() && (sql[i + 1].isLetter() || sql[i + 1] == '_')) {
            int j = i + 1;
            while (j < sql.size() && (sql[j].isLetterOrNumber() || sql[j] == '_')) ++j;
            t.pieces << cur; cur.clear();
            t.params << sql.mid(i + 1, j - i - 1).toUpper();
            i = j - 1;
            continue;
        }
        cur += c;
    }
    t.pieces << cur;
    const QString head = sql.trimmed().left(6).toLower();
    t.kind = head.startsWith("select") || head.startsWith("(") ? Translated::Kind::Query : Translated::Kind::Statement;
    return t;
}
Translated translate(const QString& sql, Dialect) { return split(sql); }
QStringList parameterNames(const QString& sql) {
    QStringList out, seen;
    const Translated t = split(sql);
    for (const QString& p : t.params) if (!seen.contains(p)) { seen << p; out << p; }
    return out;
}
QString literal(const QVariant& v, Dialect) {
    if (v.isNull()) return "NULL";
    QString s = v.toString();
    if (s.isEmpty()) return "NULL";
    return "'" + s.replace("'", "''") + "'";
}
}
