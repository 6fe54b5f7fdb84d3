#include "radio/nrd535/nrd535_driver.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "radio/cat_radio.h"

namespace tavlorin {
namespace {

// The digits right after `letter` in `line` (at most `max`); nullopt when there are none.
std::optional<uint32_t> DigitsAfter(const std::string& line, char letter, size_t max) {
  const size_t at = line.find(letter);
  if (at == std::string::npos) {
    return std::nullopt;
  }
  size_t end = at + 1;
  while (end < line.size() && end - at - 1 < max &&
         std::isdigit(static_cast<unsigned char>(line[end]))) {
    ++end;
  }
  if (end == at + 1) {
    return std::nullopt;
  }
  return static_cast<uint32_t>(
      std::strtoul(line.substr(at + 1, end - at - 1).c_str(), nullptr, 10));
}

// The letters that open a command ("AG" of "AG1"), which its reply repeats.
std::string Letters(const std::string& command) {
  size_t n = 0;
  while (n < command.size() && std::isalpha(static_cast<unsigned char>(command[n]))) {
    ++n;
  }
  return command.substr(0, n);
}

}  // namespace

Nrd535Status ParseNrd535Status(const std::string& line) {
  Nrd535Status status;
  if (std::optional<uint32_t> f = DigitsAfter(line, 'F', 8); f && *f != 0) {
    status.frequency = *f;
  }
  if (std::optional<uint32_t> d = DigitsAfter(line, 'D', 1)) {
    status.mode = static_cast<uint8_t>(*d);
  }
  if (std::optional<uint32_t> b = DigitsAfter(line, 'B', 1)) {
    status.bandwidth = static_cast<uint8_t>(*b);
  }
  return status;
}

void Nrd535Driver::StartUp() {
  lastMode_ = 0;
  line_.Send("H1");
}

std::optional<Nrd535Status> Nrd535Driver::ReadStatus() {
  std::optional<std::string> line = line_.Query("I1", "I");
  if (!line) {
    return std::nullopt;
  }
  return ParseNrd535Status(*line);
}

uint32_t Nrd535Driver::ReadFrequency(Frequency* hz) {
  *hz = 0;
  std::optional<Nrd535Status> status = ReadStatus();
  if (!status || !status->frequency) {
    return 0;
  }
  *hz = *status->frequency;
  if (status->mode) {
    lastMode_ = *status->mode;
  }
  return 1;
}

int Nrd535Driver::SetFrequency(Frequency hz) {
  char text[16];
  std::snprintf(text, sizeof text, "F%-8.8u", hz);
  return line_.Send(text) ? 1 : 0;
}

uint8_t Nrd535Driver::ReadMode() {
  std::optional<Nrd535Status> status = ReadStatus();
  if (status && status->mode) {
    lastMode_ = *status->mode;
  }
  return lastMode_;
}

uint8_t Nrd535Driver::ReadSMeter() {
  std::optional<std::string> line = line_.Query("Y1", "S");
  if (!line) {
    return 0;
  }
  const uint32_t level = static_cast<uint32_t>(std::strtoul(line->c_str(), nullptr, 10));
  return static_cast<uint8_t>(level > 255 ? 255 : level);
}

uint32_t Nrd535Driver::ReadValue(const std::string& command) {
  return static_cast<uint32_t>(std::strtoul(ReadString(command).c_str(), nullptr, 10));
}

int Nrd535Driver::SetValue(const std::string& command) {
  return !command.empty() && line_.Send(command) ? 1 : 0;
}

std::string Nrd535Driver::ReadString(const std::string& command) {
  return line_.Query(command, Letters(command)).value_or(std::string());
}

}  // namespace tavlorin
