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

Status LogbookDatabase::ForEachRecord(int limit, const std::string& filter,
                                      const std::string& order,
                                      const std::function<bool(const CLogbookRecordset&)>& each) {
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
  CLogbookRecordset record;
  size_t count = 0;
  while (st.Step()) {
    record = CLogbookRecordset();
    reader.Read(st, &record);
    if (++count % 250 == 0 && sink_) {
      sink_("Read " + std::to_string(count) + " records");
    }
    if (!each(record)) {
      return Status::Ok();
    }
  }
  if (!st.status().ok()) {
    return Fail(std::string("Error reading ") + kTableLogbook + ": " + st.status().message());
  }
  return Status::Ok();
}

Status LogbookDatabase::ListRecords(int limit, const std::string& filter, const std::string& order,
                                    std::vector<CLogbookRecordset>* records) {
  records->clear();
  Status s = ForEachRecord(limit, filter, order, [records](const CLogbookRecordset& record) {
    records->push_back(record);
    return true;
  });
  if (!s.ok()) {
    records->clear();
  }
  return s;
}

}  // namespace tavlorin
