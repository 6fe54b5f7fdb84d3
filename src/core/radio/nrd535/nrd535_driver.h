// Nrd535Driver: the operations of the NRD-535 receiver (family 8); CatRadio's switch calls
// them.
//
// Commands are text ended by CR. "H1" puts the receiver under remote control (sent at
// start-up); "F%-8.8u" tunes it (eight digits of hertz); "I1" asks for its status line, which
// carries the frequency after "F" (eight digits), the mode after "D" and the bandwidth after
// "B"; "Y1" asks for the signal strength ("S" and up to three digits). The other commands of
// the per-model controls are sent as they stand.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "radio/ascii_line.h"
#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

// What one status line says; each part is nullopt when the line does not carry it.
struct Nrd535Status {
  std::optional<Frequency> frequency;
  std::optional<uint8_t> mode;       // D: 0 RTTY, 1 CW, 2 USB, 3 LSB, 4 AM, 5 FM, 6 AMS
  std::optional<uint8_t> bandwidth;  // B: 0 wide, 1 intermediate, 2 narrow, 3 auxiliary
};
Nrd535Status ParseNrd535Status(const std::string& line);

class Nrd535Driver {
 public:
  explicit Nrd535Driver(CatRadio& radio) : radio_(radio), line_(radio, "\r", '\r') {}

  // Remote control on ("H1").
  void StartUp();
  uint32_t ReadFrequency(Frequency* hz);
  int SetFrequency(Frequency hz);
  uint8_t ReadMode();
  uint8_t ReadSMeter();
  // The number after the command letters of the reply to `command`; 0 on failure.
  uint32_t ReadValue(const std::string& command);
  int SetValue(const std::string& command);
  std::string ReadString(const std::string& command);

 private:
  std::optional<Nrd535Status> ReadStatus();

  CatRadio& radio_;
  AsciiLine line_;
  uint8_t lastMode_ = 0;
};

}  // namespace tavlorin
