// The radio window's mode numbering (0 to 20, the 21 mode names) and each family's mode codes.
//
// One table holds every row: a mode number, its name, and the code each family's mode command
// takes for it (-1: the family has no such mode). The logbook's mode defaults, the "mode"
// command of the local interface and the drop-down lists all use these numbers; the drivers
// speak the family codes. Immutable; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tavlorin {

inline constexpr int kModeCount = 21;

// The command sets whose mode codes differ.
enum class ModeCodeSet {
  kIcom,          // CI-V 04/06: 00 LSB, 01 USB, 02 AM, 03 CW, 04 RTTY, 05 FM, ...
  kKenwood,       // MD: 1 LSB, 2 USB, 3 CW, 4 FM, 5 AM, 6 FSK, 7 CW-R, 9 FSK-R
  kElecraft,      // MD: 1 LSB, 2 USB, 3 CW, 4 FM, 5 AM, 6 DATA, 7 CW-R, 9 DATA-R
  kYaesu,         // FT-817/FT-847 opcode 07: 00 LSB, 01 USB, 02 CW, 03 CW-R, 04 AM, 08 FM ...
  kYaesuClassic,  // FT-1000/FT-990/FT-920/FT-900 opcode 0C: 00 LSB, 01 USB, 02 CW, ...
  kTenTec,        // Orion RMM: 0 USB, 1 LSB, 2 CW (upper), 3 CW (lower), 4 AM, 5 FM, 6 FSK
  kPcr1000,       // K0 mode: 00 LSB, 01 USB, 02 AM, 03 CW, 05 NFM, 06 WFM
  kNrd535,        // D: 0 RTTY, 1 CW, 2 USB, 3 LSB, 4 AM, 5 FM, 6 AMS
  kYaesuAscii,    // MD0: the letter's value, 1 LSB, 2 USB, 3 CW-U, 4 FM, 5 AM, ... C DATA-USB
};

struct ModeRow {
  int number;
  std::string_view name;
  int16_t icom, kenwood, elecraft, yaesu, yaesuClassic, tenTec, pcr1000, nrd535, yaesuAscii;
};

std::span<const ModeRow> ModeTable();
// "" for a number outside 0..20.
std::string_view ModeName(int number);
// The number of an exact mode name, nullopt when none matches.
std::optional<int> ModeNumber(std::string_view name);
// A mode number in a family's codes; nullopt when the family has no such mode.
std::optional<uint8_t> FamilyModeCode(ModeCodeSet set, int number);
// A family's mode code as a mode number (the first row that uses the code); nullopt if none.
std::optional<int> ModeFromFamilyCode(ModeCodeSet set, uint8_t code);

}  // namespace tavlorin
