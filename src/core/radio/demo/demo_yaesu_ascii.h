// The demonstration radio of Yaesu's ASCII command set ("FT-991: Demo"): reads answered from
// the radio's value map, writes stored into it, with the side effects a real FT-991 shows: the
// S-meter moving while the window polls, "IF" following the frequency and mode of VFO A, the
// VFOs swapped ("SV") and copied ("AB", "BA").
//
// Keys are what a read sends without ";" ("FA", "MD0", "AG0", "RM1"); values the reply text
// after them. A write ("MD0C;", "AG0128;") is stored under the longest key of the map that
// starts it, or under its two letters when the map has none ("TX1;" -> "TX"). A missing key
// reads as "" (which the driver reads as no answer).
//
// Pure over the map passed in: no I/O, no clock. Used on the radio's thread only, like the map.
#pragma once

#include <string>
#include <string_view>

#include "radio/value_map.h"

namespace tavlorin {

// The value text a read of `command` ("FA", "MD0;") returns; advances the S-meter ("SM0") on
// each "FA" read.
std::string DemoYaesuAsciiRead(ValueMap& values, std::string_view command);
// Stores a written command with its effects; returns 1 (a demonstration write never fails).
int DemoYaesuAsciiWrite(ValueMap& values, std::string_view command);

}  // namespace tavlorin
