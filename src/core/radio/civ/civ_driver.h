// CivDriver: the operations of ICOM radios (CI-V, family 1); CatRadio's switch calls them.
//
// Each operation is one or two CivTransaction exchanges (see civ_transaction.h for the read
// rules) around the codec of civ_codec.h. A failed operation leaves the values it keeps (last
// mode and filter, the value cache) as they were and returns 0, except ReadFrequency, whose
// result is inverted as the family has always had it.
//
// The radio's `unsolicitedData` flag is raised by the reader whenever a broadcast arrives; it is
// cleared here after a frequency read succeeds, because the window then holds the frequency the
// broadcasts announced.
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "radio/civ/civ_transaction.h"
#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class CivDriver {
 public:
  explicit CivDriver(CatRadio& radio) : radio_(radio), transaction_(radio) {}

  // Reads the radio's identification (19 00) at connect; fills civReportedAddress and
  // *identification ("%02X" of the address the radio reports). 0 when the radio did not answer.
  int ReadIdentification(std::string* identification);
  // Inverted result: 0 after a good read, 1 after four failed attempts. *hz is 0 on failure.
  uint32_t ReadFrequency(Frequency* hz);
  int SetFrequency(Frequency hz);
  // The radio's mode code (00 LSB, 01 USB, ...); the last mode read when the read fails.
  uint8_t ReadMode();
  int SetMode(uint8_t mode);
  int SetFilter(uint8_t filter);
  int SetVfo(uint8_t command, uint8_t data);
  int SetMemory(uint8_t command, uint8_t data);
  uint8_t ReadSMeter();
  // The command text notation of the per-model controls ("1A-05-00-40", "14-01"); 0 when the
  // read failed. TryReadValue tells a failure from a value of 0.
  uint32_t ReadValue(const std::string& command);
  std::optional<uint32_t> TryReadValue(const std::string& command);
  int SetValue(const std::string& command);

  // Reads a status: command + optional sub-command (kCivAnySub = none); the reply's one or two
  // BCD bytes. nullopt on failure.
  std::optional<uint32_t> ReadStatus(uint8_t command, uint8_t sub);
  // Toggles a state: command, sub-command (omitted when kCivAnySub), the value as one BCD byte.
  int SetState(uint8_t command, uint8_t sub, uint8_t value);
  // Sets a level (AF gain 14 01, power 14 0A): command, sub-command (omitted when kCivAnySub),
  // the value as two BCD bytes, most significant first (0 to 9999; the levels take 0 to 255).
  int SetLevel(uint8_t command, uint8_t sub, uint16_t value);

  // The last value read for a command key ("14-01-00"); nullopt when never read.
  std::optional<uint32_t> CachedValue(const std::string& key) const;
  std::optional<uint8_t> lastFilter() const { return lastFilter_; }
  CivTransaction& transaction() { return transaction_; }

 private:
  int FrequencyBytes() const;
  int SendWithData(uint8_t command, uint8_t data, const char* label);
  bool ReadModeAndFilter();

  CatRadio& radio_;
  CivTransaction transaction_;
  std::map<std::string, uint32_t> cache_;
  uint8_t lastMode_ = 0;
  bool modeKnown_ = false;
  std::optional<uint8_t> lastFilter_;
};

}  // namespace tavlorin
