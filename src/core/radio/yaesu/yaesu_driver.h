// YaesuDriver: the operations of Yaesu radios (5-byte binary commands, family 4); CatRadio's
// switch calls them.
//
// Every read goes through YaesuTransaction. The status replies are kept in this object's
// buffers, each overwritten by its read, so a failed read decodes from zeros (frequency 0: a
// failed ReadFrequency) and never from a stale reply. Per-model differences come from
// the properties of the model's radio definition (YaesuTraitsOf, yaesu_models.h).
//
// The FT-847's frequency slots depend on the radio window's "SAT" button: the window tells the
// driver with SetSatelliteMode.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "radio/frequency.h"
#include "radio/yaesu/yaesu_models.h"
#include "radio/yaesu/yaesu_transaction.h"

namespace tavlorin {

class CatRadio;

class YaesuDriver {
 public:
  explicit YaesuDriver(CatRadio& radio) : radio_(radio), transaction_(radio) {}

  // The model's wake-up bytes, sent before the first connect attempt only.
  void ConnectPreamble();
  // vfo: 0 VFO A (or the current VFO), 1 VFO B, 2 the third slot. *hz is 0 on failure.
  uint32_t ReadFrequency(int vfo, Frequency* hz);
  // Always 1, as the family has always answered.
  int SetFrequency(int vfo, Frequency hz);
  // The radio's mode byte (FT-817: 00 LSB, 01 USB, ...); 0 when the read fails.
  uint8_t ReadMode();
  // 0 wide, 1 narrow (or the radio's filter byte where the update record carries one).
  uint8_t ReadFilter();
  int SetMode(uint8_t mode);
  // Switches a function on or off ("Set CMD On"/"Set CMD Off"), then reads one result byte.
  // The newer radios have an opcode pair per function (FT-817 lock 00/80, split 02/82): the
  // command is sent with `command` for on and `command | 0x80` for off. The older radios carry
  // the state in P4: 00 00 00 on command.
  int SetCommandState(uint8_t command, uint8_t on);
  // meter: 0 main (receive), 1 sub receiver, 2 transmit meters.
  uint8_t ReadSMeter(uint8_t meter);
  int SetValue(const std::string& command);
  int SwitchPower(bool on);

  void SetSatelliteMode(bool on) { satellite_ = on; }
  bool satelliteMode() const { return satellite_; }
  // The FT-847's satellite receive frequency, kept by the last read of slot 2.
  Frequency satelliteFrequency() const { return satelliteHz_; }

 private:
  const YaesuModelTraits& Traits();
  bool ReadStatus(int kind);
  Frequency DecodeFromStatus(const YaesuModelTraits& traits, int vfo);
  uint32_t ReadSlot(int slot, Frequency* hz);
  uint32_t ReadOtherVfo(Frequency* hz);
  bool ReadUpdateRecord(const YaesuModelTraits& traits);
  int WriteEepromBits(uint16_t address, uint8_t mask, uint8_t value);
  bool ReadEeprom(uint16_t address, std::array<uint8_t, 2>* data);
  std::optional<uint16_t> CurrentVfoRecord();
  bool Send(const YaesuCommand& command, const char* label);
  void ReadResultByte();

  CatRadio& radio_;
  YaesuTransaction transaction_;
  bool satellite_ = false;
  Frequency satelliteHz_ = 0;
  // The status buffers, by reply kind (see yaesu_driver.cpp): flags and update replies.
  std::array<std::array<uint8_t, 32>, 10> status_{};
  std::array<std::array<uint8_t, 5>, 3> slots_{};
  uint8_t lastSlot_ = 0;
  // The traits of the definition they were read from (the model may change between connects).
  YaesuModelTraits traits_;
  const RadioModel* traitsOf_ = nullptr;
};

}  // namespace tavlorin
