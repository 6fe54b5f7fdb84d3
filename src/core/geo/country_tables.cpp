#include "geo/country_tables.h"

#include <cctype>
#include <charconv>

namespace tavlorin {

unsigned CountryTables::DxccNumber(std::string_view text) {
  unsigned value = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc()) {
    return 0;
  }
  return value;
}

void CountryTables::Clear() {
  active_.clear();
  deleted_.clear();
  nameByDxcc_.clear();
  dxccByName_.clear();
  names_.clear();
}

void CountryTables::Build(const std::vector<CountryRow>& rows, const ClashLog& clashLog) {
  Clear();
  for (const CountryRow& row : rows) {
    const unsigned number = DxccNumber(row.dxcc);
    const std::string dxcc = std::to_string(number);
    nameByDxcc_.emplace(number, row.country);
    dxccByName_.emplace(row.country, number);
    names_.push_back(row.country);

    const bool deleted = row.country.find(kDeletedSuffix) != std::string::npos;
    PrefixMap& map = deleted ? deleted_ : active_;
    std::string_view list = row.prefix;
    size_t start = 0;
    while (start < list.size()) {
      size_t comma = list.find(',', start);
      if (comma == std::string_view::npos) {
        comma = list.size();
      }
      std::string_view entry = list.substr(start, comma - start);
      start = comma + 1;
      if (entry.empty()) {
        continue;
      }
      auto [it, inserted] = map.try_emplace(std::string(entry), dxcc);
      if (!inserted && it->second != dxcc && !deleted && clashLog) {
        clashLog("Country prefix " + std::string(entry) + " allocated to DXCC " + it->second +
                 " and " + dxcc);
      }
    }
  }
}

const std::string* CountryTables::LongestMatch(const PrefixMap& map, std::string_view callsign) {
  for (size_t n = callsign.size(); n >= 1; --n) {
    auto it = map.find(callsign.substr(0, n));
    if (it != map.end()) {
      return &it->second;
    }
  }
  return nullptr;
}

std::string CountryTables::DxccForCallsign(std::string_view callsign) const {
  if (callsign.empty()) {
    return {};
  }
  const std::string* found = LongestMatch(active_, callsign);
  if (found == nullptr) {
    found = LongestMatch(deleted_, callsign);
  }
  return found != nullptr ? *found : std::string();
}

std::string CountryTables::CountryForCallsign(std::string_view callsign, std::string* dxcc) const {
  std::string found = DxccForCallsign(callsign);
  if (dxcc != nullptr) {
    *dxcc = found;
  }
  if (found.empty()) {
    return {};
  }
  return CountryForDxcc(DxccNumber(found));
}

std::string CountryTables::DxccForPrefix(std::string_view prefix) const {
  std::string upper(prefix);
  for (char& c : upper) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  if (auto it = active_.find(upper); it != active_.end()) {
    return it->second;
  }
  if (auto it = deleted_.find(upper); it != deleted_.end()) {
    return it->second;
  }
  return {};
}

std::string CountryTables::CountryForDxcc(unsigned dxcc) const {
  auto it = nameByDxcc_.find(dxcc);
  return it != nameByDxcc_.end() ? it->second : std::string();
}

unsigned CountryTables::DxccForCountry(const std::string& country) const {
  auto it = dxccByName_.find(country);
  return it != dxccByName_.end() ? it->second : 0;
}

}  // namespace tavlorin
