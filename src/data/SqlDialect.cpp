#include "SqlDialect.h"

#include <QDateTime>

#include "SqlRewrite.h"
#include "SqlTokenizer.h"

namespace tarvin::sql {

QString dialectName(Dialect d) {
    switch (d) {
    case Dialect::Oracle: return QStringLiteral("oracle");
    case Dialect::SQLite: return QStringLiteral("sqlite");
    case Dialect::PostgreSQL: return QStringLiteral("postgresql");
    }
    return QString();
}

Dialect dialectFromName(const QString& name) {
    const QString s = name.trimmed().toLower();
    if (s == QLatin1String("oracle")) return Dialect::Oracle;
    if (s == QLatin1String("sqlite")) return Dialect::SQLite;
    if (s == QLatin1String("postgresql") || s == QLatin1String("pg") || s == QLatin1String("psql")) return Dialect::PostgreSQL;
    throw std::invalid_argument(("unknown SQL dialect \"" + name + "\" (oracle, sqlite, postgresql)").toStdString());
}

TranslateError::TranslateError(const QString& construct, int position, const QString& detail)
    : std::runtime_error(QStringLiteral("cannot translate %1 at position %2: %3").arg(construct).arg(position).arg(detail).toStdString()),
      construct_(construct),
      position_(position) {}

QString Translated::withPlaceholders(const QString& placeholder) const {
    QString s = pieces.value(0);
    for (int i = 0; i < params.size(); ++i) s += placeholder + pieces.value(i + 1);
    return s;
}

QString Translated::withLiterals(const QStringList& literals) const {
    QString s = pieces.value(0);
    for (int i = 0; i < params.size(); ++i) s += literals.value(i) + pieces.value(i + 1);
    return s;
}

Translated translate(const QString& oracleSql, Dialect dialect) {
    if (dialect == Dialect::Oracle) return detail::splitOracle(oracleSql);
    return detail::translateForEngine(oracleSql, dialect);
}

QStringList parameterNames(const QString& oracleSql) {
    QStringList out;
    QStringList seen;
    for (const Token& t : tokenize(oracleSql, false)) {
        if (t.type != TokenType::Param) continue;
        const QString key = t.text.toUpper();
        if (seen.contains(key)) continue;
        seen << key;
        out << t.text;
    }
    return out;
}

QString literal(const QVariant& value, Dialect) {
    if (!value.isValid() || value.isNull()) return QStringLiteral("NULL");
    QString s;
    switch (value.typeId()) {
    case QMetaType::QDateTime: s = value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); break;
    case QMetaType::QDate: s = value.toDate().startOfDay().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); break;
    default: s = value.toString();
    }
    if (s.isEmpty()) return QStringLiteral("NULL");
    return QLatin1Char('\'') + s.replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
}

}  // namespace tarvin::sql
