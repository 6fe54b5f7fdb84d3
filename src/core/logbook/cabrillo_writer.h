// The Cabrillo writer: a contest log's header lines and its fixed-column "QSO:" lines, in
// version 2.0 (one CATEGORY: line) or 3.0 (CATEGORY-OPERATOR:, CATEGORY-BAND:, ... and band
// designators such as 144 or 1.2G from 50 MHz up).
//
// A QSO line is laid out by a column template: for each column the line is padded with blanks
// to the column's start and the field's text appended; a text longer than its column is cut to
// the width, so the columns stay aligned. Lines end with CR LF, as contest robots expect.
// Pure functions; any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "logbook/logbook_records.h"

namespace tavlorin {

// One column: the field code, the 1-based column where the field starts, its width.
struct CabrilloColumn {
  int code;  // 0 kHz, 1 mode, 2 date, 3 time, 4 own call, 5/6 sent RST/exchange,
             // 8 call, 9/10 received RST/exchange, 12 transmitter number
  int start;
  int width;
};

struct CabrilloTemplate {
  const char* name;
  std::span<const CabrilloColumn> columns;
};

inline constexpr const char* kCabrilloStandardTemplate = "ARRL, CQ, Stew Perry, Oceania, AP Sprint";
inline constexpr const char* kCabrilloMultiTwoTemplate =
    "ARRL, CQ, Stew Perry, Oceania, AP Sprint (Multi-Two)";

// The two templates, standard first.
std::span<const CabrilloTemplate> CabrilloTemplates();
// The template of that name, or nullptr.
const CabrilloTemplate* FindCabrilloTemplate(std::string_view name);

// The header values; each is kept as a setting of the dialog (see cabrillo_export.h).
struct CabrilloHeader {
  int version = 2;  // 2 or 3
  std::string callsign, name, address, club, operators, soapbox, score, iotaIsland;
  bool iota = false;      // write IOTA-ISLAND-NAME
  bool dx = false;        // write CATEGORY-DXPEDITION (3.0: CATEGORY-STATION: EXPEDITION)
  bool time = false;      // write CATEGORY-TIME
  bool modeFromContacts = false;  // the mode of each contact even when the contest names one
  bool offtime = false;           // write OFFTIME: for breaks of an hour or more
  std::string contest, catOperator, catBand, catPower, catMode, catAssisted, catDx, catOverlay,
      catTime, arrlSection;
  std::string createdBy;  // program name and version
};

// "%s cannot be empty" for the first of Callsign, Name and Address that is empty; else "".
std::string CabrilloMissingValue(const CabrilloHeader& header);

// The lines from "START-OF-LOG:" through the SOAPBOX lines (no QSO lines). `contacts` (in log
// order) give the OFFTIME: lines when header.offtime is set.
std::string CabrilloHeaderText(const CabrilloHeader& header,
                               std::span<const CLogbookRecordset> contacts);

// One "QSO:" line (without its line end).
std::string CabrilloQsoLine(const CLogbookRecordset& contact, const CabrilloTemplate& layout,
                            const CabrilloHeader& header);

// The rules behind the columns, for the tests and the dialog's preview:
// the frequency column's text (kHz, or a band designator in 3.0 from 50 MHz up);
std::string CabrilloFrequency(const CLogbookRecordset& contact, int version);
// the mode letters;
std::string CabrilloMode(const CLogbookRecordset& contact, const CabrilloHeader& header);
// a report's RST part and exchange part.
std::pair<std::string, std::string> SplitCabrilloReport(std::string_view report,
                                                        std::string_view mode);

}  // namespace tavlorin
