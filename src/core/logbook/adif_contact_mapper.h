// AdifContactMapper: turns the fields of one ADIF record into a logbook contact, by the
// import's field table, with the logbook's bands, modes and countries at hand.
//
// What has a column goes into it in the logbook's own form: QSO_DATE with TIME_ON is StartTime,
// band and mode names become the logbook's titles, FREQ becomes the display text
// ("14.070.000"), the QSL flags Y and N become "1" and "0". Everything else, and every value
// that its column cannot hold (too long, not a date), is kept whole in ExtraFields, so nothing
// of the file is lost. A record is refused (an error) only when it has no CALL or no usable
// start: QSO_DATE missing or not a date, TIME_ON not a time.
//
// Unknown enumeration values are stored as written and reported once per value (with the
// count and the first record). Not thread-safe (it collects those reports); one per import.
// REQUIRES: the fields it maps come from one document, alive while the mapper is (it
// remembers field names by where the document keeps them).
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "geo/country_tables.h"
#include "logbook/adif_document.h"
#include "logbook/logbook_records.h"

namespace tavlorin {

struct AdifImportOptions {
  bool autoBand = false;  // "CLogbookImport::m_bAutoBand": band from FREQ when there is none
  bool autoDxcc = false;  // "CLogbookImport::m_bAutoDXCC": DXCC from CALL when there is none
};

// The logbook's reference data that the mapping reads.
struct AdifReference {
  std::vector<CBandsRecordSet> bands;  // key order
  std::vector<CModesRecordSet> modes;
  const CountryTables* countries = nullptr;  // REQUIRES: outlives the mapper
  std::map<std::string, int> fieldSizes;     // "TBL_LOGBOOK::Name" -> characters
};

class AdifContactMapper {
 public:
  AdifContactMapper(const AdifReference& reference, AdifImportOptions options);
  ~AdifContactMapper();

  // Maps record `number`; false when it cannot be stored. Its problems are appended.
  bool Map(std::span<const AdifDocument::Field> fields, size_t number, CLogbookRecordset* contact,
           std::vector<AdifProblem>* problems);

  // One warning per unknown band, mode or QSL value met so far.
  void AppendSummary(std::vector<AdifProblem>* problems) const;

 // One row of the import's field table (defined with the table).
  struct Target;

 private:
  struct Pending;
  // A value of an enumeration as the logbook stores it, and how often an unknown one came.
  struct Resolved {
    std::string stored;
    bool known = false;
    size_t count = 0;
    size_t first = 0;
  };
  struct Hash {
    using is_transparent = void;
    size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };
  using Resolutions = std::unordered_map<std::string, Resolved, Hash, std::equal_to<>>;
  struct Known {
    const Target* target = nullptr;  // nullptr: no column, kept as an extra field
    size_t size = 0;                 // the column's size in characters; 0: no limit
  };

  void Place(const AdifDocument::Field& field, CLogbookRecordset* contact,
             std::vector<AdifProblem>* problems, size_t number);
  bool Finish(size_t number, CLogbookRecordset* contact, std::vector<AdifProblem>* problems);
  const Known& TargetOf(std::string_view name);
  const std::string& Resolve(Resolutions& cache, std::string_view value, size_t number,
                             bool band);
  void Unknown(Resolutions& cache, const std::string& value, size_t number);

  const AdifReference& reference_;
  AdifImportOptions options_;
  std::map<std::string, int> sizes_;  // column -> characters, for the columns the import fills
  std::unique_ptr<Pending> pending_;  // one record's state, kept to reuse its storage
  std::unordered_map<const char*, Known> targets_;  // by where the document keeps the name
  Resolutions bands_, modes_;
  std::map<std::string, Resolutions> flags_;  // QSL flag values, by field name in capitals
};

// Empties `contact` but keeps its strings' storage (the importer's loop).
void ClearContact(CLogbookRecordset* contact);

// Decimal megahertz ("14.07", "7.0745", "10368.1") to hertz, rounded to the nearest hertz; a
// single "," is taken as the decimal point. False for anything else.
bool ParseAdifMegahertz(std::string_view text, uint64_t* hertz);

}  // namespace tavlorin
