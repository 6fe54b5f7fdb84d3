#include "radio/nrd535/nrd535_driver.h"

#include "radio/cat_radio.h"

namespace tavlorin {

// Not written yet: every operation answers the default result.
void Nrd535Driver::StartUp() {}
uint32_t Nrd535Driver::ReadFrequency(Frequency*) { return 0; }
int Nrd535Driver::SetFrequency(Frequency) { return 1; }
uint8_t Nrd535Driver::ReadMode() { return 0; }
uint8_t Nrd535Driver::ReadSMeter() { return 0; }
uint32_t Nrd535Driver::ReadValue(const std::string&) { return 0; }
int Nrd535Driver::SetValue(const std::string&) { return 0; }
std::string Nrd535Driver::ReadString(const std::string&) { return {}; }

}  // namespace tavlorin
