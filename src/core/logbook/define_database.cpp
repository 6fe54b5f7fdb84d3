#include "logbook/define_database.h"

#include <cstdio>
#include <filesystem>

#include "logbook/logbook_settings.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

std::string ColumnDefinition(const SchemaField& row, bool inNewTable) {
  std::string def = Quoted(row.field) + " ";
  if (row.primaryKey && (row.attributes & kAttrAutoIncrement) != 0 && inNewTable) {
    return def + "INTEGER PRIMARY KEY AUTOINCREMENT";
  }
  def += DeclaredType(row);
  if (row.required) {
    // SQLite needs a default to add a NOT NULL column to a table that may hold rows; an
    // explicit NULL from a record operation is still refused.
    bool textual = row.type == FieldType::kText || row.type == FieldType::kMemo;
    def += textual ? " NOT NULL DEFAULT ''" : " NOT NULL DEFAULT 0";
  }
  return def;
}

// Indexes that keep the newest-first list and the duplicate check of bulk adds fast.
constexpr const char* kHelperIndexes =
    "CREATE INDEX IF NOT EXISTS \"TBL_LOGBOOK_StartTime\" ON \"TBL_LOGBOOK\" "
    "(\"StartTime\", \"Created\");"
    "CREATE INDEX IF NOT EXISTS \"TBL_LOGBOOK_Station\" ON \"TBL_LOGBOOK\" "
    "(\"Station\", \"StartTime\");"
    "CREATE INDEX IF NOT EXISTS \"TBL_QRZ_QRZCallsign\" ON \"TBL_QRZ\" (\"QRZCallsign\");";

}  // namespace

bool CDefineDatabase::Run() {
  const std::string& path = database_.path();
  Log("Database file: " + path);
  std::error_code ec;
  const bool exists = std::filesystem::exists(path, ec);
  if (verbose_) {
    Log(std::string("Database file exists: ") + (exists ? "yes" : "no"));
  }
  CheckCountryLevel(exists);
  if (!exists && !CreateFile()) {
    return false;
  }
  {
    SqliteDb db;
    if (!database_.Open(&db).ok()) {
      return false;
    }
    Log("Database file opened");
    Log("Checking database structure...");
    if (!CheckStructure(db)) {
      return false;
    }
  }
  Log("Database structure is correct");
  Status filled = database_.FillDefaults();
  Status built = database_.BuildMaps();
  (void)filled;  // each failure was logged where it happened; the file is usable anyway
  (void)built;
  return true;
}

void CDefineDatabase::CheckCountryLevel(bool fileExists) {
  Settings& settings = database_.settings_;
  if (settings.Get(kCountryLevel) == kCurrentCountryLevel) {
    return;
  }
  settings.Set(kCountryLevel, kCurrentCountryLevel);
  if (!fileExists) {
    return;  // a new file gets the current list anyway
  }
  SqliteDb db;
  Status s = db.Open(database_.path(), SqliteDb::OpenMode::kExisting);
  if (s.ok()) {
    s = db.Exec(std::string("DROP TABLE ") + Quoted(kTableCountries));
  }
  if (!s.ok()) {
    Log(std::string("Failed to delete table ") + kTableCountries + ": " + s.message());
  }
}

bool CDefineDatabase::CreateFile() {
  SqliteDb db;
  Status s = db.Open(database_.path(), SqliteDb::OpenMode::kCreate);
  if (s.ok()) {
    db.Close();
    Log("Database file created");
    return true;
  }
  const int code = db.openErrorCode();
  char line[64];
  Log("Error creating database: " + s.message());
  std::snprintf(line, sizeof line, "    Error code .....: %d %08X", code,
                static_cast<unsigned>(code));
  Log(line);
  Log("    Source .........: SQLite");
  Log("    Description ....: " + s.message());
  Log("    Help file ......: ");
  Log("    Help context ...: ");
  return false;
}

Status CDefineDatabase::ReadColumns(SqliteDb& db, const std::string& table,
                                    std::vector<Column>* columns) {
  columns->clear();
  SqliteStatement st;
  Status s = db.Prepare("SELECT name, type, pk FROM pragma_table_info(?)", &st);
  if (!s.ok()) {
    return s;
  }
  st.BindText(1, table);
  while (st.Step()) {
    columns->push_back({st.ColumnText(0), st.ColumnText(1), st.ColumnInt(2) > 0});
  }
  return st.status();
}

bool CDefineDatabase::CheckStructure(SqliteDb& db) {
  Status s = db.Begin();
  if (!s.ok()) {
    Log("Error opening database: " + s.message());
    return false;
  }
  for (const SchemaField& row : LogbookSchema()) {
    if (!CheckRow(db, row)) {
      db.Rollback();
      return false;
    }
  }
  s = db.Exec(kHelperIndexes);
  if (s.ok()) {
    s = db.Commit();
  }
  if (!s.ok()) {
    Log("Error creating index: " + s.message());
    db.Rollback();
    return false;
  }
  return true;
}

bool CDefineDatabase::OpenTable(SqliteDb& db, const std::string& table) {
  if (openedTables_.count(table) != 0) {
    return true;
  }
  openedTables_.insert(table);
  std::vector<Column>& columns = columns_[table];
  Status s = ReadColumns(db, table, &columns);
  if (!s.ok()) {
    Log("Error opening table: " + table + " - " + s.message());
    return false;
  }
  if (columns.empty()) {
    Log("Failed to open table: " + table);
    Log("Creating table: " + table + "...");
    newTables_.insert(table);
  }
  return true;
}

bool CDefineDatabase::CheckRow(SqliteDb& db, const SchemaField& row) {
  const std::string table = row.table;
  if (!OpenTable(db, table)) {
    return false;
  }
  const std::string key = table + "::" + row.field;
  database_.sizes_[key] = row.size;
  database_.types_[key] = row.type;
  if (verbose_) {
    Log(std::string("Opening field: ") + row.field + "...");
  }
  const Column* found = nullptr;
  for (const Column& c : columns_[table]) {
    if (c.name == row.field) {
      found = &c;
    }
  }
  if (found == nullptr) {
    if (!CreateField(db, row)) {
      return false;
    }
  } else if (row.type == FieldType::kText) {
    int size = SizeFromDeclaredType(found->declaredType);
    if (size > 0) {
      database_.sizes_[key] = size;
    }
    DebugLog::Write("Size: %s = %d\n", key.c_str(), database_.sizes_[key]);
  }
  return !row.primaryKey || CheckKey(db, row);
}

bool CDefineDatabase::CreateField(SqliteDb& db, const SchemaField& row) {
  const std::string table = row.table;
  Log(std::string("Failed to open field: ") + row.field);
  Log(std::string("Creating field: ") + row.field + "...");
  const bool createTable = newTables_.count(table) != 0 && createdTables_.count(table) == 0;
  Status s;
  if (createTable) {
    s = db.Exec("CREATE TABLE " + Quoted(table) + " (" + ColumnDefinition(row, true) + ")");
    if (!s.ok()) {
      Log("Error creating table: " + table + " - " + s.message());
      return false;
    }
    createdTables_.insert(table);
    Log("Appending table: " + table);
  } else {
    s = db.Exec("ALTER TABLE " + Quoted(table) + " ADD COLUMN " + ColumnDefinition(row, false));
    if (!s.ok()) {
      Log(std::string("Error creating field: ") + row.field + " - " + s.message());
      return false;
    }
  }
  Status read = ReadColumns(db, table, &columns_[table]);
  if (!read.ok()) {
    Log("Error opening table: " + table + " - " + read.message());
    return false;
  }
  return true;
}

bool CDefineDatabase::CheckKey(SqliteDb& db, const SchemaField& row) {
  const std::string table = row.table;
  int count = 0;
  for (const Column& c : columns_[table]) {
    count += c.primaryKey ? 1 : 0;
  }
  SqliteStatement st;
  Status s = db.Prepare("SELECT count(*) FROM pragma_index_list(?)", &st);
  if (s.ok()) {
    st.BindText(1, table);
    if (st.Step()) {
      count += static_cast<int>(st.ColumnInt(0));
    }
    s = st.status();
  }
  if (!s.ok()) {
    Log("Error getting index count for table: " + table);
    return false;
  }
  DebugLog::Write("Table %s index count %d", table.c_str(), count);
  if (count > 0) {
    return true;
  }
  Log(std::string("Creating primary key: ") + row.keyIndex);
  // Index names are per file in SQLite, and two tables share one key index name.
  s = db.Exec("CREATE UNIQUE INDEX " + Quoted(table + "_" + row.keyIndex) + " ON " + Quoted(table) +
              " (" + Quoted(row.field) + ")");
  if (!s.ok()) {
    Log(std::string("Error creating primary key: ") + row.keyIndex + " - " + s.message());
    return false;
  }
  return true;
}

}  // namespace tavlorin
