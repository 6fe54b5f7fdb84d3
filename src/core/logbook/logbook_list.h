// CLogbookRecordSetEx: the filtered, ordered list of contacts that the logbook view shows.
//
// Holds the list's limit, filter clause and order clause and forms the query from them; the
// rows are read by LogbookDatabase::ListRecords. A plain value; any thread.
#pragma once

#include <string>

namespace tavlorin {

inline constexpr const char* kDefaultLogbookOrder = "StartTime DESC, Created DESC";

struct CLogbookRecordSetEx {
  int limit = 0;       // rows at most; 0 for all
  std::string filter;  // a whole WHERE clause, or empty
  std::string order;   // an ORDER BY list; empty for newest contact first

  // "SELECT TOP n Q.* FROM TBL_LOGBOOK AS Q <filter> ORDER BY <order>" (no TOP for limit 0).
  std::string Query() const;
};

}  // namespace tavlorin
