#include "support/hex_bytes.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin::testing {

std::vector<uint8_t> HexVector(std::string_view hex) {
  std::vector<uint8_t> out;
  std::string token;
  for (size_t i = 0; i <= hex.size(); ++i) {
    if (i == hex.size() || hex[i] == ' ') {
      if (!token.empty()) {
        out.push_back(static_cast<uint8_t>(std::strtoul(token.c_str(), nullptr, 16)));
        token.clear();
      }
    } else {
      token += hex[i];
    }
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
    std::snprintf(pair, sizeof pair, "%02X", b);
    if (!text.empty()) {
      text += ' ';
    }
    text += pair;
  }
  return text;
}

std::string ToHex(std::string_view bytes) {
  return ToHex(std::vector<uint8_t>(bytes.begin(), bytes.end()));
}

}  // namespace tavlorin::testing
