#include "radio/yaesu_ascii/yaesu_ascii_codec.h"

#include <cstdio>

namespace tavlorin::yaesu_ascii {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool AllDigits(std::string_view text) {
  for (char c : text) {
    if (!IsDigit(c)) {
      return false;
    }
  }
  return !text.empty();
}

uint64_t Power10(int digits) {
  uint64_t p = 1;
  for (int i = 0; i < digits; ++i) {
    p *= 10;
  }
  return p;
}

// Field widths of the "IF" value around the frequency.
constexpr size_t kMemoryWidth = 3;
constexpr size_t kClarifierWidth = 5;

}  // namespace

std::string FrequencyCommand(std::string_view letters, Frequency hz, int digits) {
  if (digits < 1 || digits > 10 || hz >= Power10(digits)) {
    return {};
  }
  char text[16];
  std::snprintf(text, sizeof text, "%0*u", digits, hz);
  return std::string(letters) + text + kTerminator;
}

std::optional<Frequency> ParseFrequency(std::string_view value, int digits) {
  if (value.size() != static_cast<size_t>(digits) || !AllDigits(value)) {
    return std::nullopt;
  }
  uint64_t hz = 0;
  for (char c : value) {
    hz = hz * 10 + static_cast<uint64_t>(c - '0');
  }
  if (hz > 0xFFFFFFFFu) {
    return std::nullopt;
  }
  return static_cast<Frequency>(hz);
}

char ModeLetter(uint8_t code) {
  if (code >= 1 && code <= 9) {
    return static_cast<char>('0' + code);
  }
  if (code >= 10 && code <= 15) {
    return static_cast<char>('A' + (code - 10));
  }
  return 0;
}

std::optional<uint8_t> ModeCode(char letter) {
  if (letter >= '1' && letter <= '9') {
    return static_cast<uint8_t>(letter - '0');
  }
  if (letter >= 'A' && letter <= 'F') {
    return static_cast<uint8_t>(10 + (letter - 'A'));
  }
  if (letter >= 'a' && letter <= 'f') {
    return static_cast<uint8_t>(10 + (letter - 'a'));
  }
  return std::nullopt;
}

std::string ModeCommand(int receiver, uint8_t code) {
  const char letter = ModeLetter(code);
  if (letter == 0 || receiver < 0 || receiver > 1) {
    return {};
  }
  return std::string("MD") + static_cast<char>('0' + receiver) + letter + kTerminator;
}

std::optional<Status> ParseStatus(std::string_view value, int digits) {
  const size_t width = static_cast<size_t>(digits);
  const size_t modeAt = kMemoryWidth + width + kClarifierWidth + 2;
  if (value.size() < modeAt + 2) {
    return std::nullopt;
  }
  const char sign = value[kMemoryWidth + width];
  if (sign != '+' && sign != '-') {
    return std::nullopt;  // a frequency of another width would put a digit here
  }
  std::optional<Frequency> hz = ParseFrequency(value.substr(kMemoryWidth, width), digits);
  std::optional<uint8_t> mode = ModeCode(value[modeAt]);
  if (!hz || !mode) {
    return std::nullopt;
  }
  Status status;
  status.hz = *hz;
  status.mode = *mode;
  status.memory = value[modeAt + 1] != '0';
  return status;
}

std::optional<std::string> ParseIdentity(std::string_view value) {
  if (value.size() != 4 || !AllDigits(value)) {
    return std::nullopt;
  }
  return std::string(value);
}

std::string TerminatedCommand(std::string_view command) {
  std::string sent(command);
  if (sent.empty() || sent.back() != kTerminator) {
    sent += kTerminator;
  }
  return sent;
}

std::string_view CommandLetters(std::string_view command) {
  while (!command.empty() && command.back() == kTerminator) {
    command.remove_suffix(1);
  }
  return command;
}

bool IsAnswer(std::string_view reply, std::string_view letters) {
  // The letters, at least one character of value, and ";".
  return reply.size() > letters.size() + 1 && reply.substr(0, letters.size()) == letters &&
         reply.back() == kTerminator && reply != kRefusal;
}

std::string ReplyValue(std::string_view reply, std::string_view letters) {
  if (!reply.empty() && reply.back() == kTerminator) {
    reply.remove_suffix(1);
  }
  return reply.size() > letters.size() ? std::string(reply.substr(letters.size())) : std::string();
}

}  // namespace tavlorin::yaesu_ascii
