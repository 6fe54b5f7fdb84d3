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

std::string WhereClause(const std::string& where) {
  const size_t start = where.find_first_not_of(" \t");
  if (start == std::string::npos) {
    return {};
  }
  if (where.compare(start, 5, "WHERE") != 0 && where.compare(start, 5, "where") != 0) {
    return "WHERE " + where;
  }
  return where;
}

std::string JsonText(const std::string& text) {
  std::string out = "\"";
  for (unsigned char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c < 0x20) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
      out += escaped;
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

// Tabs and line ends inside a value would break the columns.
std::string TabSafe(std::string text) {
  for (char& c : text) {
    if (c == '\t' || c == '\n' || c == '\r') {
      c = ' ';
    }
  }
  return text;
}

}  // namespace tavlorin::cli
