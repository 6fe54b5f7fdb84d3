// tavlorin-cli log: create, fill, list and edit the logbook file.
#include <cstdio>
#include <string>
#include <vector>

#include "args.h"
#include "commands.h"
#include "logbook/logbook_database.h"
#include "log_exchange_commands.h"
#include "logbook_cli.h"

namespace tavlorin::cli {
namespace {

constexpr const char* kUsage =
    "Usage: tavlorin-cli [--db FILE] log SUBCOMMAND\n"
    "  define [--verbose]                 create or repair the logbook file\n"
    "  add NAME=VALUE...                  add a contact (StartTime is required)\n"
    "  list [--limit N] [--where CLAUSE] [--order CLAUSE] [--json]\n"
    "                                     list contacts, newest first\n"
    "  update KEY NAME=VALUE...           change fields of contact KEY\n"
    "  delete KEY                         delete contact KEY\n"
    "%s"
    "Field names are those of TBL_LOGBOOK (Station, StartTime, BandMHz, Mode, ...); dates are\n"
    "written YYYY-MM-DD HH:MM:SS in UTC. CLAUSE uses the logbook's SQL: [Field], #date#.\n";

int BadLine(const std::string& message) {
  std::fprintf(stderr, "tavlorin-cli log: %s\n\n", message.c_str());
  std::fprintf(stderr, kUsage, kLogExchangeUsage);
  return 2;
}

// Parses NAME=VALUE words into (field, value) pairs; false with a message on a bad word.
bool ParseAssignments(const std::vector<std::string>& words, size_t first,
                      std::vector<std::pair<const LogbookField*, std::string>>* out,
                      std::string* error) {
  for (size_t i = first; i < words.size(); ++i) {
    size_t eq = words[i].find('=');
    const LogbookField* field =
        eq == std::string::npos ? nullptr : FindLogbookField(words[i].substr(0, eq));
    if (field == nullptr) {
      *error = "\"" + words[i] + "\" is not NAME=VALUE with a field of TBL_LOGBOOK";
      return false;
    }
    out->emplace_back(field, words[i].substr(eq + 1));
  }
  return true;
}

void PrintRecords(const std::vector<CLogbookRecordset>& records, bool json) {
  const auto fields = LogbookFields();
  if (json) {
    std::printf("[");
    for (size_t r = 0; r < records.size(); ++r) {
      std::printf("%s\n  {", r == 0 ? "" : ",");
      for (size_t f = 0; f < fields.size(); ++f) {
        std::printf("%s%s: %s", f == 0 ? "" : ", ", JsonText(fields[f].name).c_str(),
                    fields[f].text == nullptr && fields[f].date == nullptr
                        ? std::to_string(records[r].primaryKey).c_str()
                        : JsonText(LogbookFieldText(records[r], fields[f])).c_str());
      }
      std::printf("}");
    }
    std::printf("%s]\n", records.empty() ? "" : "\n");
    return;
  }
  for (size_t f = 0; f < fields.size(); ++f) {
    std::printf("%s%s", f == 0 ? "" : "\t", fields[f].name);
  }
  std::printf("\n");
  for (const CLogbookRecordset& record : records) {
    for (size_t f = 0; f < fields.size(); ++f) {
      std::printf("%s%s", f == 0 ? "" : "\t", TabSafe(LogbookFieldText(record, fields[f])).c_str());
    }
    std::printf("\n");
  }
}

int Define(LogbookDatabase& database, ArgReader& reader) {
  const bool verbose = reader.Flag("--verbose");
  if (std::string error = reader.Finish(); !error.empty()) {
    return BadLine(error);
  }
  database.SetLogSink([verbose](const std::string& line) {
    if (verbose) {
      std::printf("%s\n", line.c_str());
    } else if (line.rfind("Error", 0) == 0) {
      std::fprintf(stderr, "%s\n", line.c_str());
    }
  });
  if (!database.Define(verbose)) {
    return 1;
  }
  if (!verbose) {
    std::printf("%s\n", database.path().c_str());
  }
  return 0;
}

int Add(LogbookDatabase& database, const std::vector<std::string>& words) {
  std::vector<std::pair<const LogbookField*, std::string>> assignments;
  std::string error;
  if (words.size() < 2 || !ParseAssignments(words, 1, &assignments, &error)) {
    return BadLine(words.size() < 2 ? "add needs NAME=VALUE words" : error);
  }
  CLogbookRecordset record;
  for (const auto& [field, value] : assignments) {
    if (Status s = SetLogbookFieldText(&record, *field, value); !s.ok()) {
      return BadLine(s.message());
    }
  }
  if (!DefineExisting(database)) {
    return 1;
  }
  if (Status s = database.AddRecord(&record); !s.ok()) {
    return ReportFailure(database, s);
  }
  std::printf("%d\n", record.primaryKey);
  return 0;
}

int List(LogbookDatabase& database, ArgReader& reader) {
  auto limit = reader.NumberOption("--limit", 1, 1000000000);
  std::string where = reader.Option("--where").value_or("");
  std::string order = reader.Option("--order").value_or("");
  const bool json = reader.Flag("--json");
  if (std::string error = reader.Finish(); !error.empty()) {
    return BadLine(error);
  }
  where = WhereClause(where);
  if (!DefineExisting(database)) {
    return 1;
  }
  std::vector<CLogbookRecordset> records;
  if (Status s = database.ListRecords(static_cast<int>(limit.value_or(0)), where, order, &records);
      !s.ok()) {
    return ReportFailure(database, s);
  }
  PrintRecords(records, json);
  return 0;
}

int Update(LogbookDatabase& database, const std::vector<std::string>& words) {
  auto key = words.size() >= 2 ? ParseNumber(words[1], 1, INT32_MAX) : std::nullopt;
  std::vector<std::pair<const LogbookField*, std::string>> assignments;
  std::string error;
  if (!key || words.size() < 3 || !ParseAssignments(words, 2, &assignments, &error)) {
    return BadLine(!key            ? "update needs a record number"
                   : error.empty() ? "update needs NAME=VALUE words"
                                   : error);
  }
  if (!DefineExisting(database)) {
    return 1;
  }
  const int32_t k = static_cast<int32_t>(*key);
  if (assignments.size() == 1) {
    Status s = database.UpdateField(k, assignments[0].first->name, assignments[0].second);
    return s.ok() ? 0 : ReportFailure(database, s);
  }
  CLogbookRecordset record;
  if (Status s = database.ReadRecord(k, &record); !s.ok()) {
    return ReportFailure(database, s);
  }
  for (const auto& [field, value] : assignments) {
    if (Status s = SetLogbookFieldText(&record, *field, value); !s.ok()) {
      return BadLine(s.message());
    }
  }
  Status s = database.UpdateRecord(k, &record);
  return s.ok() ? 0 : ReportFailure(database, s);
}

int Delete(LogbookDatabase& database, const std::vector<std::string>& words) {
  auto key = words.size() == 2 ? ParseNumber(words[1], 1, INT32_MAX) : std::nullopt;
  if (!key) {
    return BadLine("delete needs one record number");
  }
  if (!DefineExisting(database)) {
    return 1;
  }
  Status s = database.DeleteRecord(static_cast<int32_t>(*key));
  return s.ok() ? 0 : ReportFailure(database, s);
}

}  // namespace

int RunLogCommand(const Globals& globals, const Args& args) {
  if (args.empty() || args[0] == "--help" || args[0] == "-h") {
    std::fprintf(args.empty() ? stderr : stdout, kUsage, kLogExchangeUsage);
    return args.empty() ? 2 : 0;
  }
  LogbookDatabase database(LogbookPath(globals));
  const std::string& sub = args[0];
  Args rest(args.begin() + 1, args.end());
  ArgReader reader(rest);
  if (sub == "define") {
    return Define(database, reader);
  }
  if (sub == "list") {
    return List(database, reader);
  }
  if (sub == "add") {
    return Add(database, args);
  }
  if (sub == "update") {
    return Update(database, args);
  }
  if (sub == "delete") {
    return Delete(database, args);
  }
  if (sub == "import") {
    return RunLogImport(database, rest);
  }
  if (sub == "export") {
    return RunLogExport(database, rest);
  }
  if (sub == "cabrillo") {
    return RunLogCabrillo(database, rest);
  }
  return BadLine("unknown subcommand \"" + sub + "\"");
}

}  // namespace tavlorin::cli
