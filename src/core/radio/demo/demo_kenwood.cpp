#include "radio/demo/demo_kenwood.h"

#include <cstdio>

#include "link/manufacturer.h"
#include "radio/kenwood/kenwood_codec.h"
#include "radio/radio_model_properties.h"

namespace tavlorin {
namespace {

// Character positions in the 35-character "IF" value.
constexpr size_t kIfTransmitIndex = 26;
constexpr size_t kIfModeIndex = 27;
constexpr size_t kIfVfoIndex = 28;

bool IsReceiverCommand(std::string_view letters) {
  std::string_view two = letters.substr(0, 2);
  return two == "AG" || two == "SQ";
}

// How many characters of a written command name its key.
size_t KeyLength(const DemoKenwoodRadio& radio, std::string_view letters) {
  if (radio.family == kKenwood && radio.receiverDigit && IsReceiverCommand(letters)) {
    return 3;
  }
  return 2;
}

void SetIfCharacter(ValueMap& values, size_t index, char c) {
  std::string status = values.Get("IF");
  if (status.size() <= index) {
    status.resize(index + 1, ' ');
  }
  status[index] = c;
  values.Set("IF", status);
}

void AdvanceMeter(ValueMap& values, std::string_view key, unsigned modulus) {
  unsigned next = (kenwood::ParseValue(values.Get(key)) + 1u) % modulus;
  values.Set(key, DemoMeterText(next));
}

// Elecraft write effects; returns the value to store.
std::string ElecraftEffects(ValueMap& values, std::string_view letters, std::string value) {
  const std::string_view key = letters.substr(0, 2);
  if (key == "NB") {
    std::string current = values.Get("NB");
    int first = !current.empty() && current[0] >= '0' && current[0] <= '9' ? current[0] - '0' : 0;
    std::string rest = current.empty() ? std::string() : current.substr(1);
    return std::to_string((first + 1) % 3) + rest;
  }
  if (key == "TX" || key == "RX") {
    SetIfCharacter(values, kIfTransmitIndex, key == "TX" ? '1' : '0');
  } else if (key == "FW") {
    value += '1';
  } else if (letters.substr(0, 4) == "SW09") {
    std::string a = values.Get("FA");
    values.Set("FA", values.Get("FB"));
    values.Set("FB", a);
  } else if (letters.substr(0, 4) == "SW10") {
    values.Set("FB", values.Get("FA"));
  }
  return value;
}

void KenwoodEffects(ValueMap& values, std::string_view key, std::string_view value) {
  if (key == "TX" || key == "RX") {
    SetIfCharacter(values, kIfTransmitIndex, key == "TX" ? '1' : '0');
  } else if (key == "MD" && !value.empty()) {
    SetIfCharacter(values, kIfModeIndex, value[0]);
  } else if (key == "FR" && !value.empty()) {
    SetIfCharacter(values, kIfVfoIndex, value[0]);
  } else if (key == "VV") {
    std::string status = values.Get("IF");
    if (status.size() > kIfVfoIndex && status[kIfVfoIndex] == '1') {
      values.Set("FA", values.Get("FB"));
    } else {
      values.Set("FB", values.Get("FA"));
    }
  }
}

}  // namespace

DemoKenwoodRadio DemoKenwoodRadio::Of(int family, const RadioModel& model) {
  namespace p = model_property;
  DemoKenwoodRadio radio;
  radio.family = family;
  radio.receiverDigit = model.Has(p::kReceiverDigit);
  radio.meterKey = std::string(model.Property(p::kSMeter, "SM"));
  radio.meterScale = static_cast<unsigned>(model.Number(p::kSMeterScale, 30));
  return radio;
}

std::string DemoMeterText(unsigned value) {
  char text[16];
  std::snprintf(text, sizeof text, "%-4.4u", value);
  return text;
}

std::string DemoKenwoodRead(const DemoKenwoodRadio& radio, ValueMap& values,
                            std::string_view command) {
  std::string_view key = kenwood::CommandLetters(command);
  if (radio.family == kElecraft) {
    if (key == "FA") {
      AdvanceMeter(values, "BG", 13);
    }
    return values.Get(key);
  }
  if (radio.receiverDigit && IsReceiverCommand(key)) {
    key = key.substr(0, 3);
  }
  if (key == "FA" || key == "FB") {
    AdvanceMeter(values, radio.meterKey, radio.meterScale + 1);
  }
  return values.Get(key);
}

int DemoKenwoodWrite(const DemoKenwoodRadio& radio, ValueMap& values, std::string_view command) {
  std::string_view letters = command.substr(0, command.find(kenwood::kTerminator));
  const size_t keyLength = std::min(KeyLength(radio, letters), letters.size());
  std::string_view key = letters.substr(0, keyLength);
  std::string value(letters.substr(keyLength));
  if (radio.family == kElecraft) {
    value = ElecraftEffects(values, letters, std::move(value));
  } else {
    KenwoodEffects(values, key, value);
  }
  values.Set(key, value);
  return 1;
}

}  // namespace tavlorin
