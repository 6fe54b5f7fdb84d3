#include "support/hex_bytes.h"

#include <cstdio>
#include <sstream>

namespace tavlorin::testing {

std::vector<uint8_t> HexVector(std::string_view hex) {
  std::vector<uint8_t> out;
  std::istringstream in{std::string(hex)};
  for (unsigned byte = 0; in >> std::hex >> byte;) {
    out.push_back(static_cast<uint8_t>(byte));
  }
  return out;
}

std::string HexBytes(std::string_view hex) {
  std::vector<uint8_t> v = HexVector(hex);
  return std::string(v.begin(), v.end());
}

std::string ToHex(const std::vector<uint8_t>& bytes) {
  std::string text;
  char pair[4];
  for (uint8_t b : bytes) {
    std::snprintf(pair, sizeof pair, text.empty() ? "%02X" : " %02X", b);
    text += pair;
  }
  return text;
}

std::string ToHex(std::string_view bytes) {
  return ToHex(std::vector<uint8_t>(bytes.begin(), bytes.end()));
}

}  // namespace tavlorin::testing
