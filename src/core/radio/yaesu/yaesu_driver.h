// YaesuDriver: the operations of Yaesu radios (5-byte binary commands, family 4); CatRadio's
// switch calls them.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <string>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class YaesuDriver {
 public:
  explicit YaesuDriver(CatRadio& radio) : radio_(radio) {}

  // The model's wake-up bytes, sent before the first connect attempt only.
  void ConnectPreamble();
  uint32_t ReadFrequency(int vfo, Frequency* hz);
  int SetFrequency(int vfo, Frequency hz);
  uint8_t ReadMode();
  uint8_t ReadFilter();
  int SetMode(uint8_t mode);
  int SetCommandState(uint8_t command, uint8_t on);
  uint8_t ReadSMeter(uint8_t meter);
  int SetValue(const std::string& command);
  int SwitchPower(bool on);

 private:
  CatRadio& radio_;
};

}  // namespace tavlorin
