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
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
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

  // Maps record `number`; false when it cannot be stored. Its problems are appended.
  bool Map(std::span<const AdifDocument::Field> fields, size_t number, CLogbookRecordset* contact,
           std::vector<AdifProblem>* problems);

  // One warning per unknown band, mode or QSL value met so far.
  void AppendSummary(std::vector<AdifProblem>* problems) const;

 private:
  struct Pending;
  void Place(const AdifDocument::Field& field, Pending& p, CLogbookRecordset* contact,
             std::vector<AdifProblem>* problems, size_t number);
  bool Finish(Pending& p, size_t number, CLogbookRecordset* contact,
              std::vector<AdifProblem>* problems);
  void Unknown(const std::string& what, const std::string& value, size_t number);
  std::string BandTitle(std::string_view band, size_t number);
  std::string ModeTitle(std::string_view mode, size_t number);

  const AdifReference& reference_;
  AdifImportOptions options_;
  std::map<std::string, int> sizes_;  // column -> characters, for the columns the import fills
  struct Seen {
    size_t count = 0;
    size_t first = 0;
  };
  std::map<std::pair<std::string, std::string>, Seen> unknown_;
};

// Decimal megahertz ("14.07", "7.0745", "10368.1") to hertz, rounded to the nearest hertz; a
// single "," is taken as the decimal point. False for anything else.
bool ParseAdifMegahertz(std::string_view text, uint64_t* hertz);

}  // namespace tavlorin
