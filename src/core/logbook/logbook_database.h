// LogbookDatabase: one logbook file (SQLite) and the record operations on it.
//
// Define() makes sure the file exists and has the full structure (see CDefineDatabase), fills
// empty reference tables with the built-in defaults, and builds the in-memory maps: the field
// sizes and types ("TABLE::Field"), the radio-mode map and the country tables. Every operation
// opens the file, does its work in one transaction and closes it again, so no connection is
// held between operations and a contact reported stored is committed and synced (it survives
// a crash of the program; an interrupted write is rolled back at the next open).
//
// Failures come back as a Status with the message the user sees ("Error opening database: %s",
// "Error adding record to %s: %s", ...); the same line goes to the debug log and to the log
// sink. Whether to show it is the caller's choice (ShowErrors(), the "LogbookShowErrors"
// setting). Nothing is retried.
//
// Thread: one thread at a time per object (the maps are rebuilt by Define and LoadCountries).
// Several objects, or processes, may use one file: SQLite serialises the writers.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

#include "geo/country_tables.h"
#include "logbook/logbook_records.h"
#include "logbook/logbook_schema.h"
#include "logbook/sqlite_db.h"
#include "shell/settings.h"
#include "shell/status.h"

namespace tavlorin {

// The outcome of a bulk add: every record is counted exactly once.
struct BulkAddResult {
  int stored = 0;
  int failed = 0;
  int duplicates = 0;
  Status status;  // an error that stopped the whole batch (then nothing was stored)
  bool cancelled = false;  // the source cancelled: the batch was rolled back
};

// Contacts for a bulk add, handed over chunk by chunk, so that a big import never holds all
// of its contacts at once. Called on the thread that runs AddRecords.
struct BulkAddSource {
  // The next chunk; an empty span ends the batch. Setting *cancel rolls the whole batch back.
  // The chunk must stay unchanged until the next call.
  std::function<std::span<const CLogbookRecordset>(bool* cancel)> next;
  // Told about each contact of the current chunk that is not stored and why (optional).
  std::function<void(size_t index, const std::string& reason)> notStored;
  // Count as if storing, then roll back: a dry run that still finds the duplicates.
  bool rollBack = false;
};

class LogbookDatabase {
 public:
  using LogSink = std::function<void(const std::string& line)>;
  // Answers the "This file contains %d active and %d deleted country definitions, continue?"
  // question with its full text; true means yes.
  using ConfirmLoad = std::function<bool(const std::string& question, int active, int deleted)>;

  // REQUIRES: `settings` outlives this object.
  explicit LogbookDatabase(std::string path, Settings& settings = Settings::Default());

  // The file named by "LogbookDatabase", or "TVR Logbook.sqlite" in DataDir().
  static std::string ConfiguredPath(const Settings& settings = Settings::Default());
  bool ShowErrors() const;

  const std::string& path() const { return path_; }
  void SetLogSink(LogSink sink) { sink_ = std::move(sink); }
  // Called after a countries file was loaded, so that open windows can refresh their lists.
  void SetCountriesChangedCallback(std::function<void()> callback) {
    countriesChanged_ = std::move(callback);
  }

  // Creates or repairs the file and builds the maps; false when the file is not usable.
  // With `verbose`, the progress log also gets the per-field lines.
  bool Define(bool verbose);

  // Opens the file for one operation: "Error opening database: %s" on failure.
  Status Open(SqliteDb* db);

  Status AddRecord(CLogbookRecordset* record);  // sets primaryKey, created and modified
  Status ReadRecord(int32_t key, CLogbookRecordset* record);
  Status UpdateRecord(int32_t key, CLogbookRecordset* record);  // sets modified
  Status UpdateField(int32_t key, const std::string& field, const std::string& value);
  Status DeleteRecord(int32_t key);
  // Newest first unless `order` says otherwise; `limit` 0 means all; `filter` is a whole
  // WHERE clause or empty. A progress line goes to the sink every 250 rows.
  Status ListRecords(int limit, const std::string& filter, const std::string& order,
                     std::vector<CLogbookRecordset>* records);
  Status CountRecords(const std::string& table, int64_t* count);
  // Adds many contacts in one transaction (the importers' path). A record equal to a stored
  // one (or an earlier one of the batch) in Station, StartTime (to the second), BandMHz and
  // Mode is a duplicate and not stored; one without StartTime fails. Created and Modified of
  // the stored rows are the time of the call.
  BulkAddResult AddRecords(std::span<const CLogbookRecordset> records);
  // The same over chunks, still in one transaction: all of it is stored, or none.
  BulkAddResult AddRecords(const BulkAddSource& source);
  // Calls `each` with every listed contact in order (see ListRecords), without holding them
  // all; `each` returns false to stop early.
  Status ForEachRecord(int limit, const std::string& filter, const std::string& order,
                       const std::function<bool(const CLogbookRecordset&)>& each);

  Status Bands(std::vector<CBandsRecordSet>* bands);
  Status Modes(std::vector<CModesRecordSet>* modes);
  Status Countries(std::vector<CCountriesRecordSet>* countries);
  // The first band whose edges (unsigned) hold `hertz`; nullopt when none does.
  Status BandForFrequency(uint32_t hertz, std::optional<CBandsRecordSet>* band);

  Status CacheLookup(CQRZRecordSet* lookup);  // sets primaryKey and qrzUpdated
  Status FindCachedLookup(const std::string& callsign, std::optional<CQRZRecordSet>* lookup);

  // Replaces TBL_COUNTRIES from a countries file after `confirm` says yes; `*loaded` tells
  // whether it did. The maps are rebuilt.
  Status LoadCountriesFile(const std::string& file, const ConfirmLoad& confirm, bool* loaded);

  // Keeps the leading characters (not bytes) of `value` up to the field's size.
  std::string CutToFieldSize(const std::string& table, const std::string& field,
                             const std::string& value) const;
  // The size and type maps, keyed "TABLE::Field"; filled by Define.
  const std::map<std::string, int>& fieldSizes() const { return sizes_; }
  const std::map<std::string, FieldType>& fieldTypes() const { return types_; }

  // One text field of a contact with its size, in the order the write path cuts them.
  struct CutStep {
    const char* name;
    std::string CLogbookRecordset::*text;
    size_t size;
  };

  const CountryTables& countries() const { return countryTables_; }
  // The logbook mode of a radio mode number; empty for 0 and unknown numbers.
  std::string ModeForRadioMode(int radioMode) const;

 private:
  friend class CDefineDatabase;

  void Log(const std::string& line);
  Status Fail(const std::string& message);  // logs and returns the error
  Status FillDefaults();
  Status FillCountries(const std::vector<CountryRow>& rows);
  Status FillBuiltInCountries();
  bool FillTable(SqliteDb& db, const char* table, const std::string& insertSql, size_t count,
                 const std::function<void(SqliteStatement&, size_t)>& bind);
  Status BuildMaps();
  Status CountIn(SqliteDb& db, const std::string& table, int64_t* count);
  Status PrepareJet(SqliteDb& db, const std::string& jetSql, SqliteStatement* statement);
  std::vector<CutStep> CutPlan() const;
  void CutRecord(CLogbookRecordset* record) const;
  static void CutRecord(const std::vector<CutStep>& plan, CLogbookRecordset* record);
  Status SelectByKey(SqliteDb& db, int32_t key, SqliteStatement* statement);
  Status LoadDuplicateKeys(SqliteDb& db, double first, double last,
                           std::unordered_set<std::string>* keys);

  std::string path_;
  Settings& settings_;
  LogSink sink_;
  std::function<void()> countriesChanged_;
  std::map<std::string, int> sizes_;
  std::map<std::string, FieldType> types_;
  std::map<int, std::string> radioModes_;
  CountryTables countryTables_;
};

}  // namespace tavlorin
