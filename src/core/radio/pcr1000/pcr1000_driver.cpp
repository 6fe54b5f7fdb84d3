#include "radio/pcr1000/pcr1000_driver.h"

#include "radio/cat_radio.h"

namespace tavlorin {

// Not written yet: every operation answers the default result.
int Pcr1000Driver::StartUp(std::string*) { return 1; }
int Pcr1000Driver::SwitchPower(bool) { return 0; }
uint32_t Pcr1000Driver::ReadFrequency(Frequency*) { return 0; }
int Pcr1000Driver::SetFrequency(Frequency) { return 1; }
uint8_t Pcr1000Driver::ReadMode() { return 0; }
uint8_t Pcr1000Driver::ReadSMeter() { return 0; }
uint32_t Pcr1000Driver::ReadValue(const std::string&) { return 0; }
int Pcr1000Driver::SetValue(const std::string&) { return 0; }
std::string Pcr1000Driver::ReadString(const std::string&) { return {}; }

}  // namespace tavlorin
