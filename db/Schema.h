// Installing the reference schema on an open connection.
#pragma once

#include <QSqlDatabase>
#include <QString>

#include "data/SqlDialect.h"

namespace tarvin::db {

// The schema script for a dialect (tables, views, indexes, and on
// PostgreSQL the PL/pgSQL routines), as shipped in db/.
QString schemaScript(tarvin::sql::Dialect dialect);

// Splits a script into statements (PL/pgSQL bodies in $$ ... $$ stay whole).
QStringList splitStatements(const QString& script);

// Creates every table, view, index and routine of the reference schema,
// plus the fixed catalogue rows the system needs. Throws EDatabaseError
// naming the failing statement.
void createSchema(const QSqlDatabase& db);

}  // namespace tarvin::db
