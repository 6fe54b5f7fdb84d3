// Frequency: a radio frequency as an unsigned 32-bit count of hertz; 0 means "not known".
// FormatFrequency gives the panel's text form (14070000 -> "14.070.000").
#pragma once

#include <cstdint>
#include <string>

namespace tavlorin {

using Frequency = uint32_t;

// The highest frequency a user may type (2.999.999.999 on the display).
inline constexpr Frequency kMaxTypedFrequency = 2999999999u;

// "." before the last three digits when there are more than three, then before the last seven
// when the text has eight or more characters: 14070000 -> "14.070.000", 1234 -> "1.234".
std::string FormatFrequency(Frequency hz);
// The same for a floating value, cut at the decimal point first.
std::string FormatFrequency(double hz);

}  // namespace tavlorin
