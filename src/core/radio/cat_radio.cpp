// The radio operations: each subtracts 1 from the family code and switches, so codes outside
// 1..8 and families without the operation fall through to the default result.
#include "radio/cat_radio.h"

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
  switch (manufacturer - 1) {
    case 0: result = civ_.ReadFrequency(hz); break;
    case 1:
    case 2: result = kenwood_.ReadFrequency(vfo, hz); break;
    case 3: result = yaesu_.ReadFrequency(vfo, hz); break;
    case 4: result = tentec_.ReadFrequency(hz); break;
    case 6: result = pcr1000_.ReadFrequency(hz); break;
    case 7: result = nrd535_.ReadFrequency(hz); break;
    default: break;
  }
  if (text != nullptr) {
    *text = FormatFrequency(*hz);
  }
  return result;
}

int CatRadio::SetFrequency(int vfo, Frequency hz) {
  switch (manufacturer - 1) {
    case 0: civ_.SetFrequency(hz); break;
    case 1:
    case 2: kenwood_.SetFrequency(vfo, hz); break;
    case 3: yaesu_.SetFrequency(vfo, hz); break;
    case 4: tentec_.SetFrequency(hz); break;
    case 6: pcr1000_.SetFrequency(hz); break;
    case 7: nrd535_.SetFrequency(hz); break;
    default: break;
  }
  return 1;
}

uint8_t CatRadio::ReadMode() {
  switch (manufacturer - 1) {
    case 0: return civ_.ReadMode();
    case 1:
    case 2: return kenwood_.ReadMode();
    case 3: return yaesu_.ReadMode();
    case 4: return tentec_.ReadMode();
    case 6: return pcr1000_.ReadMode();
    case 7: return nrd535_.ReadMode();
    default: return 0;
  }
}

int CatRadio::SetMode(uint8_t mode) {
  switch (manufacturer - 1) {
    case 0: return civ_.SetMode(mode);
    case 1:
    case 2: return kenwood_.SetMode(mode);
    case 3: return yaesu_.SetMode(mode);
    case 4: return tentec_.SetMode(mode);
    default: return 0;
  }
}

int CatRadio::SetFilter(uint8_t filter) {
  return manufacturer - 1 == 0 ? civ_.SetFilter(filter) : 0;
}

int CatRadio::SetVfo(uint8_t command, uint8_t data) {
  return manufacturer - 1 == 0 ? civ_.SetVfo(command, data) : 0;
}

int CatRadio::SetMemory(uint8_t command, uint8_t data) {
  return manufacturer - 1 == 0 ? civ_.SetMemory(command, data) : 0;
}

int CatRadio::SetCommandState(uint8_t command, uint8_t on) {
  return manufacturer - 1 == 3 ? yaesu_.SetCommandState(command, on) : 0;
}

uint8_t CatRadio::ReadSMeter(uint8_t meter) {
  switch (manufacturer - 1) {
    case 0: return civ_.ReadSMeter();
    case 1:
    case 2: return kenwood_.ReadSMeter();
    case 3: return yaesu_.ReadSMeter(meter);
    case 4: return tentec_.ReadSMeter();
    case 6: return pcr1000_.ReadSMeter();
    case 7: return nrd535_.ReadSMeter();
    default: return 0;
  }
}

uint32_t CatRadio::ReadValue(const std::string& command, const std::string& label) {
  DebugLog::Write("Read value: %s", label.c_str());
  switch (manufacturer - 1) {
    case 0: return civ_.ReadValue(command);
    case 1:
    case 2: return kenwood_.ReadValue(command);
    case 3:
      if (command == "mode") {
        return ReadMode();
      }
      if (command == "filter") {
        return yaesu_.ReadFilter();
      }
      return 0;
    case 4: return tentec_.ReadValue(command);
    case 7: return nrd535_.ReadValue(command);
    default: return 0;
  }
}

int CatRadio::SetValue(const std::string& command, const std::string& label) {
  DebugLog::Write("Set value: %s", label.c_str());
  switch (manufacturer - 1) {
    case 0: return civ_.SetValue(command);
    case 1:
    case 2: return kenwood_.SetValue(command);
    case 3: return yaesu_.SetValue(command);
    case 4: return tentec_.SetValue(command);
    case 6: return pcr1000_.SetValue(command);
    case 7: return nrd535_.SetValue(command);
    default: return 0;
  }
}

std::string CatRadio::ReadString(const std::string& command) {
  switch (manufacturer - 1) {
    case 1:
    case 2: return kenwood_.ReadString(command);
    case 4: return tentec_.ReadString(command);
    case 6: return pcr1000_.ReadString(command);
    case 7: return nrd535_.ReadString(command);
    default: return {};
  }
}

}  // namespace tavlorin
