#include "radio/emulation/emulation_modes.h"

#include "link/manufacturer.h"

namespace tavlorin {
namespace {

struct ModePair {
  int family;
  int kenwood;
};

// ICOM CI-V: 00 LSB, 01 USB, 02 AM, 03 CW, 04 RTTY, 05 FM, 07 CW-R, 08 RTTY-R.
constexpr ModePair kIcomModes[] = {{0, 1}, {1, 2}, {2, 5}, {3, 3}, {4, 6}, {5, 4}, {7, 7}, {8, 9}};
// Yaesu: 00 LSB, 01 USB, 02 CW, 03 CW-R, 04 AM, 08 FM, 0A digital (taken as FSK).
constexpr ModePair kYaesuModes[] = {{0x00, 1}, {0x01, 2}, {0x02, 3}, {0x03, 7},
                                    {0x04, 5}, {0x08, 4}, {0x0A, 6}};

// Yaesu ASCII: 1-7 and 9 are Kenwood's own numbers; the data and narrow modes (8 DATA-LSB,
// A DATA-FM, B FM-N, C DATA-USB, D AM-N, E C4FM) are shown as the sideband or mode they ride on.
constexpr ModePair kYaesuAsciiModes[] = {{1, 1},  {2, 2},  {3, 3},  {4, 4},  {5, 5},
                                         {6, 6},  {7, 7},  {9, 9},  {8, 1},  {10, 4},
                                         {11, 4}, {12, 2}, {13, 5}, {14, 4}};

template <size_t N>
int ToKenwood(const ModePair (&table)[N], int mode) {
  for (const ModePair& p : table) {
    if (p.family == mode) {
      return p.kenwood;
    }
  }
  return 0;
}

template <size_t N>
int FromKenwood(const ModePair (&table)[N], int kenwoodMode) {
  for (const ModePair& p : table) {
    if (p.kenwood == kenwoodMode) {
      return p.family;
    }
  }
  return -1;
}

}  // namespace

int ToKenwoodMode(int family, int mode) {
  switch (family) {
    case kIcom:
      return ToKenwood(kIcomModes, mode);
    case kYaesu:
      return ToKenwood(kYaesuModes, mode);
    case kYaesuAscii:
      return ToKenwood(kYaesuAsciiModes, mode);
    default:
      return mode >= 0 && mode <= 9 ? mode : 0;
  }
}

int FromKenwoodMode(int family, int kenwoodMode) {
  switch (family) {
    case kIcom:
      return FromKenwood(kIcomModes, kenwoodMode);
    case kYaesu:
      return FromKenwood(kYaesuModes, kenwoodMode);
    case kYaesuAscii:
      return FromKenwood(kYaesuAsciiModes, kenwoodMode);
    default:
      return kenwoodMode >= 1 && kenwoodMode <= 9 ? kenwoodMode : -1;
  }
}

}  // namespace tavlorin
