// Moving CLogbookRecordset values in and out of SQLite statements, by the schema's field names.
// Used by the record operations only. Any thread (no state).
#pragma once

#include <string>
#include <vector>

#include "logbook/logbook_records.h"
#include "logbook/sqlite_db.h"

namespace tavlorin {

// "[Created], [Modified], ..." : every field but PrimaryKey, in schema order.
std::string LogbookColumnList();
// "[Created] = ?, [Modified] = ?, ..." for an update.
std::string LogbookAssignmentList();
// "?, ?, ..." with one mark per column of LogbookColumnList().
std::string LogbookValueMarks();
// Binds every field but PrimaryKey from parameter `first` on; returns the next free index.
// The texts are not copied: `record` must stay unchanged until the statement has run.
int BindLogbookRecord(SqliteStatement& st, const CLogbookRecordset& record, int first = 1);

// The parameter number that BindLogbookRecord (from 1) gives the field `name`.
int LogbookParameterIndex(const char* name);

// Maps the columns of a "SELECT * / Q.*" result to record fields once per statement.
class LogbookRowReader {
 public:
  explicit LogbookRowReader(const SqliteStatement& st);
  void Read(const SqliteStatement& st, CLogbookRecordset* record) const;

 private:
  std::vector<const LogbookField*> fields_;  // nullptr for a column we do not know
};

}  // namespace tavlorin
