// The logbook's built-in reference data: the 28 bands and 32 modes that go into an empty
// TBL_BANDS / TBL_MODES, and the map from the radio window's mode numbers to logbook modes.
//
// Constant data; any thread.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>

namespace tavlorin {

struct DefaultBand {
  const char* title;  // also the ADIF name
  uint32_t minFreq;   // hertz; 0 and 0 for bands that never match a frequency
  uint32_t maxFreq;
};

struct DefaultMode {
  const char* title;  // also the ADIF name
  int radioModes[4];  // radio mode numbers that mean this mode; 0 = none
};

inline constexpr const char* kDefaultComment = "ADIF 2.0";

std::span<const DefaultBand> DefaultBands();
std::span<const DefaultMode> DefaultModes();

// Radio mode number -> logbook mode title, built from DefaultModes() in order, later rows
// winning. Key 0 is present (it ends up naming "TOR") because every unused code slot writes
// it; callers must never look up 0.
std::map<int, std::string> BuildRadioModeMap();

}  // namespace tavlorin
