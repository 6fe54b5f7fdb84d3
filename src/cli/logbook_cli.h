// Shared pieces of the logbook commands (log, country, countries): choosing the file, running
// Define, and printing a database error the way the "LogbookShowErrors" setting asks.
// Command-line process only; one thread.
#pragma once

#include <string>

#include "commands.h"
#include "logbook/logbook_database.h"

namespace tavlorin::cli {

// --db FILE, else the setting "LogbookDatabase", else the default file in the data folder.
std::string LogbookPath(const Globals& globals);

// Prints `status` on standard error (the full text when "LogbookShowErrors" is on, a short
// notice otherwise) and returns exit code 1.
int ReportFailure(const LogbookDatabase& database, const Status& status);

// Runs Define on a file that must already exist; false (message printed) otherwise.
bool DefineExisting(LogbookDatabase& database);

// A --where value as a whole WHERE clause: "WHERE " is put in front unless it is there.
std::string WhereClause(const std::string& where);

// `text` as a JSON string, quotes included.
std::string JsonText(const std::string& text);
// Tabs and line ends inside a value would break a tab-separated line: they become blanks.
std::string TabSafe(std::string text);

}  // namespace tavlorin::cli
