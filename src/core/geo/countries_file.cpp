#include "geo/countries_file.h"

namespace tavlorin {
namespace {

std::string_view Trim(std::string_view text) {
  size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) {
    return {};
  }
  size_t last = text.find_last_not_of(" \t");
  return text.substr(first, last - first + 1);
}

std::string WithoutQuotes(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    if (c != '"') {
      out += c;
    }
  }
  return out;
}

}  // namespace

std::vector<std::string> SplitCountryLine(std::string_view line) {
  std::vector<std::string> fields;
  size_t start = 0;
  for (;;) {
    size_t sep = line.find("\",\"", start);
    if (sep == std::string_view::npos) {
      fields.push_back(WithoutQuotes(line.substr(start)));
      return fields;
    }
    fields.push_back(WithoutQuotes(line.substr(start, sep - start)));
    start = sep + 3;
  }
}

std::string KeptPrefixes(std::string_view prefixField) {
  std::string kept;
  size_t start = 0;
  while (start <= prefixField.size()) {
    size_t comma = prefixField.find(',', start);
    if (comma == std::string_view::npos) {
      comma = prefixField.size();
    }
    std::string_view entry = prefixField.substr(start, comma - start);
    start = comma + 1;
    if (entry.find('<') != std::string_view::npos) {
      continue;  // held only until a date that has passed
    }
    size_t from = entry.find('>');
    if (from != std::string_view::npos) {
      entry = entry.substr(0, from);
    }
    entry = Trim(entry);
    if (entry.empty()) {
      continue;
    }
    if (!kept.empty()) {
      kept += ',';
    }
    kept.append(entry);
  }
  return kept;
}

ParsedCountries ParseCountryLines(const std::vector<std::string>& lines) {
  ParsedCountries parsed;
  for (const std::string& line : lines) {
    std::vector<std::string> fields = SplitCountryLine(line);
    if (fields.size() != kCountryFieldCount) {
      continue;
    }
    const bool active = fields[8] == "A";
    CountryRow row;
    row.country = active ? fields[2] : fields[2] + kDeletedSuffix;
    row.dxcc = fields[0];
    row.prefix = KeptPrefixes(fields[10]);
    parsed.rows.push_back(std::move(row));
    ++(active ? parsed.active : parsed.deleted);
  }
  return parsed;
}

}  // namespace tavlorin
