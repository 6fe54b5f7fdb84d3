// YaesuAsciiDriver: the operations of radios that speak Yaesu's ASCII command set (family 9:
// FT-991A, FT-891, FT-710, FTDX10, FTDX101D/MP, FTDX3000, FTDX1200, FT-450D); CatRadio's switch
// calls them. Per-model differences are properties of the model's definition: the digits of a
// frequency ("frequency-digits", 9 unless set) and the identity number ("identity"). A
// demonstration radio (`isDemo`, "FT-991: Demo") answers from the radio's value map instead.
//
// Commands per operation:
//   StartUp          "AI0;" (the radio must not send status on its own)
//   ReadIdentity     "ID;" -> "ID0570;"
//   ReadFrequency    VFO 0 "FA", 1 "FB", 2 the frequency of "IF" (the VFO or memory in use)
//   SetFrequency     "FA"/"FB" + the model's digits (VFO 2 sets "FA": there is no "FC")
//   ReadMode         "MD0" -> the mode code (1 LSB, 2 USB, ... 12 DATA-USB); SetMode "MD0" + code
//   ReadSMeter       "SM0" (0 to 255)
//   ReadValue, ReadString, SetValue: the command text itself ("VS1", "FT3", "TX1", "AG0128")
//   SwitchPower      "PS1" after a wake-up "PS;", "PS0" (models with the "power" property)
//
// Owned by its CatRadio and used on that radio's thread only. No operation throws; failures
// return 0 (or an empty text) and leave the caller's last known values alone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class YaesuAsciiDriver {
 public:
  explicit YaesuAsciiDriver(CatRadio& radio) : radio_(radio) {}

  void StartUp();
  // The radio's identity number ("0570"); nullopt when it gave none.
  std::optional<std::string> ReadIdentity();
  // Sets *hz to the frequency read (0 when the read failed); non-zero when it is not 0.
  uint32_t ReadFrequency(int vfo, Frequency* hz);
  int SetFrequency(int vfo, Frequency hz);
  // The mode code of VFO A; 0 when the read failed.
  uint8_t ReadMode();
  int SetMode(uint8_t mode);
  uint8_t ReadSMeter();
  uint32_t ReadValue(const std::string& command);
  int SetValue(const std::string& command);
  std::string ReadString(const std::string& command);
  int SwitchPower(bool on);

 private:
  // The value text of a read (empty when refused or unanswered), from the port or the map.
  std::string Read(std::string_view command);
  bool Send(std::string_view command);
  int FrequencyDigits() const;

  CatRadio& radio_;
};

}  // namespace tavlorin
