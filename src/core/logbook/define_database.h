// CDefineDatabase: the definer of the logbook file's structure, run by LogbookDatabase::Define.
//
// It logs "Database file: %s", refreshes TBL_COUNTRIES when the built-in country data has a
// new level, creates a missing file, then walks the 62 schema rows: a missing table or field
// is created (never an error by itself), the size of every existing Text field is read from
// the file into the size map (so an older, narrower field keeps its width), and a key table
// without any index gets its primary key. The structure work is one transaction. Then the
// empty reference tables are filled and the maps are built.
//
// Lives for one Define call on the caller's thread. REQUIRES: the database outlives it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "logbook/logbook_database.h"

namespace tavlorin {

class CDefineDatabase {
 public:
  CDefineDatabase(LogbookDatabase& database, bool verbose)
      : database_(database), verbose_(verbose) {}

  bool Run();

 private:
  struct Column {
    std::string name;
    std::string declaredType;
    bool primaryKey = false;
  };

  void Log(const std::string& line) { database_.Log(line); }
  void CheckCountryLevel(bool fileExists);
  bool CreateFile();
  bool CheckStructure(SqliteDb& db);
  bool CheckRow(SqliteDb& db, const SchemaField& row);
  bool OpenTable(SqliteDb& db, const std::string& table);
  bool CreateField(SqliteDb& db, const SchemaField& row);
  bool CheckKey(SqliteDb& db, const SchemaField& row);
  Status ReadColumns(SqliteDb& db, const std::string& table, std::vector<Column>* columns);

  LogbookDatabase& database_;
  bool verbose_;
  std::set<std::string> openedTables_;
  std::set<std::string> newTables_;      // missing at the start of this run
  std::set<std::string> createdTables_;  // new tables already created in the file
  std::map<std::string, std::vector<Column>> columns_;
};

}  // namespace tavlorin
