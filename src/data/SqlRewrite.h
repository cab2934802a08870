// The rewriting half of the dialect bridge: an Oracle text, tokenized and
// grouped by parentheses and CASE ... END, rewritten for SQLite or
// PostgreSQL. See SqlDialect.h for the contract.
#pragma once

#include "SqlDialect.h"

namespace tarvin::sql::detail {

// Throws TranslateError; `dialect` is SQLite or PostgreSQL.
Translated translateForEngine(const QString& oracleSql, Dialect dialect);

// Oracle: the text unchanged, split at its parameter places, with the kind
// and the output parameters of a block. Never throws.
Translated splitOracle(const QString& oracleSql);

}  // namespace tarvin::sql::detail
