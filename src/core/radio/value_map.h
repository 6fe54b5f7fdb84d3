// ValueMap: the string-keyed values a radio answers from: the demonstration radios' whole
// state, and the last value seen per command for the ASCII families.
//
// Key = command letters ("FA", "AG0", "?A", "freq"); value = the reply text after those letters,
// without the final ";". A missing key reads as "". Owned by the CatRadio; used by one thread
// at a time (the radio worker while polling).
#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <string_view>

namespace tavlorin {

class ValueMap {
 public:
  // Loads a default table: each line is KEY=VALUE; lines without "=" or starting with "#" are
  // skipped; a later line replaces an earlier one with the same key.
  void LoadLines(std::initializer_list<std::string_view> lines);
  void LoadLine(std::string_view line);

  std::string Get(std::string_view key) const;
  bool Has(std::string_view key) const { return values_.find(key) != values_.end(); }
  void Set(std::string_view key, std::string_view value);
  void Clear() { values_.clear(); }
  size_t size() const { return values_.size(); }

 private:
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace tavlorin
