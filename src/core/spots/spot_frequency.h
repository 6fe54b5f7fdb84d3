// The frequency texts of spot lists: kHz with a decimal, as the clusters write them.
//
// Pure functions; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "radio/frequency.h"

namespace tavlorin {

// Spots above this many kHz are never tuned to (4 000 000 kHz is 4 GHz).
inline constexpr unsigned long kHighestSpotKhz = 4000000;

// "14025" -> "14025.0", "14025." -> "14025.0"; other texts (and "") unchanged.
std::string CompleteFrequencyText(std::string_view khz);

// The whole kHz before the first "."; nullopt when the text does not start with a digit.
std::optional<unsigned long> WholeKilohertz(std::string_view khz);

// The hertz of a spot's kHz text: whole kHz x 1000 plus the first three digits after the "."
// ("14025.5" -> 14025500, "7003.25" -> 7003250). nullopt above kHighestSpotKhz or when the
// text holds no number.
std::optional<Frequency> SpotHertz(std::string_view khz);

}  // namespace tavlorin
