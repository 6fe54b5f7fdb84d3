#include "logbook/adif_extra_fields.h"

#include "logbook/adif_text.h"

namespace tavlorin {

void AppendExtraField(std::string* extras, std::string_view name, std::string_view type,
                      std::string_view value) {
  if (value.empty()) {
    return;
  }
  if (!extras->empty()) {
    extras->push_back(' ');
  }
  extras->push_back('<');
  extras->append(LowerAscii(name));
  extras->push_back(':');
  extras->append(std::to_string(value.size()));
  if (!type.empty()) {
    extras->push_back(':');
    extras->append(LowerAscii(type));
  }
  extras->push_back('>');
  extras->append(value);
}

void ForEachExtraField(
    std::string_view s,
    const std::function<void(std::string_view, std::string_view, std::string_view)>& each) {
  size_t at = 0;
  while ((at = s.find('<', at)) != std::string_view::npos) {
    const size_t colon = s.find(':', at);
    const size_t close = s.find('>', at);
    if (colon == std::string_view::npos || close == std::string_view::npos || colon > close) {
      ++at;
      continue;
    }
    const std::string_view name = s.substr(at + 1, colon - at - 1);
    std::string_view lengthText = s.substr(colon + 1, close - colon - 1);
    std::string_view type;
    if (size_t second = lengthText.find(':'); second != std::string_view::npos) {
      type = lengthText.substr(second + 1);
      lengthText = lengthText.substr(0, second);
    }
    size_t length = 0;
    bool number = !lengthText.empty() && lengthText.size() < 10;
    for (char c : lengthText) {
      number = number && c >= '0' && c <= '9';
      length = length * 10 + static_cast<size_t>(c - '0');
    }
    if (!number || name.empty() || close + 1 + length > s.size()) {
      ++at;
      continue;
    }
    each(name, type, s.substr(close + 1, length));
    at = close + 1 + length;
  }
}

std::string_view FindExtraField(std::string_view extras, std::string_view name) {
  std::string_view found;
  bool done = false;
  ForEachExtraField(extras, [&](std::string_view n, std::string_view, std::string_view value) {
    if (!done && n == name) {
      found = value;
      done = true;
    }
  });
  return found;
}

}  // namespace tavlorin
