// SqliteDb and SqliteStatement: a small RAII wrapper over the SQLite C API for the logbook.
//
// SqliteDb owns one connection and closes it on destruction; SqliteStatement owns one prepared
// statement of a connection and must not outlive it. Errors come back as Status values whose
// message is the engine's own text; nothing throws. Every value reaches SQL through Bind, never
// through the SQL text. One connection is used by one thread at a time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "shell/status.h"

struct sqlite3;
struct sqlite3_stmt;

namespace tavlorin {

class SqliteStatement;

class SqliteDb {
 public:
  enum class OpenMode { kExisting, kCreate };

  SqliteDb() = default;
  ~SqliteDb() { Close(); }
  SqliteDb(const SqliteDb&) = delete;
  SqliteDb& operator=(const SqliteDb&) = delete;

  // Opens `path` read-write (kCreate also creates a missing file), checks that it is a
  // database and selects the journal settings: a rollback journal with synchronous FULL, so
  // that a committed transaction survives a crash of the program (and of the machine), and an
  // interrupted one is rolled back at the next open. The logbook opens and closes the file for
  // every operation, so a write-ahead log would only add a checkpoint to each close.
  Status Open(const std::string& path, OpenMode mode);
  void Close();
  bool isOpen() const { return db_ != nullptr; }

  // Runs SQL without results (several statements allowed). REQUIRES: isOpen().
  Status Exec(const std::string& sql);
  Status Prepare(const std::string& sql, SqliteStatement* statement);

  Status Begin() { return Exec("BEGIN IMMEDIATE"); }
  Status Commit() { return Exec("COMMIT"); }
  void Rollback();

  int64_t LastInsertRowId() const;
  int Changes() const;
  std::string ErrorText() const;                        // the engine's message for the last failure
  int ErrorCode() const;                                // the engine's extended result code
  std::string ErrorDescription() const;                 // the engine's general text for that code
  int openErrorCode() const { return openErrorCode_; }  // result code of a failed Open

 private:
  sqlite3* db_ = nullptr;
  int openErrorCode_ = 0;
};

class SqliteStatement {
 public:
  SqliteStatement() = default;
  ~SqliteStatement() { Finalize(); }
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  // Parameters are numbered from 1. A missing optional binds NULL.
  void BindText(int index, std::string_view value);
  // Binds without copying. REQUIRES: `value` stays unchanged until the next Step or Reset.
  void BindTextNoCopy(int index, std::string_view value);
  void BindInt(int index, int64_t value);
  void BindDouble(int index, double value);
  void BindDouble(int index, const std::optional<double>& value);
  void BindNull(int index);

  // Steps once: true with a row, false when done or failed (see status()).
  bool Step();
  // Steps a statement without rows; the Status of the step.
  Status Run();
  void Reset();  // ready to run again, bindings cleared

  int ColumnCount() const;
  std::string ColumnName(int column) const;
  bool ColumnIsNull(int column) const;
  std::string ColumnText(int column) const;
  int64_t ColumnInt(int column) const;
  double ColumnDouble(int column) const;
  std::optional<double> ColumnOptionalDouble(int column) const;

  const Status& status() const { return status_; }

 private:
  friend class SqliteDb;
  void Finalize();

  sqlite3_stmt* stmt_ = nullptr;
  sqlite3* db_ = nullptr;
  Status status_;
};

}  // namespace tavlorin
