// The radio operations: each switches on the family code, so unknown codes and families without
// the operation fall through to the default result.
#include "radio/cat_radio.h"

#include "radio/radio_model_properties.h"
#include "shell/debug_log.h"

namespace tavlorin {

CatRadio::CatRadio(Clock& clock) : clock_(clock), link_(clock) {}

CatRadio::~CatRadio() { Disconnect(); }

bool IsNoRadioFrequency(Frequency hz) {
  return hz == 0 || hz == 0xFFFFFFFFu || hz == 0x0000FFFFu || hz == 0xFFFF0000u;
}

void CatRadio::PostUnsolicitedFrequency(Frequency hz) const {
  if (frequencySink_) {
    frequencySink_(hz);
  }
}

uint32_t CatRadio::ReadFrequency(int vfo, Frequency* hz, std::string* text) {
  uint32_t result = 0;
  switch (manufacturer) {
    case kIcom:
      result = civ_.ReadFrequency(hz);
      break;
    case kElecraft:
    case kKenwood:
      result = kenwood_.ReadFrequency(vfo, hz);
      break;
    case kYaesu:
      result = yaesu_.ReadFrequency(vfo, hz);
      break;
    case kYaesuAscii:
      result = yaesuAscii_.ReadFrequency(vfo, hz);
      break;
    case kTenTec:
      result = tentec_.ReadFrequency(vfo, hz);
      break;
    case kGeneral:
      result = pcr1000_.ReadFrequency(hz);
      break;
    case kNrd535:
      result = nrd535_.ReadFrequency(hz);
      break;
    default:
      break;
  }
  if (text != nullptr) {
    *text = FormatFrequency(*hz);
  }
  return result;
}

int CatRadio::SetFrequency(int vfo, Frequency hz) {
  switch (manufacturer) {
    case kIcom:
      civ_.SetFrequency(hz);
      break;
    case kElecraft:
    case kKenwood:
      kenwood_.SetFrequency(vfo, hz);
      break;
    case kYaesu:
      yaesu_.SetFrequency(vfo, hz);
      break;
    case kYaesuAscii:
      yaesuAscii_.SetFrequency(vfo, hz);
      break;
    case kTenTec:
      tentec_.SetFrequency(vfo, hz);
      break;
    case kGeneral:
      pcr1000_.SetFrequency(hz);
      break;
    case kNrd535:
      nrd535_.SetFrequency(hz);
      break;
    default:
      break;
  }
  return 1;
}

uint8_t CatRadio::ReadMode() {
  switch (manufacturer) {
    case kIcom:
      return civ_.ReadMode();
    case kElecraft:
    case kKenwood:
      return kenwood_.ReadMode();
    case kYaesu:
      return yaesu_.ReadMode();
    case kYaesuAscii:
      return yaesuAscii_.ReadMode();
    case kTenTec:
      return tentec_.ReadMode();
    case kGeneral:
      return pcr1000_.ReadMode();
    case kNrd535:
      return nrd535_.ReadMode();
    default:
      return 0;
  }
}

int CatRadio::SetMode(uint8_t mode) {
  switch (manufacturer) {
    case kIcom:
      return civ_.SetMode(mode);
    case kElecraft:
    case kKenwood:
      return kenwood_.SetMode(mode);
    case kYaesu:
      return yaesu_.SetMode(mode);
    case kYaesuAscii:
      return yaesuAscii_.SetMode(mode);
    case kTenTec:
      return tentec_.SetMode(mode);
    default:
      return 0;
  }
}

uint8_t CatRadio::HighestMode() const {
  if (manufacturer == kElecraft || manufacturer == kKenwood) {
    return definition().Has(model_property::kModeLetters) ? 15 : 9;
  }
  return 255;
}

int CatRadio::SetFilter(uint8_t filter) {
  return manufacturer == kIcom ? civ_.SetFilter(filter) : 0;
}

int CatRadio::SetVfo(uint8_t command, uint8_t data) {
  return manufacturer == kIcom ? civ_.SetVfo(command, data) : 0;
}

int CatRadio::SetMemory(uint8_t command, uint8_t data) {
  return manufacturer == kIcom ? civ_.SetMemory(command, data) : 0;
}

int CatRadio::SetCommandState(uint8_t command, uint8_t on) {
  return manufacturer == kYaesu ? yaesu_.SetCommandState(command, on) : 0;
}

uint8_t CatRadio::ReadSMeter(uint8_t meter) {
  switch (manufacturer) {
    case kIcom:
      return civ_.ReadSMeter();
    case kElecraft:
    case kKenwood:
      return kenwood_.ReadSMeter();
    case kYaesu:
      return yaesu_.ReadSMeter(meter);
    case kYaesuAscii:
      return yaesuAscii_.ReadSMeter();
    case kTenTec:
      return tentec_.ReadSMeter();
    case kGeneral:
      return pcr1000_.ReadSMeter();
    case kNrd535:
      return nrd535_.ReadSMeter();
    default:
      return 0;
  }
}

uint32_t CatRadio::ReadValue(const std::string& command, const std::string& label) {
  DebugLog::Write("Read value: %s", label.c_str());
  switch (manufacturer) {
    case kIcom:
      return civ_.ReadValue(command);
    case kElecraft:
    case kKenwood:
      return kenwood_.ReadValue(command);
    case kYaesu:
      if (command == "mode") {
        return ReadMode();
      }
      if (command == "filter") {
        return yaesu_.ReadFilter();
      }
      return 0;
    case kYaesuAscii:
      return yaesuAscii_.ReadValue(command);
    case kTenTec:
      return tentec_.ReadValue(command);
    case kNrd535:
      return nrd535_.ReadValue(command);
    default:
      return 0;
  }
}

int CatRadio::SetValue(const std::string& command, const std::string& label) {
  DebugLog::Write("Set value: %s", label.c_str());
  switch (manufacturer) {
    case kIcom:
      return civ_.SetValue(command);
    case kElecraft:
    case kKenwood:
      return kenwood_.SetValue(command);
    case kYaesu:
      return yaesu_.SetValue(command);
    case kYaesuAscii:
      return yaesuAscii_.SetValue(command);
    case kTenTec:
      return tentec_.SetValue(command);
    case kGeneral:
      return pcr1000_.SetValue(command);
    case kNrd535:
      return nrd535_.SetValue(command);
    default:
      return 0;
  }
}

std::string CatRadio::ReadString(const std::string& command) {
  switch (manufacturer) {
    case kElecraft:
    case kKenwood:
      return kenwood_.ReadString(command);
    case kYaesuAscii:
      return yaesuAscii_.ReadString(command);
    case kTenTec:
      return tentec_.ReadString(command);
    case kGeneral:
      return pcr1000_.ReadString(command);
    case kNrd535:
      return nrd535_.ReadString(command);
    default:
      return {};
  }
}

}  // namespace tavlorin
