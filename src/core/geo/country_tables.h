// CountryTables: the in-memory maps that resolve a callsign to its DXCC entity, built from the
// rows of TBL_COUNTRIES (see countries_file.h).
//
// Two prefix maps (active and deleted entities; prefix or whole callsign -> DXCC text), the
// entity names by DXCC number and back, and the list of names in table order. A callsign
// resolves by its longest leading match in the active map, then in the deleted map; it is
// matched exactly as given (no case change, no special meaning for "/").
//
// Build replaces everything; the look-ups are const and may run on any number of threads once
// building is done. Owned by the logbook database object.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "geo/countries_file.h"

namespace tavlorin {

class CountryTables {
 public:
  // Receives each clash line ("Country prefix %s allocated to DXCC %s and %s").
  using ClashLog = std::function<void(const std::string& line)>;

  void Build(const std::vector<CountryRow>& rows, const ClashLog& clashLog = {});
  void Clear();

  // DXCC number text of the entity, or empty when nothing matches (or the callsign is empty).
  std::string DxccForCallsign(std::string_view callsign) const;
  // The entity's name, or empty; `dxcc` (optional) receives the DXCC text found on the way.
  std::string CountryForCallsign(std::string_view callsign, std::string* dxcc = nullptr) const;
  // The text in capitals, looked up exactly: active map, then deleted map.
  std::string DxccForPrefix(std::string_view prefix) const;
  std::string CountryForDxcc(unsigned dxcc) const;            // empty when unknown
  unsigned DxccForCountry(const std::string& country) const;  // 0 when unknown
  const std::vector<std::string>& CountryNames() const { return names_; }

  size_t activeSize() const { return active_.size(); }
  size_t deletedSize() const { return deleted_.size(); }

  // "007" and "7" are one entity; text that is not a number is 0.
  static unsigned DxccNumber(std::string_view text);

 private:
  struct Hash {
    using is_transparent = void;
    size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };
  using PrefixMap = std::unordered_map<std::string, std::string, Hash, std::equal_to<>>;

  static const std::string* LongestMatch(const PrefixMap& map, std::string_view callsign);

  PrefixMap active_;
  PrefixMap deleted_;
  std::map<unsigned, std::string> nameByDxcc_;
  std::map<std::string, unsigned> dxccByName_;
  std::vector<std::string> names_;
};

}  // namespace tavlorin
