#include "radio/kenwood/kenwood_codec.h"

#include <cstdio>

namespace tavlorin::kenwood {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// The two characters right after the command letters.
std::string_view AfterLetters(std::string_view reply, std::string_view letters) {
  return reply.size() > letters.size() ? reply.substr(letters.size(), 2) : std::string_view();
}

}  // namespace

std::string_view CommandLetters(std::string_view command) {
  while (!command.empty() && command.back() == kTerminator) {
    command.remove_suffix(1);
  }
  return command;
}

std::string TerminatedCommand(std::string_view command) {
  std::string sent(command.substr(0, kMaxCommandLength));
  if (sent.empty() || sent.back() != kTerminator) {
    if (sent.size() == kMaxCommandLength) {
      sent.back() = kTerminator;
    } else {
      sent += kTerminator;
    }
  }
  return sent;
}

std::string FrequencyDigits(Frequency hz) {
  char text[16];
  std::snprintf(text, sizeof text, "%*.*u", 11, 11, hz);
  return text;
}

std::string FrequencyCommand(std::string_view letters, Frequency hz) {
  return std::string(letters) + FrequencyDigits(hz) + kTerminator;
}

std::string ModeCommand(uint8_t mode) {
  char text[8];
  std::snprintf(text, sizeof text, "MD%*.*u;", 1, 1, static_cast<unsigned>(mode % 10));
  return text;
}

std::string ModeCommand(std::string_view command, uint8_t mode, bool letters) {
  const char digit = letters && mode >= 10 && mode <= 15
                         ? static_cast<char>('A' + (mode - 10))
                         : static_cast<char>('0' + mode % 10);
  return std::string(command) + digit + kTerminator;
}

uint8_t ParseMode(std::string_view value, bool letters) {
  if (letters && !value.empty() && value[0] >= 'A' && value[0] <= 'F') {
    return static_cast<uint8_t>(10 + (value[0] - 'A'));
  }
  return static_cast<uint8_t>(ParseValue(value));
}

uint32_t ParseValue(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && text[i] == '0') {
    ++i;
  }
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) {
    ++i;
  }
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
    negative = text[i] == '-';
    ++i;
  }
  uint32_t value = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i) {
    value = value * 10u + static_cast<uint32_t>(text[i] - '0');
  }
  return negative ? 0u - value : value;
}

bool HasErrorMark(std::string_view reply, std::string_view letters, std::string_view error) {
  return StartsWith(reply, error) || AfterLetters(reply, letters) == error;
}

bool IsFrequencyCommand(std::string_view letters) { return letters == "FA" || letters == "FB"; }

bool IsFrequencyReplyShape(std::string_view reply) {
  if (reply.size() < 14 || reply[13] != kTerminator) {
    return false;
  }
  for (size_t i = 2; i <= 12; ++i) {
    if (!IsDigit(reply[i])) {
      return false;
    }
  }
  return true;
}

std::string ReplyValue(std::string_view reply, std::string_view letters) {
  if (!reply.empty() && reply.back() == kTerminator) {
    reply.remove_suffix(1);
  }
  return reply.size() > letters.size() ? std::string(reply.substr(letters.size())) : std::string();
}

KenwoodReplyVerdict JudgeKenwoodReply(std::string_view reply, std::string_view letters) {
  const bool frequency = IsFrequencyCommand(letters);
  if (HasErrorMark(reply, letters, "?;")) {
    // A busy radio refuses a frequency read now and then while it still sends the answer to an
    // earlier one: keep reading instead of giving up.
    return frequency ? KenwoodReplyVerdict::kSkip : KenwoodReplyVerdict::kEndSearch;
  }
  if (HasErrorMark(reply, letters, "E;") || HasErrorMark(reply, letters, "O;")) {
    return KenwoodReplyVerdict::kSkip;
  }
  if (!StartsWith(reply, letters)) {
    return KenwoodReplyVerdict::kSkip;  // auto-information or a late reply to another command
  }
  if (frequency && !IsFrequencyReplyShape(reply)) {
    return KenwoodReplyVerdict::kSkip;
  }
  return KenwoodReplyVerdict::kEndSearch;
}

bool IsRefusal(std::string_view candidate, std::string_view letters) {
  return HasErrorMark(candidate, letters, "?;");
}

bool IsKenwoodAnswer(std::string_view candidate, std::string_view letters) {
  if (!StartsWith(candidate, letters)) {
    return false;
  }
  std::string_view after = AfterLetters(candidate, letters);
  return after != "E;" && after != "O;";
}

bool IsElecraftAnswer(std::string_view reply, std::string_view letters) {
  return StartsWith(reply, letters) && AfterLetters(reply, letters) != "?;";
}

uint8_t ElecraftMeterValue(uint32_t bargraph) {
  return static_cast<uint8_t>(bargraph >= 12 ? bargraph - 12 : bargraph);
}

}  // namespace tavlorin::kenwood
