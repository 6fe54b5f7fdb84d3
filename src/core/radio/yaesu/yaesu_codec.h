// The Yaesu 5-byte command codec: commands, frequencies both ways and the texts of the per-model
// controls. Pure functions: bytes in, values out; no I/O, no clock. Any thread.
//
// A command is four parameter bytes and an opcode, written here in the order sent:
//   P1 P2 P3 P4 OP      e.g. 01 40 70 00 01 = FT-817 "set frequency 14.070.000"
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "radio/frequency.h"

namespace tavlorin {

using YaesuCommand = std::array<uint8_t, 5>;

inline constexpr YaesuCommand MakeYaesuCommand(uint8_t p1, uint8_t p2, uint8_t p3, uint8_t p4,
                                               uint8_t op) {
  return {p1, p2, p3, p4, op};
}

// The byte order of a frequency in a set command.
enum class YaesuDigitOrder {
  kLeastSignificantFirst,  // FT-600, FT-900, FT-920, FT-990, FT-100, FT-1000 family
  kMostSignificantFirst,   // FT-817, FT-847 and the newer radios
};

// The four parameter bytes of "set frequency": hz / 10 printed as ten decimal digits c0..c9,
// c0 and c1 dropped, the pairs c2c3 .. c8c9 packed as BCD in the given order.
std::array<uint8_t, 4> EncodeYaesuFrequency(Frequency hz, YaesuDigitOrder order);

// Big-endian unsigned value of `count` bytes from `data` (count 1..4).
uint32_t BigEndian(std::span<const uint8_t> data, size_t first, size_t count);

// The frequency of a frequency-and-mode reply (FT-817, FT-847): the first four bytes are packed
// BCD, most significant digit first, in units of 10 Hz. nullopt when a nibble is not decimal.
std::optional<Frequency> DecodeYaesuBcdFrequency(std::span<const uint8_t> reply);

// "00-00-00-00-88": five hexadecimal bytes separated by "-". nullopt unless exactly five tokens
// that are all hexadecimal bytes.
std::optional<YaesuCommand> ParseYaesuCommandText(const std::string& text);

// An FT-817 memory bit command, "I-C-0x0001-08-08": read the byte at the address, replace the
// bits under the mask with those of the value, write it back. The kind "C" counts the address
// from the start of the current VFO's record for its band (byte 1 holds the narrow filter
// bits); any other kind is an absolute memory address.
struct YaesuEepromBits {
  bool currentVfo = false;
  uint16_t address = 0;
  uint8_t mask = 0;
  uint8_t value = 0;
};
// The commands a text stands for: "I-Narrow-On" and "I-Narrow-Off" stand for two each; any
// other "I-" text is one. Empty when the text cannot be read.
std::vector<YaesuEepromBits> ParseYaesuEepromText(const std::string& text);

}  // namespace tavlorin
