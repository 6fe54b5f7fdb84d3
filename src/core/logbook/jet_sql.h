// The one place where the logbook's SQL, written in the dialect the logbook has always used
// ("[name]" for names, "TOP n" for a row limit, "#date#" for date literals), becomes SQLite's.
//
// Pure function; any thread. Quoted string literals are copied untouched, so a value inside
// quotes is never rewritten (values are bound as parameters anyway).
#pragma once

#include <string>
#include <string_view>

#include "shell/status.h"

namespace tavlorin {

// Translates `jet` into SQLite SQL in `*sqlite`:
//   [name]         -> "name"
//   SELECT TOP n   -> SELECT ... LIMIT n (the limit goes at the end of the statement)
//   #2024-05-01#   -> the date as its day count (see ole_date.h); also #05/01/2024 10:00#
// An unterminated bracket, quote or date, or a date that cannot be read, is an error.
Status TranslateJetSql(std::string_view jet, std::string* sqlite);

}  // namespace tavlorin
