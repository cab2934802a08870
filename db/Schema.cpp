// Placeholder until the reference schema lands.
#include "Schema.h"
#include "MidasQuery.h"
#include <QFile>
namespace tarvin::db {
QString schemaScript(tarvin::sql::Dialect) { return {}; }
QStringList splitStatements(const QString&) { return {}; }
void createSchema(const QSqlDatabase&) {}
}
