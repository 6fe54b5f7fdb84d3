// The Ten-Tec command codec (Orion, Argonaut): commands are "*" (set) or "?" (query) followed
// by the command letters and, for a set, the value; the radio answers a query with "@", the
// letters and the value, ended by CR. A real Orion takes and gives frequencies in decimal hertz
// ("*AF14070000" sets VFO A, "?BF" reads VFO B); the demonstration table keeps eight hexadecimal
// digits ("?A" -> "00D6B0F0"). Pure functions; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "radio/frequency.h"

namespace tavlorin {

// "*A%08X" / "*B%08X": set VFO A (vfo 0) or B.
std::string TenTecFrequencyCommand(int vfo, Frequency hz);
// "*AF%u" / "*BF%u": set VFO A (vfo 0) or B of a real radio, in decimal hertz.
std::string TenTecDecimalFrequencyCommand(int vfo, Frequency hz);
// "?AF" / "?BF": read VFO A (vfo 0) or B of a real radio.
std::string TenTecFrequencyQuery(int vfo);
// Decimal hertz of an "@AF" / "@BF" reply (at most ten digits, within 32 bits); nullopt for
// anything else.
std::optional<Frequency> ParseTenTecDecimalFrequency(const std::string& value);
// Eight (or fewer) hexadecimal digits of hertz; nullopt for anything else.
std::optional<Frequency> ParseTenTecFrequency(const std::string& value);
// A number in a reply: decimal with an optional sign ("+250", "-50", "2500"), else
// hexadecimal ("03e8"); nullopt when neither.
std::optional<int32_t> ParseTenTecNumber(const std::string& value);
// The S-meter of a "?S" reply: "RM10S5" (Orion: main receiver 10) or hexadecimal digits whose
// first pair is the level (Argonaut, "06800101" reads 6).
uint8_t ParseTenTecSMeter(const std::string& value);
// The query form of a command text: "?RMF" for "?RMF", "*RMF" or "RMF".
std::string TenTecQueryForm(const std::string& command);

}  // namespace tavlorin
