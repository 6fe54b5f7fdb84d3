// YaesuDriver's generic values: five raw bytes, or the FT-817's memory (EEPROM) bit commands.
#include <cstdio>

#include "radio/cat_radio.h"
#include "radio/yaesu/yaesu_driver.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

constexpr uint8_t kReadEeprom = 0xBB;
constexpr uint8_t kWriteEeprom = 0xBC;
// The first four bytes hold the memory's checksum: a changed checksum makes the FT-817 wipe its
// memory, calibration included. Never written.
constexpr uint16_t kLastProtectedAddress = 0x0003;
// The FT-817's VFO records: 26 bytes per band, VFO A's from 0x7D, VFO B's 390 bytes further on.
// 0x55 bit 0 tells which VFO is in use, 0x59 the band of each (A low nibble, B high nibble).
constexpr uint16_t kVfoRecords = 0x007D;
constexpr uint16_t kVfoBOffset = 390;
constexpr uint16_t kBandRecord = 26;
constexpr uint16_t kVfoSelect = 0x0055;
constexpr uint16_t kVfoBands = 0x0059;

std::string AddressLabel(const char* what, uint16_t address) {
  char text[64];
  std::snprintf(text, sizeof text, "%s 0x%02X%02X", what, address >> 8, address & 0xFF);
  return text;
}

}  // namespace

int YaesuDriver::SetValue(const std::string& command) {
  if (command.rfind("I-", 0) == 0) {
    const std::vector<YaesuEepromBits> bits = ParseYaesuEepromText(command);
    if (bits.empty()) {
      DebugLog::Write("Invalid memory command: %s", command.c_str());
      return 0;
    }
    for (const YaesuEepromBits& b : bits) {
      std::optional<uint16_t> address = b.address;
      if (b.currentVfo) {
        address = CurrentVfoRecord();
        if (!address) {
          return 0;
        }
        *address = static_cast<uint16_t>(*address + b.address);
      }
      if (WriteEepromBits(*address, b.mask, b.value) == 0) {
        return 0;
      }
    }
    return 1;
  }
  const std::optional<YaesuCommand> bytes = ParseYaesuCommandText(command);
  if (!bytes) {
    DebugLog::Write("Invalid command: %s", command.c_str());
    return 0;
  }
  return Send(*bytes, "Write 5 bytes") ? 1 : 0;
}

bool YaesuDriver::ReadEeprom(uint16_t address, std::array<uint8_t, 2>* data) {
  const uint8_t high = static_cast<uint8_t>(address >> 8);
  const uint8_t low = static_cast<uint8_t>(address & 0xFF);
  const std::string label = AddressLabel("Read EEPROM", address);
  return transaction_.Exchange({high, low, 0, 0, kReadEeprom}, *data, label.c_str());
}

std::optional<uint16_t> YaesuDriver::CurrentVfoRecord() {
  std::array<uint8_t, 2> select{};
  std::array<uint8_t, 2> bands{};
  if (!ReadEeprom(kVfoSelect, &select) || !ReadEeprom(kVfoBands, &bands)) {
    return std::nullopt;
  }
  const bool vfoB = (select[0] & 0x01) != 0;
  const uint16_t band = vfoB ? bands[0] >> 4 : bands[0] & 0x0F;
  return static_cast<uint16_t>(kVfoRecords + (vfoB ? kVfoBOffset : 0) + band * kBandRecord);
}

int YaesuDriver::WriteEepromBits(uint16_t address, uint8_t mask, uint8_t value) {
  if (address <= kLastProtectedAddress) {
    DebugLog::Write("Error - cannot write to address 0x0000 to 0x0003");
    return 0;
  }
  // The radio answers an EEPROM read with the byte and the one after it. Read twice: a
  // disagreement means the line garbled one reply, and writing back garbage would corrupt the
  // radio's settings.
  std::array<uint8_t, 2> first{};
  std::array<uint8_t, 2> second{};
  if (!ReadEeprom(address, &first) || !ReadEeprom(address, &second)) {
    return 0;
  }
  if (first != second) {
    DebugLog::Write("Read EEPROM 0x%02X%02X, inconsistent values returned", address >> 8,
                    address & 0xFF);
    return 0;
  }
  const uint8_t updated = static_cast<uint8_t>((first[0] & ~mask) | (value & mask));
  const uint8_t high = static_cast<uint8_t>(address >> 8);
  const uint8_t low = static_cast<uint8_t>(address & 0xFF);
  const std::string label = AddressLabel("Write EEPROM", address);
  return Send({high, low, updated, first[1], kWriteEeprom}, label.c_str()) ? 1 : 0;
}

}  // namespace tavlorin
