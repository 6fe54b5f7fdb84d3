#include "logbook_cli.h"

#include <cstdio>
#include <filesystem>

namespace tavlorin::cli {

std::string LogbookPath(const Globals& globals) {
  return globals.dbPath.empty() ? LogbookDatabase::ConfiguredPath() : globals.dbPath;
}

int ReportFailure(const LogbookDatabase& database, const Status& status) {
  if (database.ShowErrors()) {
    std::fprintf(stderr, "%s\n", status.message().c_str());
  } else {
    std::fprintf(stderr, "The logbook operation failed (details in the debug log).\n");
  }
  return 1;
}

bool DefineExisting(LogbookDatabase& database) {
  std::error_code ec;
  if (!std::filesystem::exists(database.path(), ec)) {
    SqliteDb db;
    ReportFailure(database, database.Open(&db));
    std::fprintf(stderr, "(%s does not exist; 'tavlorin-cli log define' creates it)\n",
                 database.path().c_str());
    return false;
  }
  std::string lastError;
  database.SetLogSink([&lastError](const std::string& line) {
    if (line.rfind("Error", 0) == 0) {
      lastError = line;
    }
  });
  bool ok = database.Define(false);
  database.SetLogSink(nullptr);
  if (!ok) {
    ReportFailure(database,
                  Status::Error(lastError.empty() ? "Error opening database" : lastError));
  }
  return ok;
}

}  // namespace tavlorin::cli
