// KenwoodDriver: the operations of the two families that speak the Kenwood ASCII command
// language, Kenwood (3) and Elecraft (2); CatRadio's switch calls them. Which flavour applies is
// the radio's `manufacturer`. A demonstration radio answers from the radio's value map.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <string>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class KenwoodDriver {
 public:
  explicit KenwoodDriver(CatRadio& radio) : radio_(radio) {}

  // The family start-up of Connect, also repeated before each connect attempt.
  void StartUp();
  uint32_t ReadFrequency(int vfo, Frequency* hz);
  int SetFrequency(int vfo, Frequency hz);
  uint8_t ReadMode();
  int SetMode(uint8_t mode);
  uint8_t ReadSMeter();
  uint32_t ReadValue(const std::string& command);
  int SetValue(const std::string& command);
  std::string ReadString(const std::string& command);
  int SwitchPower(bool on);

 private:
  CatRadio& radio_;
};

}  // namespace tavlorin
