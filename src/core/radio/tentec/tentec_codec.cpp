#include "radio/tentec/tentec_codec.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin {

std::string TenTecFrequencyCommand(int vfo, Frequency hz) {
  char text[16];
  std::snprintf(text, sizeof text, "*%s%08X", vfo == 1 ? "B" : "A", hz);
  return text;
}

std::string TenTecDecimalFrequencyCommand(int vfo, Frequency hz) {
  return std::string(vfo == 1 ? "*BF" : "*AF") + std::to_string(hz);
}

std::string TenTecFrequencyQuery(int vfo) { return vfo == 1 ? "?BF" : "?AF"; }

std::optional<Frequency> ParseTenTecDecimalFrequency(const std::string& value) {
  if (value.empty() || value.size() > 10 ||
      value.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  const unsigned long long hz = std::stoull(value);
  if (hz == 0 || hz > 0xFFFFFFFFull) {
    return std::nullopt;
  }
  return static_cast<Frequency>(hz);
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
