// The database routines on SQLite: C++ functions registered on a connection,
// with the same names and results as the PostgreSQL schema's PL/pgSQL.
#pragma once

struct sqlite3;
class QDateTime;

namespace tarvin::sqlite {

// Registers every routine (numbering, Yk_UndoYysq, jc_pjdlbd, jc_jlyctbjl,
// to_char, to_date, tarvin_sysdate, ...) on the handle. Idempotent.
void registerRoutines(sqlite3* db);
// Whether the routines are registered on this handle (until it closes).
bool hasRoutines(sqlite3* db);

// Fixes the clock that tarvin_sysdate() reads on this handle; an invalid
// date-time returns to the real local time.
void setFixedClock(sqlite3* db, const QDateTime& at);

}  // namespace tarvin::sqlite
