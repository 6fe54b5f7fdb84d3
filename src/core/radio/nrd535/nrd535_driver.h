// Nrd535Driver: the operations of the NRD-535 receiver (family 8); CatRadio's switch calls them.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <string>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class Nrd535Driver {
 public:
  explicit Nrd535Driver(CatRadio& radio) : radio_(radio) {}

  void StartUp();
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
