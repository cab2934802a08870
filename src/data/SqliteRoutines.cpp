// Placeholder until the routines land.
#include "SqliteRoutines.h"
#include <QDateTime>
namespace tarvin::sqlite {
void registerRoutines(sqlite3*) {}
void setFixedClock(sqlite3*, const QDateTime&) {}
}
