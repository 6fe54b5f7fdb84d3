#include "radio/tentec/tentec_driver.h"

#include <cctype>

#include "radio/cat_radio.h"
#include "radio/radio_model_properties.h"
#include "radio/tentec/tentec_codec.h"

namespace tavlorin {

std::string TenTecDriver::ModeCommand() const {
  // The Orion keeps a mode per receiver ("RMM" main); the Argonaut has one ("M").
  return std::string(radio_.definition().Property(model_property::kModeCommand, "RMM"));
}

std::optional<std::string> TenTecDriver::Query(const std::string& queryForm) {
  if (radio_.isDemo) {
    if (!radio_.values().Has(queryForm)) {
      return std::nullopt;
    }
    return radio_.values().Get(queryForm);
  }
  return line_.Query(queryForm, "@" + queryForm.substr(1));
}

bool TenTecDriver::Set(const std::string& setForm) {
  if (!radio_.isDemo) {
    return line_.Send(setForm);
  }
  // Split "*RMF2500" into the query form "?RMF" and the value "2500": the longest key the map
  // already holds wins; a new key ends where the value's first digit or sign begins.
  const std::string body = setForm.substr(setForm[0] == '*' ? 1 : 0);
  size_t split = 0;
  for (size_t n = body.size(); n > 0; --n) {
    if (radio_.values().Has("?" + body.substr(0, n))) {
      split = n;
      break;
    }
  }
  if (split == 0) {
    while (split < body.size() && std::isupper(static_cast<unsigned char>(body[split]))) {
      ++split;
    }
  }
  radio_.values().Set("?" + body.substr(0, split), body.substr(split));
  return true;
}

bool TenTecDriver::HexFrequencies() const {
  // The demonstration table keeps the hexadecimal form whatever radio it imitates.
  return radio_.isDemo || radio_.definition().Has(model_property::kHexFrequencies);
}

uint32_t TenTecDriver::ReadFrequency(int vfo, Frequency* hz) {
  *hz = 0;
  if (HexFrequencies()) {
    std::optional<std::string> value = Query(vfo == 1 ? "?B" : "?A");
    *hz = value ? ParseTenTecFrequency(*value).value_or(0) : 0;
  } else {
    std::optional<std::string> value = Query(TenTecFrequencyQuery(vfo));
    *hz = value ? ParseTenTecDecimalFrequency(*value).value_or(0) : 0;
  }
  return *hz != 0 ? 1 : 0;
}

int TenTecDriver::SetFrequency(int vfo, Frequency hz) {
  const std::string command =
      HexFrequencies() ? TenTecFrequencyCommand(vfo, hz) : TenTecDecimalFrequencyCommand(vfo, hz);
  return Set(command) ? 1 : 0;
}

uint8_t TenTecDriver::ReadMode() {
  std::optional<std::string> value = Query("?" + ModeCommand());
  if (!value) {
    return 0;
  }
  return static_cast<uint8_t>(ParseTenTecNumber(*value).value_or(0));
}

int TenTecDriver::SetMode(uint8_t mode) {
  return Set("*" + ModeCommand() + std::to_string(mode)) ? 1 : 0;
}

uint8_t TenTecDriver::ReadSMeter() {
  std::optional<std::string> value = Query("?S");
  return value ? ParseTenTecSMeter(*value) : 0;
}

uint32_t TenTecDriver::ReadValue(const std::string& command) {
  std::optional<std::string> value = Query(TenTecQueryForm(command));
  if (!value) {
    return 0;
  }
  return static_cast<uint32_t>(ParseTenTecNumber(*value).value_or(0));
}

int TenTecDriver::SetValue(const std::string& command) {
  if (command.empty()) {
    return 0;
  }
  return Set(command[0] == '*' ? command : "*" + command) ? 1 : 0;
}

std::string TenTecDriver::ReadString(const std::string& command) {
  return Query(TenTecQueryForm(command)).value_or(std::string());
}

}  // namespace tavlorin
