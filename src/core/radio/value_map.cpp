#include "radio/value_map.h"

namespace tavlorin {

void ValueMap::LoadLines(std::initializer_list<std::string_view> lines) {
  for (std::string_view line : lines) {
    LoadLine(line);
  }
}

void ValueMap::LoadLine(std::string_view line) {
  if (line.empty() || line[0] == '#') {
    return;
  }
  size_t eq = line.find('=');
  if (eq == std::string_view::npos) {
    return;
  }
  Set(line.substr(0, eq), line.substr(eq + 1));
}

std::string ValueMap::Get(std::string_view key) const {
  auto it = values_.find(key);
  return it == values_.end() ? std::string() : it->second;
}

void ValueMap::Set(std::string_view key, std::string_view value) {
  auto it = values_.find(key);
  if (it == values_.end()) {
    values_.emplace(std::string(key), std::string(value));
  } else {
    it->second.assign(value);
  }
}

}  // namespace tavlorin
