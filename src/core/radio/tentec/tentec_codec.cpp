#include "radio/tentec/tentec_codec.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin {

std::string TenTecFrequencyCommand(int vfo, Frequency hz) {
  char text[16];
  std::snprintf(text, sizeof text, "*%s%08X", vfo == 1 ? "B" : "A", hz);
  return text;
}

std::optional<Frequency> ParseTenTecFrequency(const std::string& value) {
  if (value.empty() || value.size() > 8) {
    return std::nullopt;
  }
  char* end = nullptr;
  const unsigned long hz = std::strtoul(value.c_str(), &end, 16);
  if (*end != '\0' || value[0] == '-' || value[0] == '+' || value[0] == ' ') {
    return std::nullopt;
  }
  return static_cast<Frequency>(hz);
}

std::optional<int32_t> ParseTenTecNumber(const std::string& value) {
  if (value.empty() || value[0] == ' ') {
    return std::nullopt;
  }
  char* end = nullptr;
  const long decimal = std::strtol(value.c_str(), &end, 10);
  if (*end == '\0') {
    return static_cast<int32_t>(decimal);
  }
  const unsigned long hex = std::strtoul(value.c_str(), &end, 16);
  if (*end == '\0' && value[0] != '-' && value[0] != '+') {
    return static_cast<int32_t>(hex);
  }
  return std::nullopt;
}

uint8_t ParseTenTecSMeter(const std::string& value) {
  if (value.rfind("RM", 0) == 0) {
    const long level = std::strtol(value.c_str() + 2, nullptr, 10);
    return static_cast<uint8_t>(level < 0 ? 0 : (level > 255 ? 255 : level));
  }
  if (value.size() < 2) {
    return 0;
  }
  char* end = nullptr;
  const std::string pair = value.substr(0, 2);
  const unsigned long level = std::strtoul(pair.c_str(), &end, 16);
  return *end == '\0' ? static_cast<uint8_t>(level) : 0;
}

std::string TenTecQueryForm(const std::string& command) {
  if (!command.empty() && (command[0] == '?' || command[0] == '*')) {
    return "?" + command.substr(1);
  }
  return "?" + command;
}

}  // namespace tavlorin
