// TenTecDriver: the operations of Ten-Tec radios (ASCII commands, family 5: the Orion and the
// Argonaut); CatRadio's switch calls them.
//
// A real radio is asked over the link (AsciiLine, CR line ends; see tentec_codec.h for the
// command forms). A demonstration radio ("Orion: Demo", `isDemo`) answers every read from the
// radio's value map by the query form ("?A", "?RMM", ...) and stores every write there, so the
// rest of the program cannot tell it from a radio. A failed read answers 0 and leaves the map
// as it was.
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

class TenTecDriver {
 public:
  explicit TenTecDriver(CatRadio& radio) : radio_(radio), line_(radio, "\r", '\r') {}

  // The radio's mode code (Orion: 0 USB, 1 LSB, 2 CW, 3 CW-R, 4 AM, 5 FM, 6 FSK).
  int SetMode(uint8_t mode);
  // 1 and the hertz of VFO A on success, 0 and *hz = 0 otherwise.
  // VFO A (vfo 0) or B (vfo 1).
  uint32_t ReadFrequency(int vfo, Frequency* hz);
  int SetFrequency(int vfo, Frequency hz);
  uint8_t ReadMode();
  uint8_t ReadSMeter();
  // A query in either form ("?RMF" or "RMF"); the number of the reply, 0 on failure.
  uint32_t ReadValue(const std::string& command);
  // A set command as the radio takes it ("*RMF2500").
  int SetValue(const std::string& command);
  std::string ReadString(const std::string& command);

 private:
  // The reply value of a query ("?A" -> "00D6B3F0"), from the radio or the demonstration map.
  std::optional<std::string> Query(const std::string& queryForm);
  // A set ("*A00D6B3F0"): sent, or stored in the demonstration map under its query form.
  bool Set(const std::string& setForm);
  std::string ModeCommand() const;
  bool HexFrequencies() const;

  CatRadio& radio_;
  AsciiLine line_;
};

}  // namespace tavlorin
