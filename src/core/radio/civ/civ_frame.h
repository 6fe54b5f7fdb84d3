// CivFrame: one CI-V frame as it travels on the bus, and the wire constants of the family.
//
//   +------+------+------+--------+---------+---------------------+------+
//   | 0xFE | 0xFE | to   | from   | command | sub-command / data  | 0xFD |
//   +------+------+------+--------+---------+---------------------+------+
//      0      1      2       3        4          5 ...                last
//
// Replies go to the computer (0xE0); transceive broadcasts go to 0x00. A set command is answered
// by FE FE E0 <radio> FB FD (acknowledge) or ... FA FD (refusal).
//
// A plain value type: copy it freely; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tavlorin {

inline constexpr uint8_t kCivPreamble = 0xFE;
inline constexpr uint8_t kCivEnd = 0xFD;
inline constexpr uint8_t kCivAck = 0xFB;
inline constexpr uint8_t kCivRefusal = 0xFA;
inline constexpr uint8_t kCivBroadcastAddress = 0x00;
inline constexpr uint8_t kCivControllerAddress = 0xE0;
// The shortest whole frame: FE FE to from FB FD.
inline constexpr size_t kCivMinFrame = 6;
// The longest frame we assemble before giving up on it as line noise.
inline constexpr size_t kCivMaxFrame = 256;

// CI-V commands the drivers use.
inline constexpr uint8_t kCivTransceiveFrequency = 0x00;
inline constexpr uint8_t kCivTransceiveMode = 0x01;
inline constexpr uint8_t kCivReadFrequency = 0x03;
inline constexpr uint8_t kCivReadMode = 0x04;
inline constexpr uint8_t kCivSetFrequency = 0x05;
inline constexpr uint8_t kCivSetMode = 0x06;
inline constexpr uint8_t kCivReadMeter = 0x15;
inline constexpr uint8_t kCivSMeterSub = 0x02;
inline constexpr uint8_t kCivIdentification = 0x19;
inline constexpr uint8_t kCivAnySub = 0xFF;

struct CivFrame {
  std::vector<uint8_t> bytes;  // the whole frame, preamble to 0xFD

  size_t size() const { return bytes.size(); }
  // True for a frame that has its preamble, both addresses, a command and the end byte.
  bool complete() const {
    return bytes.size() >= kCivMinFrame && bytes[0] == kCivPreamble && bytes[1] == kCivPreamble &&
           bytes.back() == kCivEnd;
  }
  uint8_t destination() const { return bytes[2]; }
  uint8_t source() const { return bytes[3]; }
  uint8_t command() const { return bytes[4]; }
  // The byte after the command, or kCivEnd when there is none.
  uint8_t sub() const { return bytes.size() > 6 ? bytes[5] : kCivEnd; }
  bool IsBroadcast() const { return destination() == kCivBroadcastAddress; }
  // The byte before 0xFD is FB / FA.
  bool IsAck() const { return bytes[bytes.size() - 2] == kCivAck; }
  bool IsRefusal() const { return bytes[bytes.size() - 2] == kCivRefusal; }
  // Bytes 4 .. size-2: command, sub-command and data.
  std::vector<uint8_t> Payload() const { return {bytes.begin() + 4, bytes.end() - 1}; }
  // "FE FE E0 5C FB FD": how the debug log shows a frame.
  std::string Hex() const;
};

// Builds a frame to `to` from `from` around `payload` (command, sub-command, data).
CivFrame MakeCivFrame(uint8_t to, uint8_t from, const std::vector<uint8_t>& payload);

}  // namespace tavlorin
