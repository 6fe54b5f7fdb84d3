// Hex helpers for protocol tests: "FE FE E0 5C FB FD" <-> bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavlorin::testing {

// Parses blank-separated hexadecimal pairs into a byte string.
std::string HexBytes(std::string_view hex);
std::vector<uint8_t> HexVector(std::string_view hex);
// The reverse: "FE FE E0 ..." (upper case, one blank between pairs).
std::string ToHex(std::string_view bytes);
std::string ToHex(const std::vector<uint8_t>& bytes);

}  // namespace tavlorin::testing
