// The answers of an emulated Kenwood radio: what this program replies when another program
// (a logger, a digital-mode program) sends it Kenwood commands through an emulated port.
//
// AnswerKenwoodCommand turns one command ("FA;", "MD2;", "IF;") and a snapshot of the radio
// window's state into the reply text and, for a set-command, the change to make on the real
// radio. Queries are answered from the snapshot; set-commands are answered with silence, as a
// Kenwood radio does, and carry an action; anything unknown or malformed is answered "?;".
//
// Commands understood (letters in either case):
//   FA FB        VFO A/B frequency, 11 digits        MD   mode digit (1 LSB 2 USB 3 CW 4 FM
//   IF           38-character status                       5 AM 6 FSK 7 CW-R 9 FSK-R)
//   FR FT        receive/transmit VFO (0 A, 1 B)     ID   "ID019;" (a TS-2000)
//   TX RX        transmit / receive                  PS   power ("PS1;"; switching is ignored)
//   AI           auto-information ("AI0;": this port never sends unasked)
//   SM SM0       S-meter, four digits
//
// Pure: no I/O, no clock, no state. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavlorin {

// What the emulated radio shows, taken from the radio window. Frequencies in hertz (0 = not
// known); `mode` is a Kenwood mode digit (0 = not known).
struct EmulatedRadioState {
  uint32_t frequencyA = 0;
  uint32_t frequencyB = 0;
  int mode = 0;
  int receiveVfo = 0;  // 0 = A, 1 = B
  int transmitVfo = 0;
  bool transmitting = false;
  int sMeter = 0;  // 0..30
};

// A change the client asked for.
struct EmulationAction {
  enum class Kind { kSetFrequency, kSetMode, kSetReceiveVfo, kSetTransmitVfo, kTransmit };
  Kind kind = Kind::kSetFrequency;
  int vfo = 0;         // kSetFrequency: 0 = A, 1 = B
  uint32_t value = 0;  // hertz, mode digit, VFO number, or 1/0 for transmit/receive
};

struct EmulationAnswer {
  std::string reply;  // "" = nothing to send
  std::optional<EmulationAction> action;
};

inline constexpr std::string_view kEmulatedRadioId = "019";
inline constexpr std::string_view kEmulationRefusal = "?;";

EmulationAnswer AnswerKenwoodCommand(std::string_view command, const EmulatedRadioState& state);

// The 35 characters after "IF": frequency (11), 5 blanks, RIT/XIT offset "+0000", RIT, XIT,
// memory bank and channel "000", TX/RX at 26, mode at 27, VFO at 28, scan, split, tone,
// tone number "00", shift.
std::string EmulatedStatusText(const EmulatedRadioState& state);

}  // namespace tavlorin
