#include "logbook/logbook_list.h"

#include <cstdio>

#include "logbook/logbook_database.h"
#include "logbook/logbook_row_io.h"

namespace tavlorin {

std::string CLogbookRecordSetEx::Query() const {
  const std::string top = limit > 0 ? "TOP " + std::to_string(limit) : std::string();
  const std::string& by = order.empty() ? std::string(kDefaultLogbookOrder) : order;
  return "SELECT " + top + " Q.* FROM " + kTableLogbook + " AS Q " + filter + " ORDER BY " + by;
}

Status LogbookDatabase::ListRecords(int limit, const std::string& filter, const std::string& order,
                                    std::vector<CLogbookRecordset>* records) {
  records->clear();
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  CLogbookRecordSetEx list{limit, filter, order};
  SqliteStatement st;
  s = PrepareJet(db, list.Query(), &st);
  if (!s.ok()) {
    return Fail(std::string("Error reading ") + kTableLogbook + ": " + s.message());
  }
  LogbookRowReader reader(st);
  while (st.Step()) {
    records->emplace_back();
    reader.Read(st, &records->back());
    if (records->size() % 250 == 0 && sink_) {
      sink_("Read " + std::to_string(records->size()) + " records");
    }
  }
  if (!st.status().ok()) {
    records->clear();
    return Fail(std::string("Error reading ") + kTableLogbook + ": " + st.status().message());
  }
  return Status::Ok();
}

}  // namespace tavlorin
