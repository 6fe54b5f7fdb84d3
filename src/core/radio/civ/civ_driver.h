// CivDriver: the operations of ICOM radios (CI-V, family 1); CatRadio's switch calls them.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <string>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class CivDriver {
 public:
  explicit CivDriver(CatRadio& radio) : radio_(radio) {}

  // Reads the radio's identification at connect; fills civReportedAddress and *identification.
  int ReadIdentification(std::string* identification);
  // Inverted result, as the family has always had it: 0 after a good read, 1 after failing.
  uint32_t ReadFrequency(Frequency* hz);
  int SetFrequency(Frequency hz);
  uint8_t ReadMode();
  int SetMode(uint8_t mode);
  int SetFilter(uint8_t filter);
  int SetVfo(uint8_t command, uint8_t data);
  int SetMemory(uint8_t command, uint8_t data);
  uint8_t ReadSMeter();
  uint32_t ReadValue(const std::string& command);
  int SetValue(const std::string& command);

 private:
  CatRadio& radio_;
};

}  // namespace tavlorin
