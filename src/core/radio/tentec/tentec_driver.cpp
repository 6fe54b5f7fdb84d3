#include "radio/tentec/tentec_driver.h"

#include "radio/cat_radio.h"

namespace tavlorin {

// Not written yet: every operation answers the default result.
void TenTecDriver::WakeUp() {}
int TenTecDriver::SetMode(uint8_t) { return 0; }
uint32_t TenTecDriver::ReadFrequency(Frequency*) { return 0; }
int TenTecDriver::SetFrequency(Frequency) { return 1; }
uint8_t TenTecDriver::ReadMode() { return 0; }
uint8_t TenTecDriver::ReadSMeter() { return 0; }
uint32_t TenTecDriver::ReadValue(const std::string&) { return 0; }
int TenTecDriver::SetValue(const std::string&) { return 0; }
std::string TenTecDriver::ReadString(const std::string&) { return {}; }

}  // namespace tavlorin
