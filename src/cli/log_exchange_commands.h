// The logbook's exchange sub-commands of tavlorin-cli: `log import`, `log export` (ADIF, in
// log_exchange_command.cpp) and `log cabrillo` (log_cabrillo_command.cpp). `words` are the
// words after the sub-command's name. Each returns the process exit code.
#pragma once

#include "commands.h"
#include "logbook/logbook_database.h"

namespace tavlorin::cli {

int RunLogImport(LogbookDatabase& database, const Args& words);
int RunLogExport(LogbookDatabase& database, const Args& words);
int RunLogCabrillo(LogbookDatabase& database, const Args& words);

// Usage lines of the three, for `log --help`.
extern const char* const kLogExchangeUsage;

}  // namespace tavlorin::cli
