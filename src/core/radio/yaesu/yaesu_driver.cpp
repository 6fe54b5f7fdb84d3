#include "radio/yaesu/yaesu_driver.h"

#include "radio/cat_radio.h"

namespace tavlorin {

// Not written yet: every operation answers the default result.
void YaesuDriver::ConnectPreamble() {}
uint32_t YaesuDriver::ReadFrequency(int, Frequency*) { return 0; }
int YaesuDriver::SetFrequency(int, Frequency) { return 1; }
uint8_t YaesuDriver::ReadMode() { return 0; }
uint8_t YaesuDriver::ReadFilter() { return 0; }
int YaesuDriver::SetMode(uint8_t) { return 0; }
int YaesuDriver::SetCommandState(uint8_t, uint8_t) { return 0; }
uint8_t YaesuDriver::ReadSMeter(uint8_t) { return 0; }
int YaesuDriver::SetValue(const std::string&) { return 0; }
int YaesuDriver::SwitchPower(bool) { return 0; }

}  // namespace tavlorin
