#include "SqlDialect.h"

#include <QDateTime>
#include <QHash>
#include <mutex>
#include <optional>
#include <shared_mutex>

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

Translated translateUncached(const QString& oracleSql, Dialect dialect) {
    if (dialect == Dialect::Oracle) return detail::splitOracle(oracleSql);
    return detail::translateForEngine(oracleSql, dialect);
}

namespace {

// A translation or the refusal to rethrow: a bad text stays bad.
struct Remembered {
    std::optional<Translated> result;
    std::optional<TranslateError> refusal;
};

// Texts remembered per dialect. Translated holds only implicitly shared
// lists, so handing out a copy is cheap and a caller's changes detach it
// from the remembered one.
class Memory {
public:
    static constexpr qsizetype kMaxTexts = 4096;

    Translated translate(const QString& text, Dialect dialect) {
        QHash<QString, Remembered>& texts = byDialect_[int(dialect)];
        {
            std::shared_lock lock(mutex_);
            const auto it = texts.constFind(text);
            if (it != texts.cend()) return answer(*it);
        }
        Remembered r;
        try {
            r.result = translateUncached(text, dialect);
        } catch (const TranslateError& e) {
            r.refusal = e;
        }
        {
            std::unique_lock lock(mutex_);
            if (count_ >= kMaxTexts) {
                for (QHash<QString, Remembered>& h : byDialect_) h.clear();
                count_ = 0;
            }
            if (!texts.contains(text)) {
                // A copy of its own: the caller's text may wrap raw data it frees.
                texts.insert(QString(text.constData(), text.size()), r);
                ++count_;
            }
        }
        return answer(r);
    }

private:
    static Translated answer(const Remembered& r) {
        if (r.refusal) throw *r.refusal;
        return *r.result;
    }

    std::shared_mutex mutex_;
    QHash<QString, Remembered> byDialect_[3];
    qsizetype count_ = 0;
};

}  // namespace

Translated translate(const QString& oracleSql, Dialect dialect) {
    static Memory memory;
    return memory.translate(oracleSql, dialect);
}

namespace {

QStringList parameterNamesUncached(const QString& oracleSql) {
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

}  // namespace

// A dataset asks again each time a line is added to its text, so the names
// of the texts seen are remembered as translations are.
QStringList parameterNames(const QString& oracleSql) {
    static std::shared_mutex mutex;
    static QHash<QString, QStringList> seen;
    {
        std::shared_lock lock(mutex);
        const auto it = seen.constFind(oracleSql);
        if (it != seen.cend()) return *it;
    }
    QStringList names = parameterNamesUncached(oracleSql);
    std::unique_lock lock(mutex);
    if (seen.size() >= 4096) seen.clear();
    seen.insert(QString(oracleSql.constData(), oracleSql.size()), names);
    return names;
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
