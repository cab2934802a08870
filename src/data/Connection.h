// Opening the database behind the `Shdl` connection. The module itself never
// opens a connection: the host and the tools do, through here, or a host
// opens it with plain Qt calls; either way the connection gets the same
// preparation (SQLite routines, pragmas, clock) before the module uses it.
#pragma once

#include <QSqlDatabase>
#include <QString>

#include "SqlDialect.h"

namespace tarvin::db {

// "sqlite:PATH" (PATH may be ":memory:"), "postgresql://user@host:port/db"
// (also "postgres://"), or a plain file path taken as SQLite.
struct DatabaseUrl {
    tarvin::sql::Dialect dialect = tarvin::sql::Dialect::SQLite;
    QString path;      // SQLite file
    QString host;
    int port = 5432;
    QString user;
    QString password;
    QString database;
    QString options;   // PostgreSQL connect options (key=value;...)
    static DatabaseUrl parse(const QString& url);  // throws std::invalid_argument
    QString toString() const;
};

// Opens a connection under `connectionName` (an existing one of that name is
// closed and replaced) and prepares it for the dialect. Throws EDatabaseError
// with the driver's message when it cannot open.
QSqlDatabase openConnection(const QString& url,
                            const QString& connectionName = QStringLiteral("Shdl"));
void closeConnection(const QString& connectionName = QStringLiteral("Shdl"));

// Prepares an open connection that someone else opened as openConnection
// prepares its own: on SQLite the routines (numbering, sysdate, ...),
// Oracle's case-sensitive LIKE and a wait for other operators' locks; the
// data layer calls it at a connection's first use. Idempotent and cheap
// after the first call. On PostgreSQL the schema carries the routines and
// nothing is needed. Throws EDatabaseError when a setting cannot be made.
void prepareConnection(const QSqlDatabase& db);
void prepareConnection(const QString& connectionName = QStringLiteral("Shdl"));

tarvin::sql::Dialect dialectOf(const QSqlDatabase& db);

// The database clock: SQL `sysdate` reads it. Normally the server's own
// time; a fixed value (for tests and demonstrations) is kept per connection.
// An invalid date-time goes back to the real clock.
void setFixedClock(const QString& connectionName, const QDateTime& at);

}  // namespace tarvin::db
