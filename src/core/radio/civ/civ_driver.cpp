#include "radio/civ/civ_driver.h"

#include "radio/cat_radio.h"

namespace tavlorin {

// Not written yet: every operation answers the default result.
int CivDriver::ReadIdentification(std::string*) { return 0; }
uint32_t CivDriver::ReadFrequency(Frequency*) { return 1; }
int CivDriver::SetFrequency(Frequency) { return 1; }
uint8_t CivDriver::ReadMode() { return 0; }
int CivDriver::SetMode(uint8_t) { return 0; }
int CivDriver::SetFilter(uint8_t) { return 0; }
int CivDriver::SetVfo(uint8_t, uint8_t) { return 0; }
int CivDriver::SetMemory(uint8_t, uint8_t) { return 0; }
uint8_t CivDriver::ReadSMeter() { return 0; }
uint32_t CivDriver::ReadValue(const std::string&) { return 0; }
int CivDriver::SetValue(const std::string&) { return 0; }

}  // namespace tavlorin
