#include "logbook/logbook_database.h"

#include <algorithm>

#include "logbook/define_database.h"
#include "logbook/jet_sql.h"
#include "logbook/logbook_defaults.h"
#include "logbook/logbook_settings.h"
#include "shell/debug_log.h"
#include "shell/paths.h"

namespace tavlorin {
namespace {

// Length of the UTF-8 sequence that starts with `lead` (1 for a stray continuation byte).
size_t SequenceLength(unsigned char lead) {
  if (lead >= 0xF0) {
    return 4;
  }
  if (lead >= 0xE0) {
    return 3;
  }
  if (lead >= 0xC0) {
    return 2;
  }
  return 1;
}

// Bytes taken by the first `characters` characters of UTF-8 `text` (all of it when shorter).
size_t CharacterPrefixBytes(const std::string& text, size_t characters) {
  size_t bytes = 0;
  for (size_t n = 0; bytes < text.size() && n < characters; ++n) {
    bytes += SequenceLength(static_cast<unsigned char>(text[bytes]));
  }
  return std::min(bytes, text.size());
}

}  // namespace

LogbookDatabase::LogbookDatabase(std::string path, Settings& settings)
    : path_(std::move(path)), settings_(settings) {}

std::string LogbookDatabase::ConfiguredPath(const Settings& settings) {
  std::string path = settings.Get(kLogbookDatabase);
  if (!path.empty()) {
    return path;
  }
  return (DataDir() / kDefaultLogbookFileName).string();
}

bool LogbookDatabase::ShowErrors() const { return settings_.Get(kLogbookShowErrors); }

bool LogbookDatabase::Define(bool verbose) { return CDefineDatabase(*this, verbose).Run(); }

void LogbookDatabase::Log(const std::string& line) {
  DebugLog::Write("%s", line.c_str());
  if (sink_) {
    sink_(line);
  }
}

Status LogbookDatabase::Fail(const std::string& message) {
  Log(message);
  return Status::Error(message);
}

Status LogbookDatabase::Open(SqliteDb* db) {
  Status s = db->Open(path_, SqliteDb::OpenMode::kExisting);
  if (!s.ok()) {
    return Fail("Error opening database: " + s.message());
  }
  return Status::Ok();
}

Status LogbookDatabase::PrepareJet(SqliteDb& db, const std::string& jetSql,
                                   SqliteStatement* statement) {
  std::string sql;
  Status s = TranslateJetSql(jetSql, &sql);
  if (!s.ok()) {
    return s;
  }
  return db.Prepare(sql, statement);
}

std::string LogbookDatabase::CutToFieldSize(const std::string& table, const std::string& field,
                                            const std::string& value) const {
  auto it = sizes_.find(table + "::" + field);
  if (it == sizes_.end() || it->second <= 0) {
    return value;
  }
  const size_t bytes = CharacterPrefixBytes(value, static_cast<size_t>(it->second));
  return bytes >= value.size() ? value : value.substr(0, bytes);
}

std::vector<LogbookDatabase::CutStep> LogbookDatabase::CutPlan() const {
  std::vector<CutStep> plan;
  for (const char* name : LogbookCutOrder()) {
    auto it = sizes_.find(std::string(kTableLogbook) + "::" + name);
    if (it != sizes_.end() && it->second > 0) {
      plan.push_back({name, FindLogbookField(name)->text, static_cast<size_t>(it->second)});
    }
  }
  return plan;
}

void LogbookDatabase::CutRecord(CLogbookRecordset* record) const { CutRecord(CutPlan(), record); }

void LogbookDatabase::CutRecord(const std::vector<CutStep>& plan, CLogbookRecordset* record) {
  for (const CutStep& step : plan) {
    std::string& text = record->*step.text;
    if (text.size() <= step.size) {
      continue;  // never more characters than bytes
    }
    const size_t bytes = CharacterPrefixBytes(text, step.size);
    if (bytes < text.size()) {
      DebugLog::Write("Value of %s cut from %zu to %zu bytes", step.name, text.size(), bytes);
      text.resize(bytes);
    }
  }
}

std::string LogbookDatabase::ModeForRadioMode(int radioMode) const {
  if (radioMode == 0) {
    return {};  // the map holds 0 only as a side effect of the unused code slots
  }
  auto it = radioModes_.find(radioMode);
  return it != radioModes_.end() ? it->second : std::string();
}

Status LogbookDatabase::CountIn(SqliteDb& db, const std::string& table, int64_t* count) {
  SqliteStatement st;
  Status s = PrepareJet(db, "SELECT COUNT(*) FROM [" + table + "]", &st);
  if (s.ok() && st.Step()) {
    *count = st.ColumnInt(0);
    return Status::Ok();
  }
  return Status::Error(s.ok() ? st.status().message() : s.message());
}

Status LogbookDatabase::CountRecords(const std::string& table, int64_t* count) {
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  s = CountIn(db, table, count);
  if (!s.ok()) {
    return Fail("Error counting records in " + table + ": " + s.message());
  }
  return s;
}

Status LogbookDatabase::BuildMaps() {
  radioModes_ = BuildRadioModeMap();
  std::vector<CCountriesRecordSet> rows;
  Status s = Countries(&rows);
  if (!s.ok()) {
    return s;
  }
  std::vector<CountryRow> countryRows;
  countryRows.reserve(rows.size());
  for (CCountriesRecordSet& r : rows) {
    countryRows.push_back({std::move(r.country), std::move(r.dxcc), std::move(r.prefix)});
  }
  countryTables_.Build(countryRows, [this](const std::string& line) { Log(line); });
  return Status::Ok();
}

}  // namespace tavlorin
