#include "logbook/sqlite_db.h"

#include <sqlite3.h>

namespace tavlorin {

Status SqliteDb::Open(const std::string& path, OpenMode mode) {
  Close();
  openErrorCode_ = 0;
  int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
  if (mode == OpenMode::kCreate) {
    flags |= SQLITE_OPEN_CREATE;
  }
  int rc = sqlite3_open_v2(path.c_str(), &db_, flags, nullptr);
  if (rc != SQLITE_OK) {
    std::string text = db_ != nullptr ? sqlite3_errmsg(db_) : sqlite3_errstr(rc);
    openErrorCode_ = rc;
    Close();
    return Status::Error(text);
  }
  sqlite3_extended_result_codes(db_, 1);
  sqlite3_busy_timeout(db_, 5000);
  // Reading the schema proves the file is a database before anything is written to it.
  Status s = Exec("SELECT count(*) FROM sqlite_master");
  if (s.ok() && sqlite3_db_readonly(db_, "main") == 1) {
    s = Status::Error("the file is read-only");
  }
  if (s.ok()) {
    s = Exec("PRAGMA journal_mode=DELETE; PRAGMA synchronous=FULL; PRAGMA foreign_keys=OFF");
  }
  if (!s.ok()) {
    openErrorCode_ = ErrorCode() != 0 ? ErrorCode() : SQLITE_READONLY;
    Close();
  }
  return s;
}

void SqliteDb::Close() {
  if (db_ != nullptr) {
    sqlite3_close_v2(db_);
    db_ = nullptr;
  }
}

Status SqliteDb::Exec(const std::string& sql) {
  char* error = nullptr;
  int rc = sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &error);
  if (rc == SQLITE_OK) {
    return Status::Ok();
  }
  std::string text = error != nullptr ? error : sqlite3_errstr(rc);
  sqlite3_free(error);
  return Status::Error(text);
}

Status SqliteDb::Prepare(const std::string& sql, SqliteStatement* statement) {
  statement->Finalize();
  statement->db_ = db_;
  statement->status_ = Status::Ok();
  if (sqlite3_prepare_v2(db_, sql.c_str(), static_cast<int>(sql.size()), &statement->stmt_,
                         nullptr) != SQLITE_OK) {
    statement->status_ = Status::Error(sqlite3_errmsg(db_));
    return statement->status_;
  }
  return Status::Ok();
}

void SqliteDb::Rollback() {
  if (db_ != nullptr && sqlite3_get_autocommit(db_) == 0) {
    sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

int64_t SqliteDb::LastInsertRowId() const { return sqlite3_last_insert_rowid(db_); }
int SqliteDb::Changes() const { return sqlite3_changes(db_); }
std::string SqliteDb::ErrorText() const { return db_ != nullptr ? sqlite3_errmsg(db_) : ""; }
std::string SqliteDb::ErrorDescription() const { return sqlite3_errstr(ErrorCode()); }
int SqliteDb::ErrorCode() const { return db_ != nullptr ? sqlite3_extended_errcode(db_) : 0; }

void SqliteStatement::Finalize() {
  if (stmt_ != nullptr) {
    sqlite3_finalize(stmt_);
    stmt_ = nullptr;
  }
}

void SqliteStatement::BindText(int index, std::string_view value) {
  sqlite3_bind_text(stmt_, index, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
}
void SqliteStatement::BindTextNoCopy(int index, std::string_view value) {
  sqlite3_bind_text(stmt_, index, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
}
void SqliteStatement::BindInt(int index, int64_t value) { sqlite3_bind_int64(stmt_, index, value); }
void SqliteStatement::BindDouble(int index, double value) {
  sqlite3_bind_double(stmt_, index, value);
}
void SqliteStatement::BindDouble(int index, const std::optional<double>& value) {
  if (value) {
    sqlite3_bind_double(stmt_, index, *value);
  } else {
    sqlite3_bind_null(stmt_, index);
  }
}
void SqliteStatement::BindNull(int index) { sqlite3_bind_null(stmt_, index); }

bool SqliteStatement::Step() {
  if (stmt_ == nullptr) {
    return false;
  }
  int rc = sqlite3_step(stmt_);
  if (rc == SQLITE_ROW) {
    return true;
  }
  if (rc != SQLITE_DONE) {
    status_ = Status::Error(sqlite3_errmsg(db_));
  }
  return false;
}

Status SqliteStatement::Run() {
  if (stmt_ == nullptr) {
    return status_;
  }
  Step();
  return status_;
}

void SqliteStatement::Reset() {
  sqlite3_reset(stmt_);
  sqlite3_clear_bindings(stmt_);
  status_ = Status::Ok();
}

int SqliteStatement::ColumnCount() const { return sqlite3_column_count(stmt_); }
std::string SqliteStatement::ColumnName(int column) const {
  const char* name = sqlite3_column_name(stmt_, column);
  return name != nullptr ? name : "";
}
bool SqliteStatement::ColumnIsNull(int column) const {
  return sqlite3_column_type(stmt_, column) == SQLITE_NULL;
}
std::string SqliteStatement::ColumnText(int column) const {
  const unsigned char* text = sqlite3_column_text(stmt_, column);
  if (text == nullptr) {
    return {};
  }
  return std::string(reinterpret_cast<const char*>(text),
                     static_cast<size_t>(sqlite3_column_bytes(stmt_, column)));
}
int64_t SqliteStatement::ColumnInt(int column) const { return sqlite3_column_int64(stmt_, column); }
double SqliteStatement::ColumnDouble(int column) const {
  return sqlite3_column_double(stmt_, column);
}
std::optional<double> SqliteStatement::ColumnOptionalDouble(int column) const {
  if (ColumnIsNull(column)) {
    return std::nullopt;
  }
  return sqlite3_column_double(stmt_, column);
}

}  // namespace tavlorin
