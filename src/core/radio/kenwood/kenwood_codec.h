// The Kenwood ASCII command language as text rules, shared by the Kenwood (3) and Elecraft (2)
// families: building commands, judging replies and reading numbers out of them.
//
// Wire layout of one exchange (echoless, every message ends in ";"):
//
//   sent:     F A ;                          two command letters, parameters, ";"
//   reply:    F A 0 0 0 1 4 0 7 0 0 0 0 ;    the letters again, the value, ";"
//             0 1 2 . . . . . . . . . 12 13   ("FA"/"FB": 11 digits of hertz, ";" at 13)
//   refusals: ? ;   E ;   O ;                 (not understood or busy, comms error, overflow),
//                                             alone or right after the command letters
//
// Pure functions: no I/O, no clock, no state. Any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "radio/frequency.h"

namespace tavlorin::kenwood {

inline constexpr char kTerminator = ';';
inline constexpr size_t kMaxCommandLength = 252;
inline constexpr size_t kReplyBufferSize = 256;

// The command as sent: at most 252 characters, ";" appended once when missing.
std::string TerminatedCommand(std::string_view command);
// The command text without its final ";" (what a reply starts with).
std::string_view CommandLetters(std::string_view command);

// "%*.*u" with width and precision 11: 14070000 -> "00014070000".
std::string FrequencyDigits(Frequency hz);
// "FA00014070000;" and its kin.
std::string FrequencyCommand(std::string_view letters, Frequency hz);
// "MD" + one digit (mode numbers above 9 keep their last digit only, as the radio would).
std::string ModeCommand(uint8_t mode);
// The same with the model's mode command ("MD", the TS-990S's "MD0"); with `letters` (TS-890S,
// TS-990S) the modes 10 to 15 travel as "A" to "F" ("MDA;").
std::string ModeCommand(std::string_view command, uint8_t mode, bool letters);
// A mode value as ModeCommand writes it: "A" to "F" read as 10 to 15 when `letters` is set.
uint8_t ParseMode(std::string_view value, bool letters);

// A value as the radio's number: leading "0" characters dropped, the rest read as a decimal
// integer up to the first character that is not a digit (blanks and one sign allowed before
// the digits, as the C library reads it). All zeros, empty or no digits read as 0. Negative
// values wrap to their unsigned form.
uint32_t ParseValue(std::string_view text);

// True when `reply` starts with `error` ("?;", "E;", "O;") or has it right after the letters.
bool HasErrorMark(std::string_view reply, std::string_view letters, std::string_view error);
// "FA"/"FB" replies: ";" at index 13 and decimal digits at 2..12.
bool IsFrequencyReplyShape(std::string_view reply);
bool IsFrequencyCommand(std::string_view letters);
// The reply's value: the text after the letters, without the final ";".
std::string ReplyValue(std::string_view reply, std::string_view letters);

// What the Kenwood reader does with one reply while it looks for the answer to `letters`.
enum class KenwoodReplyVerdict {
  kEndSearch,  // ends the search with this reply as the candidate (answer or refusal)
  kSkip,       // not for this command, or an error mark that costs nothing: read the next one
};
KenwoodReplyVerdict JudgeKenwoodReply(std::string_view reply, std::string_view letters);
// Whether the candidate a search ended with is the radio refusing the command ("?;").
bool IsRefusal(std::string_view candidate, std::string_view letters);
// Whether the candidate is the answer to `letters` (not "E;"/"O;" after the letters).
bool IsKenwoodAnswer(std::string_view candidate, std::string_view letters);
// Whether an Elecraft reply answers `letters`: it starts with them and "?;" does not follow.
bool IsElecraftAnswer(std::string_view reply, std::string_view letters);

// The Elecraft "BG" bar graph: 12 and above carry a flag of 12 on top of the reading.
uint8_t ElecraftMeterValue(uint32_t bargraph);

}  // namespace tavlorin::kenwood
