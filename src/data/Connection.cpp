#include "Connection.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>
#include <QUrlQuery>
#include <sqlite3.h>

#include "MidasQuery.h"
#include "SqliteRoutines.h"

namespace tarvin::db {

using tarvin::sql::Dialect;

DatabaseUrl DatabaseUrl::parse(const QString& url) {
    DatabaseUrl u;
    const QString s = url.trimmed();
    if (s.isEmpty()) throw std::invalid_argument("empty database URL");
    if (s.startsWith(QLatin1String("postgresql://")) || s.startsWith(QLatin1String("postgres://"))) {
        QUrl q(s);
        if (!q.isValid()) throw std::invalid_argument(("not a PostgreSQL URI: " + s).toStdString());
        u.dialect = Dialect::PostgreSQL;
        u.host = q.host().isEmpty() ? QStringLiteral("127.0.0.1") : q.host();
        u.port = q.port(5432);
        u.user = q.userName();
        u.password = q.password();
        u.database = q.path().mid(1);
        if (u.database.isEmpty()) u.database = QStringLiteral("postgres");
        QStringList opts;
        const auto items = QUrlQuery(q).queryItems(QUrl::FullyDecoded);
        for (const auto& kv : items) opts << kv.first + QLatin1Char('=') + kv.second;
        u.options = opts.join(QLatin1Char(';'));
        return u;
    }
    u.dialect = Dialect::SQLite;
    u.path = s.startsWith(QLatin1String("sqlite:")) ? s.mid(7) : s;
    if (u.path.startsWith(QLatin1String("//"))) u.path = u.path.mid(2);  // sqlite:///abs
    if (u.path.isEmpty()) throw std::invalid_argument("sqlite: URL without a file path");
    return u;
}

QString DatabaseUrl::toString() const {
    if (dialect == Dialect::SQLite) return QStringLiteral("sqlite:") + path;
    QUrl q;
    q.setScheme(QStringLiteral("postgresql"));
    q.setHost(host);
    q.setPort(port);
    if (!user.isEmpty()) q.setUserName(user);
    if (!password.isEmpty()) q.setPassword(password);
    q.setPath(QLatin1Char('/') + database);
    if (!options.isEmpty()) {
        QUrlQuery qq;
        for (const QString& kv : options.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            const int eq = kv.indexOf(QLatin1Char('='));
            qq.addQueryItem(kv.left(eq), kv.mid(eq + 1));
        }
        q.setQuery(qq);
    }
    return q.toString();
}

Dialect dialectOf(const QSqlDatabase& db) {
    const QString d = db.driverName();
    if (d == QLatin1String("QSQLITE")) return Dialect::SQLite;
    if (d == QLatin1String("QPSQL")) return Dialect::PostgreSQL;
    return Dialect::Oracle;
}

static sqlite3* sqliteHandle(const QSqlDatabase& db) {
    const QVariant v = db.driver()->handle();
    if (!v.isValid() || qstrcmp(v.typeName(), "sqlite3*") != 0) return nullptr;
    return *static_cast<sqlite3* const*>(v.data());
}

static void execOrThrow(QSqlDatabase& db, const QString& sql) {
    QSqlQuery q(db);
    if (!q.exec(sql))
        throw EDatabaseError(QStringLiteral("%1: %2").arg(sql, q.lastError().text()));
}

QSqlDatabase openConnection(const QString& url, const QString& connectionName) {
    DatabaseUrl u;
    try {
        u = DatabaseUrl::parse(url);
    } catch (const std::invalid_argument& e) {
        throw EDatabaseError(QString::fromUtf8(e.what()));
    }
    closeConnection(connectionName);
    QSqlDatabase db;
    if (u.dialect == Dialect::SQLite) {
        db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        db.setDatabaseName(u.path);
    } else {
        db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connectionName);
        db.setHostName(u.host);
        db.setPort(u.port);
        db.setUserName(u.user);
        db.setPassword(u.password);
        db.setDatabaseName(u.database);
        if (!u.options.isEmpty()) db.setConnectOptions(u.options);
    }
    if (!db.isValid() || !db.open()) {
        const QString err = db.lastError().text();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(connectionName);
        throw EDatabaseError(QStringLiteral("cannot open %1: %2").arg(u.toString(), err));
    }
    if (u.dialect == Dialect::SQLite) {
        sqlite3* h = sqliteHandle(db);
        if (!h) throw EDatabaseError(QStringLiteral("SQLite driver gives no handle"));
        prepareConnection(db);
        // WAL lets readers work beside a writer.
        if (u.path != QLatin1String(":memory:")) execOrThrow(db, QStringLiteral("PRAGMA journal_mode=WAL"));
        execOrThrow(db, QStringLiteral("PRAGMA synchronous=NORMAL"));
    } else {
        db.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
        execOrThrow(db, QStringLiteral("SET client_encoding TO 'UTF8'"));
        execOrThrow(db, QStringLiteral("SET standard_conforming_strings TO on"));
        execOrThrow(db, QStringLiteral("SET client_min_messages TO warning"));
        // A screen's query answers in milliseconds; compiling it first (the
        // server's JIT, chosen by estimated cost) took longer than running
        // it, for screening a unit's customers.
        execOrThrow(db, QStringLiteral("SET jit TO off"));
    }
    return db;
}

void prepareConnection(const QSqlDatabase& db) {
    if (!db.isOpen() || dialectOf(db) != Dialect::SQLite) return;
    sqlite3* h = sqliteHandle(db);
    // The routines' state lives until the handle closes, so a handle that
    // has it has been prepared.
    if (!h || tarvin::sqlite::hasRoutines(h)) return;
    QSqlDatabase shared = db;  // the same connection: settings apply to it
    shared.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    // Several operators' processes may share one file: wait for their locks.
    sqlite3_busy_timeout(h, 30000);
    execOrThrow(shared, QStringLiteral("PRAGMA case_sensitive_like=ON"));
    tarvin::sqlite::registerRoutines(h);
}

void prepareConnection(const QString& connectionName) {
    if (!QSqlDatabase::contains(connectionName)) return;
    prepareConnection(QSqlDatabase::database(connectionName, false));
}

void closeConnection(const QString& connectionName) {
    if (!QSqlDatabase::contains(connectionName)) return;
    ForgetCompiledStatements(connectionName);
    {
        QSqlDatabase db = QSqlDatabase::database(connectionName, false);
        if (db.isOpen()) db.close();
    }
    QSqlDatabase::removeDatabase(connectionName);
}

void setFixedClock(const QString& connectionName, const QDateTime& at) {
    QSqlDatabase db = QSqlDatabase::database(connectionName, false);
    if (!db.isOpen()) throw EDatabaseError(QStringLiteral("connection %1 is not open").arg(connectionName));
    if (dialectOf(db) == Dialect::SQLite) {
        prepareConnection(db);
        tarvin::sqlite::setFixedClock(sqliteHandle(db), at);
        return;
    }
    // PostgreSQL: tarvin_sysdate() reads this session setting when it is set.
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT set_config('tarvin.clock', ?, false)"));
    q.addBindValue(at.isValid() ? at.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : QString(QLatin1String("")));
    if (!q.exec()) throw EDatabaseError(q.lastError().text());
}

}  // namespace tarvin::db
