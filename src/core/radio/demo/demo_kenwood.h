// The demonstration radios of the Kenwood and Elecraft families: reads answered from the
// radio's value map and writes stored into it, with the side effects a real radio would show
// (the S-meter sweeping while the window polls, the noise blanker stepping, "IF" following
// transmit, mode and VFO changes, VFO swaps and copies).
//
// Keys are the command letters ("FA", "MR0001"); on the "TS-2000" and "TS-480" the "AG" and
// "SQ" commands carry the receiver in a third character ("AG0", "SQ1"). Values are the reply
// text after the letters, without ";". A missing key reads as "".
//
// Pure over the map passed in: no I/O, no clock. Used on the radio's thread only, like the map.
#pragma once

#include <string>
#include <string_view>

#include "radio/value_map.h"

namespace tavlorin {

// Which demonstration radio answers: the family (Elecraft or Kenwood) and the model name
// ("TS-2000: Demo"; only the part before ":" matters).
struct DemoKenwoodRadio {
  int family = 0;
  std::string_view model;
};

// The value text a read of `command` ("FA", "AG0;") returns; advances the S-meter on
// frequency reads.
std::string DemoKenwoodRead(const DemoKenwoodRadio& radio, ValueMap& values,
                            std::string_view command);
// Stores a written command ("FA00014070000;", "TX;", "SW09;") with its effects; returns 1
// (a demonstration write never fails).
int DemoKenwoodWrite(const DemoKenwoodRadio& radio, ValueMap& values, std::string_view command);

// "%-4.4u": the meter values are kept as four digits ("0009").
std::string DemoMeterText(unsigned value);

}  // namespace tavlorin
