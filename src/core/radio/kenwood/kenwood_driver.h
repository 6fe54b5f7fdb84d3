// KenwoodDriver: the operations of the two families that speak the Kenwood ASCII command
// language, Kenwood (3) and Elecraft (2); CatRadio's switch calls them. Which flavour applies is
// the radio's `manufacturer`; per-model rules (the S-meter command, power switching) are
// properties of the model's radio definition. A demonstration radio (`isDemo`) answers every read
// and write from the radio's value map instead of the port.
//
// Commands per operation (Kenwood / Elecraft):
//   ReadFrequency  VFO 0 "FA", 1 "FB", 2 the first 11 characters of "IF" / VFO 2 as VFO 0
//   SetFrequency   "FA"/"FB"/"FC" + 11 digits          / "FA"/"FB"/"FA" + 11 digits
//   ReadMode       "MD"; SetMode "MD" + 1 digit (the model's "mode-command", "MD0" on the
//                  TS-990S; with "mode-letters" the modes 10 to 15 as "A" to "F")
//   ReadSMeter     the model's "s-meter" ("SM0" on the TS-2000), "SM", none with "no-s-meter"
//                  (TS-440S) / "BG" less 12 from 12 up
//   ReadValue, ReadString, SetValue: the command text itself
//
// Owned by its CatRadio and used on that radio's thread only. No operation throws; failures
// return 0 (or an empty text) and leave the caller's last known values alone.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class KenwoodDriver {
 public:
  explicit KenwoodDriver(CatRadio& radio) : radio_(radio) {}

  // The family start-up of Connect, also repeated before each connect attempt: Elecraft
  // "AI0;K22;" (no auto-information, extended commands), Kenwood "AI0".
  void StartUp();
  // Sets *hz to the frequency read (0 when the read failed); non-zero when it is not 0.
  uint32_t ReadFrequency(int vfo, Frequency* hz);
  int SetFrequency(int vfo, Frequency hz);
  uint8_t ReadMode();
  int SetMode(uint8_t mode);
  uint8_t ReadSMeter();
  uint32_t ReadValue(const std::string& command);
  int SetValue(const std::string& command);
  std::string ReadString(const std::string& command);
  // Models with the "power" property (TS-480, TS-570, TS-870): "PS0"/"PS1", waking the serial
  // receiver with ";;;;;" and waiting for it to answer "FA" when switching on. Returns 1.
  int SwitchPower(bool on);

 private:
  // The family's read and send, or the demonstration radio's answer.
  std::string Read(std::string_view command);
  bool Send(std::string_view command);
  bool IsElecraft() const;

  CatRadio& radio_;
};

}  // namespace tavlorin
