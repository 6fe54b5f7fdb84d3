// Helpers shared by the spot parsers.
#include "spots/spot.h"
#include "spots/spot_parsers.h"

namespace tavlorin {

std::vector<std::string> SplitBodyLines(std::string_view body) {
  std::vector<std::string> lines;
  while (!body.empty()) {
    size_t end = body.find('\n');
    std::string_view line = body.substr(0, end);
    if (!line.empty() && line.back() == '\r') {
      line.remove_suffix(1);
    }
    lines.emplace_back(line);
    if (end == std::string_view::npos) {
      break;
    }
    body.remove_prefix(end + 1);
  }
  return lines;
}

std::string TrimText(std::string_view text) {
  constexpr const char* kSpace = " \t\r\n";
  size_t first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) {
    return {};
  }
  return std::string(text.substr(first, text.find_last_not_of(kSpace) - first + 1));
}

std::vector<std::string> SplitSpotFields(std::string_view line, char separator, size_t count) {
  std::vector<std::string> fields;
  while (fields.size() + 1 < count) {
    size_t at = line.find(separator);
    if (at == std::string_view::npos) {
      break;
    }
    fields.push_back(TrimText(line.substr(0, at)));
    line.remove_prefix(at + 1);
  }
  fields.push_back(TrimText(line.substr(0, line.find(separator))));
  fields.resize(count);
  return fields;
}

std::string DisplayComment(const Spot& spot) {
  return spot.country.empty() ? spot.comment : spot.country + ": " + spot.comment;
}

}  // namespace tavlorin
