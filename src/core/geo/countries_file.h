// The countries file: the text form of the DXCC entity list ("TVR Countries.txt"), one entity
// a line in 13 double-quoted, comma-separated fields; lines starting with "#" are comments.
//
// Parsing turns the file into the rows that TBL_COUNTRIES stores: the entity's name (with
// " [deleted]" for a deleted entity), its DXCC number, and its prefix list with expired entries
// ("X < date") dropped and entries valid from a date ("X > date") cut to the prefix.
// Pure functions; any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavlorin {

inline constexpr const char* kDeletedSuffix = " [deleted]";
inline constexpr size_t kCountryFieldCount = 13;

// One entity as stored: Country, DXCC and Prefix of a TBL_COUNTRIES row.
struct CountryRow {
  std::string country;
  std::string dxcc;
  std::string prefix;
};

struct ParsedCountries {
  std::vector<CountryRow> rows;  // in file order
  int active = 0;
  int deleted = 0;
};

// Splits a line at every `","` and at its end, and removes every double quote from each field.
std::vector<std::string> SplitCountryLine(std::string_view line);

// The kept prefix list of field 10, joined with ",".
std::string KeptPrefixes(std::string_view prefixField);

// Every line with exactly 13 fields becomes a row; others are skipped silently.
ParsedCountries ParseCountryLines(const std::vector<std::string>& lines);

}  // namespace tavlorin
