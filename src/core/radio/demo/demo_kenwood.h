// The demonstration radios of the Kenwood and Elecraft families: reads answered from the
// radio's value map and writes stored into it, with the side effects a real radio would show
// (the S-meter sweeping while the window polls, the noise blanker stepping, "IF" following
// transmit, mode and VFO changes, VFO swaps and copies).
//
// Keys are the command letters ("FA", "MR0001"); on models whose "AG" and "SQ" commands carry
// the receiver in a third character (the TS-2000 and TS-480: "AG0", "SQ1") that character is
// part of the key. Values are the reply text after the letters, without ";". A missing key
// reads as "".
//
// Pure over the map passed in: no I/O, no clock. Used on the radio's thread only, like the map.
#pragma once

#include <string>
#include <string_view>

#include "radio/radio_models.h"
#include "radio/value_map.h"

namespace tavlorin {

// Which demonstration radio answers: the family (Elecraft or Kenwood) and what its model's
// properties say about the receiver digit and the S-meter (the command the driver reads it
// with, and its full scale: the meter sweeps 0 to that scale while the window polls).
struct DemoKenwoodRadio {
  int family = 0;
  bool receiverDigit = false;
  std::string meterKey = "SM";
  unsigned meterScale = 30;

  static DemoKenwoodRadio Of(int family, const RadioModel& model);
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
