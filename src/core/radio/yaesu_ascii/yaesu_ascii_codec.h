// The text rules of Yaesu's ASCII command set (FT-991A, FT-891, FT-710, FTDX10, FTDX101D/MP,
// FTDX3000, FTDX1200, FT-450D): building commands and reading the values out of replies.
//
// Wire layout (echoless, every message ends in ";"; a set command is answered by nothing):
//
//   sent:     F A ;                    read VFO A
//   reply:    F A 0 1 4 0 7 4 0 0 0 ;  nine digits of hertz (eight on the FTDX3000, FTDX1200
//                                      and FT-450D)
//   sent:     M D 0 ;                  read the mode of VFO A (MD1: VFO B / the sub receiver)
//   reply:    M D 0 C ;                one character: 1-9, then A-E (C = DATA-USB)
//   reply:    I D 0 5 7 0 ;            the radio's identity number (FT-991A)
//   refusal:  ? ;                      the radio does not know the command, or is busy
//
// "IF" (the status of the VFO in use), after the letters:
//   memory channel (3) | frequency (8 or 9) | clarifier sign and offset (5) | RX clarifier (1) |
//   TX clarifier (1) | mode (1) | VFO/memory (1) | tone (1) | 00 | shift (1)
//   IF 001 014074000 +0000 0 0 2 0 0 00 0 ;
//
// Pure functions: no I/O, no clock, no state. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "radio/frequency.h"

namespace tavlorin::yaesu_ascii {

inline constexpr char kTerminator = ';';
inline constexpr int kDefaultFrequencyDigits = 9;
inline constexpr std::string_view kRefusal = "?;";

// "FA014074000;": the letters and the frequency in `digits` digits. Empty when the frequency
// does not fit in that many digits (a radio given a cut number would tune somewhere else).
std::string FrequencyCommand(std::string_view letters, Frequency hz, int digits);
// The value of an "FA"/"FB" reply: exactly `digits` decimal digits; nullopt otherwise.
std::optional<Frequency> ParseFrequency(std::string_view value, int digits);

// The mode character for a mode code: 1-9 as digits, 10-15 as "A"-"F"; 0 for any other code.
char ModeLetter(uint8_t code);
// The code of a mode character ("C" -> 12, lower case too); nullopt for anything else.
std::optional<uint8_t> ModeCode(char letter);
// "MD0C;": the mode of VFO A (receiver 0) or VFO B / the sub receiver (1). Empty for a code
// that has no character.
std::string ModeCommand(int receiver, uint8_t code);

// What the "IF" status tells.
struct Status {
  Frequency hz = 0;
  uint8_t mode = 0;     // the mode code, as ModeCode reads it
  bool memory = false;  // a memory channel (not a VFO) is in use
};
// The "IF" value (after the letters, without ";") of a radio whose frequencies have `digits`
// digits; nullopt when it does not have that shape.
std::optional<Status> ParseStatus(std::string_view value, int digits);

// The identity number of an "ID" value: four digits ("0570"); nullopt for anything else.
std::optional<std::string> ParseIdentity(std::string_view value);

// The command as sent: ";" appended once when missing.
std::string TerminatedCommand(std::string_view command);
// The command without its final ";" (what the reply starts with).
std::string_view CommandLetters(std::string_view command);
// True when `reply` (with its ";") answers `letters`: it starts with them, carries a value and
// is not a refusal.
bool IsAnswer(std::string_view reply, std::string_view letters);
// The reply's value: the text after the letters, without the final ";".
std::string ReplyValue(std::string_view reply, std::string_view letters);

}  // namespace tavlorin::yaesu_ascii
