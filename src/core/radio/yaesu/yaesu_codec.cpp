#include "radio/yaesu/yaesu_codec.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin {
namespace {

std::vector<std::string> SplitDash(const std::string& text) {
  std::vector<std::string> parts;
  size_t start = 0;
  while (true) {
    const size_t end = text.find('-', start);
    parts.push_back(text.substr(start, end == std::string::npos ? end : end - start));
    if (end == std::string::npos) {
      return parts;
    }
    start = end + 1;
  }
}

std::optional<uint32_t> ParseHex(const std::string& token, uint32_t max) {
  if (token.empty()) {
    return std::nullopt;
  }
  char* end = nullptr;
  const unsigned long value = std::strtoul(token.c_str(), &end, 16);
  if (*end != '\0' || value > max) {
    return std::nullopt;
  }
  return static_cast<uint32_t>(value);
}

}  // namespace

std::array<uint8_t, 4> EncodeYaesuFrequency(Frequency hz, YaesuDigitOrder order) {
  char c[16];
  std::snprintf(c, sizeof c, "%-10.10u", hz / 10);
  auto pair = [&](int i) { return static_cast<uint8_t>(((c[i] - '0') << 4) | (c[i + 1] - '0')); };
  if (order == YaesuDigitOrder::kLeastSignificantFirst) {
    return {pair(8), pair(6), pair(4), pair(2)};
  }
  return {pair(2), pair(4), pair(6), pair(8)};
}

uint32_t BigEndian(std::span<const uint8_t> data, size_t first, size_t count) {
  uint32_t value = 0;
  for (size_t i = first; i < first + count && i < data.size(); ++i) {
    value = (value << 8) | data[i];
  }
  return value;
}

std::optional<Frequency> DecodeYaesuBcdFrequency(std::span<const uint8_t> reply) {
  if (reply.size() < 4) {
    return std::nullopt;
  }
  uint32_t tens = 0;
  for (size_t i = 0; i < 4; ++i) {
    const uint32_t high = reply[i] >> 4;
    const uint32_t low = reply[i] & 0x0F;
    if (high > 9 || low > 9) {
      return std::nullopt;
    }
    tens = tens * 100 + high * 10 + low;
  }
  return tens * 10;
}

std::optional<YaesuCommand> ParseYaesuCommandText(const std::string& text) {
  std::vector<std::string> tokens = SplitDash(text);
  if (tokens.size() != 5) {
    return std::nullopt;
  }
  YaesuCommand command{};
  for (size_t i = 0; i < 5; ++i) {
    std::optional<uint32_t> b = ParseHex(tokens[i], 0xFF);
    if (!b) {
      return std::nullopt;
    }
    command[i] = static_cast<uint8_t>(*b);
  }
  return command;
}

std::vector<YaesuEepromBits> ParseYaesuEepromText(const std::string& text) {
  if (text == "I-Narrow-On") {
    return {{true, 0x0001, 0x08, 0x08}, {true, 0x0001, 0x10, 0x10}};
  }
  if (text == "I-Narrow-Off") {
    return {{true, 0x0001, 0x08, 0x00}, {true, 0x0001, 0x10, 0x00}};
  }
  // I-<kind>-<address>-<mask>-<value>
  std::vector<std::string> tokens = SplitDash(text);
  if (tokens.size() != 5 || tokens[0] != "I") {
    return {};
  }
  std::string address = tokens[2];
  if (address.rfind("0x", 0) == 0 || address.rfind("0X", 0) == 0) {
    address = address.substr(2);
  }
  std::optional<uint32_t> a = ParseHex(address, 0xFFFF);
  std::optional<uint32_t> m = ParseHex(tokens[3], 0xFF);
  std::optional<uint32_t> v = ParseHex(tokens[4], 0xFF);
  if (!a || !m || !v) {
    return {};
  }
  return {{tokens[1] == "C", static_cast<uint16_t>(*a), static_cast<uint8_t>(*m),
           static_cast<uint8_t>(*v)}};
}

}  // namespace tavlorin
