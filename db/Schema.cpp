// Installing the reference schema: the scripts under db/sqlite and
// db/postgres are embedded as resources (":/db/<engine>/NN_name.sql") and run
// in file-name order, all in one transaction.
#include "Schema.h"

#include <QDir>
#include <QMap>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>

#include "data/Connection.h"
#include "data/MidasQuery.h"

namespace tarvin::db {

using tarvin::sql::Dialect;

namespace {

QString scriptDirectory(Dialect dialect) {
    switch (dialect) {
    case Dialect::SQLite: return QStringLiteral(":/db/sqlite");
    case Dialect::PostgreSQL: return QStringLiteral(":/db/postgres");
    case Dialect::Oracle: break;
    }
    throw EDatabaseError(QStringLiteral("The reference schema exists for SQLite and PostgreSQL only"));
}

int lineOf(const QString& text, qsizetype pos) { return int(text.left(pos).count(QLatin1Char('\n'))) + 1; }

bool isIdentChar(QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); }

// A dollar-quote opener at `pos` ("$$" or "$tag$"), or an empty string.
QString dollarTag(const QString& s, qsizetype pos) {
    if (pos > 0 && (isIdentChar(s[pos - 1]) || s[pos - 1] == QLatin1Char('$'))) return {};
    qsizetype j = pos + 1;
    while (j < s.size() && isIdentChar(s[j])) ++j;
    if (j >= s.size() || s[j] != QLatin1Char('$')) return {};
    const QString tag = s.mid(pos, j - pos + 1);
    if (tag.size() > 2 && tag[1].isDigit()) return {};  // $1 is a parameter, not a tag
    return tag;
}

// The first lines of a statement, enough to find it in the scripts.
QString excerpt(const QString& statement) {
    const QString s = statement.simplified();
    return s.size() <= 300 ? s : s.left(300) + QStringLiteral(" ...");
}

}  // namespace

QString schemaScript(Dialect dialect) {
    const QString dirPath = scriptDirectory(dialect);
    // The engine's own scripts and the shared ones, run in file-name order.
    QMap<QString, QString> files;
    for (const QString& dir : {QStringLiteral(":/db/common"), dirPath})
        for (const QString& name : QDir(dir).entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name))
            files.insert(name, dir + QLatin1Char('/') + name);
    if (files.isEmpty())
        throw EDatabaseError(QStringLiteral("No schema scripts under %1 (the tarvin_db library carries them)").arg(dirPath));
    QString script;
    for (auto it = files.cbegin(); it != files.cend(); ++it) {
        QFile f(it.value());
        if (!f.open(QIODevice::ReadOnly))
            throw EDatabaseError(QStringLiteral("Cannot read the schema script %1").arg(f.fileName()));
        script += QStringLiteral("-- %1\n").arg(it.key());
        script += QString::fromUtf8(f.readAll());
        if (!script.endsWith(QLatin1Char('\n'))) script += QLatin1Char('\n');
    }
    return script;
}

QStringList splitStatements(const QString& script) {
    QStringList statements;
    QString current;
    const auto flush = [&] {
        const QString s = current.trimmed();
        if (!s.isEmpty()) statements << s;
        current.clear();
    };
    const qsizetype n = script.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = script[i];
        const QChar next = i + 1 < n ? script[i + 1] : QChar();
        if (c == QLatin1Char('-') && next == QLatin1Char('-')) {  // comment to the end of the line
            const qsizetype end = script.indexOf(QLatin1Char('\n'), i);
            i = end < 0 ? n : end;
            continue;
        }
        if (c == QLatin1Char('/') && next == QLatin1Char('*')) {
            const qsizetype end = script.indexOf(QStringLiteral("*/"), i + 2);
            if (end < 0)
                throw EDatabaseError(QStringLiteral("Unterminated comment starting at line %1").arg(lineOf(script, i)));
            current += QLatin1Char(' ');
            i = end + 2;
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {  // quoted text or name; a doubled quote stays inside
            // PostgreSQL's E'...' texts also escape with a backslash.
            const bool backslashes = c == QLatin1Char('\'') && i > 0 && (script[i - 1] == QLatin1Char('E') || script[i - 1] == QLatin1Char('e'))
                                     && (i < 2 || !isIdentChar(script[i - 2]));
            qsizetype j = i + 1;
            for (;;) {
                if (j >= n)
                    throw EDatabaseError(QStringLiteral("Unterminated %1 starting at line %2")
                                             .arg(c == QLatin1Char('\'') ? QStringLiteral("text") : QStringLiteral("quoted name"))
                                             .arg(lineOf(script, i)));
                if (backslashes && script[j] == QLatin1Char('\\')) {
                    j += 2;
                    continue;
                }
                if (script[j] == c) {
                    if (j + 1 < n && script[j + 1] == c) {
                        j += 2;
                        continue;
                    }
                    break;
                }
                ++j;
            }
            current += script.mid(i, j + 1 - i);
            i = j + 1;
            continue;
        }
        if (c == QLatin1Char('$')) {  // a PL/pgSQL body stays whole, semicolons and all
            const QString tag = dollarTag(script, i);
            if (!tag.isEmpty()) {
                const qsizetype end = script.indexOf(tag, i + tag.size());
                if (end < 0)
                    throw EDatabaseError(QStringLiteral("Unterminated %1 body starting at line %2").arg(tag).arg(lineOf(script, i)));
                current += script.mid(i, end + tag.size() - i);
                i = end + tag.size();
                continue;
            }
        }
        if (c == QLatin1Char(';')) {
            flush();
            ++i;
            continue;
        }
        current += c;
        ++i;
    }
    flush();
    return statements;
}

void createSchema(const QSqlDatabase& connection) {
    QSqlDatabase db = connection;
    if (!db.isOpen()) throw EDatabaseError(QStringLiteral("Cannot create the reference schema: the connection is not open"));
    prepareConnection(db);
    const QStringList statements = splitStatements(schemaScript(dialectOf(db)));
    if (!db.transaction())
        throw EDatabaseError(QStringLiteral("Cannot create the reference schema: %1").arg(db.lastError().text()));
    QString failure;
    {
        QSqlQuery q(db);
        for (const QString& statement : statements) {
            if (!q.exec(statement)) {
                failure = QStringLiteral("Creating the reference schema failed at \"%1\": %2")
                              .arg(excerpt(statement), q.lastError().text());
                break;
            }
            q.finish();
        }
    }
    if (!failure.isEmpty()) {
        db.rollback();
        throw EDatabaseError(failure);
    }
    if (!db.commit()) {
        const QString err = db.lastError().text();
        db.rollback();
        throw EDatabaseError(QStringLiteral("Cannot commit the reference schema: %1").arg(err));
    }
}

}  // namespace tarvin::db
