// The ADIF writer: the three export field sets, a contact's fields in the order the export
// writes them, and the tagged-text (".adi") and XML (".adx") forms of a file.
//
// Export is the logbook's own form of its contacts: names in small letters, a length and an
// optional type indicator, empty values left out, one record a line ended by "<EOR>". The
// length counts bytes of UTF-8 (which is the number of characters for ASCII text), the way
// every ADIF reader counts them. Pure functions; any thread.
#pragma once

#include <ctime>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "logbook/logbook_records.h"

namespace tavlorin {

// The export's field choice, stored as "CLogbookExport::m_nField".
enum class AdifFieldSet : int { kAdif20 = 0, kAllFields = 1, kEqsl = 2 };

// The dialog's text of each field set, in the order of their values.
std::span<const char* const> AdifFieldSetTexts();

// The program identifier written as PROGRAMID, and the prefix of its application fields.
inline constexpr const char* kAdifProgramId = "Tavlorin";

// One field as written: name and type in small letters, value as it goes into the file.
struct AdifOutField {
  std::string name;
  std::string type;
  std::string value;
};

// The fields of `contact` in the chosen set, in the export table's order, empty ones left out;
// the "All fields" set ends with the contact's kept extra fields. `comment` is the eQSL set's
// QSLMSG. `out` is reused (its strings keep their storage).
void BuildAdifFields(const CLogbookRecordset& contact, AdifFieldSet set, std::string_view comment,
                     std::vector<AdifOutField>* out);

// FREQ: the display form "14.070.000" (two points) loses its second point: "14.070000".
std::string AdifFrequency(std::string_view stored);

// A QSL flag: every "1" becomes "Y" and every "0" becomes "N".
std::string AdifFlag(std::string_view stored);

// What the header of an export says.
struct AdifHeaderInfo {
  std::string programName;  // "Tavlorin"
  std::string version;      // "0.1.0"
  std::string aboutLine;    // the line under the name (the program's web address)
  std::string created;      // local time, "%d-%b-%Y %H:%M:%S" (see FormatAdifCreated)
  std::string database;     // the logbook file's path
  size_t records = 0;
};

// The header info of this build for `database` and `records`, created at `now`.
AdifHeaderInfo MakeAdifHeaderInfo(const std::string& database, size_t records, std::time_t now);
std::string FormatAdifCreated(std::time_t when);

// The 17 header lines of an ADI export, through the empty line after "<EOH>".
std::string AdiHeader(const AdifHeaderInfo& info);
// Appends one record: the fields joined with blanks, then "<EOR>" and a line end.
void AppendAdiRecord(std::span<const AdifOutField> fields, std::string* out);

// The ADX form: header (through "<RECORDS>"), records, and the closing tags.
std::string AdxHeader(const AdifHeaderInfo& info);
void AppendAdxRecord(std::span<const AdifOutField> fields, std::string* out);
std::string AdxFooter();

}  // namespace tavlorin
