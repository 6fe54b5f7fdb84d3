#include "radio/ascii_line.h"

#include "radio/cat_radio.h"

namespace tavlorin {

bool AsciiLine::Send(const std::string& command) { return radio_.link().Write(command + lineEnd_); }

std::optional<std::string> AsciiLine::ReadLine() {
  char buffer[kMaxLine];
  size_t got = 0;
  radio_.link().ReadUntil(reinterpret_cast<uint8_t*>(buffer), sizeof buffer,
                          static_cast<uint8_t>(replyEnd_), &got);
  if (got == 0 || buffer[got - 1] != replyEnd_) {
    return std::nullopt;
  }
  std::string line(buffer, got - 1);
  while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) {
    line.pop_back();
  }
  while (!line.empty() && (line.front() == '\r' || line.front() == '\n')) {
    line.erase(0, 1);
  }
  return line;
}

std::optional<std::string> AsciiLine::Query(const std::string& command, const std::string& prefix) {
  if (!Send(command)) {
    return std::nullopt;
  }
  for (int i = 0; i <= kMaxSkippedLines; ++i) {
    if (radio_.abort.load() || radio_.link().lost()) {
      return std::nullopt;
    }
    std::optional<std::string> line = ReadLine();
    if (!line) {
      return std::nullopt;
    }
    if (line->compare(0, prefix.size(), prefix) == 0) {
      return line->substr(prefix.size());
    }
  }
  return std::nullopt;
}

}  // namespace tavlorin
