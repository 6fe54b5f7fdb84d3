#include "radio/mode_table.h"

namespace tavlorin {
namespace {

// The numbers 1 LSB, 2 USB, 3 CW, 5 AM, 9 packet, 10/11 RTTY, 13/14 FSK and 19/20 PSK31 are
// fixed by the logbook's mode defaults; the other numbers are variants of those modes.
// Where a family has one code for two rows (Kenwood FSK for RTTY), the first row is the one a
// code reads back as.
// clang-format off
// Yaesu ASCII: MD0 carries one character, 1-9 then A-E, read here as its value (A = 10): 6 is
// RTTY-LSB (the usual RTTY), 7 CW-L, 8 DATA-LSB (called PKT-L on the FTDX3000), 9 RTTY-USB,
// A DATA-FM, B FM-N, C DATA-USB, D AM-N, E C4FM. DATA-FM (A) has no row of its own.
constexpr ModeRow kRows[] = {
    // n  name       ICOM  Ken  Elec  Yaesu  Classic  TenTec PCR  NRD  YaesuASCII
    {0, "None",      -1,   -1,  -1,   -1,    -1,      -1,    -1,  -1,  -1},
    {1, "LSB",       0x00, 1,   1,    0x00,  0x00,    1,     0,   3,   1},
    {2, "USB",       0x01, 2,   2,    0x01,  0x01,    0,     1,   2,   2},
    {3, "CW",        0x03, 3,   3,    0x02,  0x02,    2,     3,   1,   3},
    {4, "CW-R",      0x07, 7,   7,    0x03,  0x03,    3,     -1,  -1,  7},
    {5, "AM",        0x02, 5,   5,    0x04,  0x04,    4,     2,   4,   5},
    {6, "FM",        0x05, 4,   4,    0x08,  0x06,    5,     5,   5,   4},
    {7, "WFM",       0x06, -1,  -1,   -1,    -1,      -1,    6,   -1,  -1},
    {8, "USB-D",     -1,   -1,  -1,   0x0A,  -1,      -1,    -1,  -1,  12},
    {9, "PKT",       -1,   -1,  -1,   0x0C,  0x0A,    -1,    -1,  -1,  8},
    {10, "RTTY",     0x04, 6,   6,    -1,    0x08,    6,     -1,  0,   6},
    {11, "RTTY-R",   0x08, 9,   9,    -1,    0x09,    -1,    -1,  -1,  9},
    {12, "DV",       0x17, -1,  -1,   -1,    -1,      -1,    -1,  -1,  14},
    {13, "FSK",      -1,   6,   -1,   -1,    -1,      6,     -1,  -1,  -1},
    {14, "FSK-R",    -1,   9,   -1,   -1,    -1,      -1,    -1,  -1,  -1},
    {15, "CW-N",     -1,   -1,  -1,   0x82,  -1,      -1,    -1,  -1,  -1},
    {16, "CW-R-N",   -1,   -1,  -1,   0x83,  -1,      -1,    -1,  -1,  -1},
    {17, "AM-N",     -1,   -1,  -1,   0x84,  0x05,    -1,    -1,  6,   13},
    {18, "FM-N",     -1,   -1,  -1,   0x88,  -1,      -1,    -1,  -1,  11},
    {19, "PSK31",    0x12, -1,  -1,   -1,    -1,      -1,    -1,  -1,  -1},
    {20, "PSK31-R",  0x13, -1,  -1,   -1,    -1,      -1,    -1,  -1,  -1},
};
// clang-format on

static_assert(sizeof kRows / sizeof kRows[0] == kModeCount);

int16_t CodeOf(const ModeRow& row, ModeCodeSet set) {
  switch (set) {
    case ModeCodeSet::kIcom:
      return row.icom;
    case ModeCodeSet::kKenwood:
      return row.kenwood;
    case ModeCodeSet::kElecraft:
      return row.elecraft;
    case ModeCodeSet::kYaesu:
      return row.yaesu;
    case ModeCodeSet::kYaesuClassic:
      return row.yaesuClassic;
    case ModeCodeSet::kTenTec:
      return row.tenTec;
    case ModeCodeSet::kPcr1000:
      return row.pcr1000;
    case ModeCodeSet::kNrd535:
      return row.nrd535;
    case ModeCodeSet::kYaesuAscii:
      return row.yaesuAscii;
  }
  return -1;
}

}  // namespace

std::span<const ModeRow> ModeTable() { return kRows; }

std::string_view ModeName(int number) {
  return number >= 0 && number < kModeCount ? kRows[number].name : std::string_view();
}

std::optional<int> ModeNumber(std::string_view name) {
  for (const ModeRow& row : kRows) {
    if (row.name == name) {
      return row.number;
    }
  }
  return std::nullopt;
}

std::optional<uint8_t> FamilyModeCode(ModeCodeSet set, int number) {
  if (number < 0 || number >= kModeCount) {
    return std::nullopt;
  }
  const int16_t code = CodeOf(kRows[number], set);
  if (code < 0) {
    return std::nullopt;
  }
  return static_cast<uint8_t>(code);
}

std::optional<int> ModeFromFamilyCode(ModeCodeSet set, uint8_t code) {
  for (const ModeRow& row : kRows) {
    if (CodeOf(row, set) == code) {
      return row.number;
    }
  }
  return std::nullopt;
}

}  // namespace tavlorin
