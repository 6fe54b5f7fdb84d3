#include "radio/kenwood/kenwood_driver.h"

#include "radio/cat_radio.h"

namespace tavlorin {

// Not written yet: every operation answers the default result.
void KenwoodDriver::StartUp() {}
uint32_t KenwoodDriver::ReadFrequency(int, Frequency*) { return 0; }
int KenwoodDriver::SetFrequency(int, Frequency) { return 1; }
uint8_t KenwoodDriver::ReadMode() { return 0; }
int KenwoodDriver::SetMode(uint8_t) { return 0; }
uint8_t KenwoodDriver::ReadSMeter() { return 0; }
uint32_t KenwoodDriver::ReadValue(const std::string&) { return 0; }
int KenwoodDriver::SetValue(const std::string&) { return 0; }
std::string KenwoodDriver::ReadString(const std::string&) { return {}; }
int KenwoodDriver::SwitchPower(bool) { return 0; }

}  // namespace tavlorin
