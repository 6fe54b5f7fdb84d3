// The CI-V codec: packed BCD values both ways, the command-text notation of the per-model
// controls, and the decoding of the replies the operations use. Pure functions: bytes in,
// values out; no I/O, no clock. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "radio/civ/civ_frame.h"
#include "radio/frequency.h"

namespace tavlorin {

// Frequencies travel as packed BCD, least significant pair first: 5 bytes up to the 10^9 digit,
// 6 bytes (IC-905, whose bands reach 10 GHz) up to the 10^11 digit, or 4 bytes (IC-735) up to
// the 10^7 digit, the higher digits dropped.
std::vector<uint8_t> EncodeCivFrequency(Frequency hz, int byteCount);
// Decodes `byteCount` bytes from `data` into hertz; nullopt when a nibble is not a decimal
// digit.
std::optional<uint64_t> DecodeCivHertz(const uint8_t* data, int byteCount);
// DecodeCivHertz as a Frequency: also nullopt above 4 294 967 295 Hz (an IC-905 on 5.7 or
// 10 GHz), which the program's frequencies cannot hold.
std::optional<Frequency> DecodeCivFrequency(const uint8_t* data, int byteCount);

// One packed BCD byte (0x47 -> 47); nullopt when a nibble is above 9.
std::optional<uint32_t> DecodeBcdByte(uint8_t byte);
// Other values: packed BCD, most significant pair first (01 28 -> 128), each byte adding two
// digits. nullopt when any nibble is not a decimal digit.
std::optional<uint32_t> DecodeCivValue(const std::vector<uint8_t>& data);
// The value as the payload builder appends it: nothing for all ones (0xFFFFFFFF), one BCD byte
// up to 99, two bytes (thousands and hundreds, then tens and units) above 99.
std::vector<uint8_t> EncodeCivValue(uint32_t value);
inline constexpr uint32_t kCivNoValue = 0xFFFFFFFFu;

// A command of the per-model controls, "1A-05-00-40" or "14-01-00": hexadecimal tokens split at
// "-". Four tokens make a four-byte command; any other count is cut or padded to three, a
// missing or unreadable token reading as 0.
struct CivCommandText {
  uint8_t bytes[4] = {0, 0, 0, 0};
  bool fourBytes = false;

  // The bytes a value read sends: the command alone when sub is 0, command and sub when sub2
  // is 0, otherwise all three; all four for the four-byte form.
  std::vector<uint8_t> ReadPayload() const;
  // The bytes a value write sends: the command, then sub and sub2 each only when not 0; all
  // four for the four-byte form. `value` is appended as EncodeCivValue does.
  std::vector<uint8_t> WritePayload(uint32_t value = kCivNoValue) const;
  // "%02X-%02X-%02X" or "%02X-%02X-%02X-%02X": the key of the value cache.
  std::string Key() const;
};
CivCommandText ParseCivCommandText(const std::string& text);

// The key of a cached reply: "%02X", "%02X-%02X", ... for 1 to 4 payload bytes.
std::string CivCacheKey(const std::vector<uint8_t>& payload);

// The S-meter reply to 15 02: FE FE E0 ra 15 02 0h ll FD gives h x 100 + ll; a one-byte reply
// FE FE E0 ra 15 02 vv FD gives vv. nullopt for any other shape.
std::optional<uint32_t> DecodeCivSMeter(const CivFrame& reply);

// The value of a read reply: the BCD data bytes after the `sentCount` bytes that were sent
// (command and sub-commands), up to 0xFD. nullopt when the reply is too short or not BCD.
std::optional<uint32_t> DecodeCivReadValue(const CivFrame& reply, size_t sentCount);

}  // namespace tavlorin
