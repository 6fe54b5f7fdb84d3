#include "logbook/logbook_defaults.h"

namespace tavlorin {
namespace {

constexpr DefaultBand kBands[] = {
    {"2190m", 130000, 140000},
    {"160m", 1800000, 2000000},
    {"80m", 3500000, 4000000},
    {"60m", 5200000, 5500000},
    {"40m", 7000000, 7300000},
    {"30m", 10100000, 10150000},
    {"20m", 14000000, 14350000},
    {"17m", 18000000, 18200000},
    {"15m", 21000000, 21450000},
    {"12m", 24850000, 25000000},
    {"10m", 28000000, 30000000},
    {"6m", 50000000, 54000000},
    {"4m", 70000000, 70500000},
    {"2m", 144000000, 148000000},
    {"1.25m", 220000000, 225000000},
    {"70cm", 420000000, 460000000},
    {"33cm", 0, 0},
    {"23cm", 1240000000, 1300000000},
    // Above the signed 32-bit range: stored as the unsigned bit pattern, compared unsigned.
    {"13cm", 2320000000u, 2450000000u},
    {"9cm", 0, 0},
    {"6cm", 0, 0},
    {"3cm", 0, 0},
    {"1.25cm", 0, 0},
    {"6mm", 0, 0},
    {"4mm", 0, 0},
    {"2.5mm", 0, 0},
    {"2mm", 0, 0},
    {"1mm", 0, 0},
};
static_assert(std::size(kBands) == 28);

constexpr DefaultMode kModes[] = {
    {"LSB", {1, 0, 0, 0}},     {"USB", {2, 8, 0, 0}},    {"SSB", {0, 0, 0, 0}},
    {"CW", {3, 4, 15, 16}},    {"FM", {18, 6, 7, 0}},    {"AM", {5, 17, 0, 0}},
    {"ASCI", {0, 0, 0, 0}},    {"ATV", {0, 0, 0, 0}},    {"CLO", {0, 0, 0, 0}},
    {"FAX", {0, 0, 0, 0}},     {"FSK", {13, 14, 0, 0}},  {"GTOR", {0, 0, 0, 0}},
    {"HELL", {0, 0, 0, 0}},    {"HFSK", {0, 0, 0, 0}},   {"JT44", {0, 0, 0, 0}},
    {"MFSK8", {0, 0, 0, 0}},   {"MFSK16", {0, 0, 0, 0}}, {"MTTY", {0, 0, 0, 0}},
    {"MT63", {0, 0, 0, 0}},    {"PAC", {0, 0, 0, 0}},    {"PAC2", {0, 0, 0, 0}},
    {"PAC3", {0, 0, 0, 0}},    {"PCW", {0, 0, 0, 0}},    {"PKT", {9, 0, 0, 0}},
    {"PSK31", {19, 20, 0, 0}}, {"PSK63", {0, 0, 0, 0}},  {"PSK125", {0, 0, 0, 0}},
    {"Q15", {0, 0, 0, 0}},     {"RTTY", {10, 11, 0, 0}}, {"SSTV", {0, 0, 0, 0}},
    {"THRB", {0, 0, 0, 0}},    {"TOR", {0, 0, 0, 0}},
};
static_assert(std::size(kModes) == 32);

}  // namespace

std::span<const DefaultBand> DefaultBands() { return kBands; }
std::span<const DefaultMode> DefaultModes() { return kModes; }

std::map<int, std::string> BuildRadioModeMap() {
  std::map<int, std::string> map;
  for (const DefaultMode& mode : kModes) {
    for (int code : mode.radioModes) {
      map[code] = mode.title;
    }
  }
  return map;
}

}  // namespace tavlorin
