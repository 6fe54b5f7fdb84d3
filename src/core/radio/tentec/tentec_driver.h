// TenTecDriver: the operations of Ten-Tec radios (ASCII commands, family 5; the Orion and Argonaut); CatRadio's switch calls them.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <string>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class TenTecDriver {
 public:
  explicit TenTecDriver(CatRadio& radio) : radio_(radio) {}

  // The Orion's wake-up, repeated before each connect attempt.
  void WakeUp();
  int SetMode(uint8_t mode);
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
