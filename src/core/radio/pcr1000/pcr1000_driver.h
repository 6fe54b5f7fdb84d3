// Pcr1000Driver: the operations of the PCR-1000 receiver (family 7); CatRadio's switch calls them.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <string>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class Pcr1000Driver {
 public:
  explicit Pcr1000Driver(CatRadio& radio) : radio_(radio) {}

  // Powers the receiver on and moves it to 38 400 bit/s; 0 and *message on failure.
  int StartUp(std::string* message);
  int SwitchPower(bool on);
  uint32_t ReadFrequency(Frequency* hz);
  int SetFrequency(Frequency hz);
  uint8_t ReadMode();
  uint8_t ReadSMeter();
  uint32_t ReadValue(const std::string& command);
  int SetValue(const std::string& command);
  std::string ReadString(const std::string& command);

 private:
  CatRadio& radio_;
};

}  // namespace tavlorin
