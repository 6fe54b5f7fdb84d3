// Control operations: what a control's Read and Set texts (radio_controls.h) do on a radio.
//
// A text is either an operation word ("mode", "smeter:2", "status:16-02", "state:16-02",
// "level:14-01", "vfo:07-01", "memory:08", "cmd:02") or the family's own command notation,
// optionally with a reply field ("IF[26]"). ParseControlText turns it into a ControlText once,
// when the file is read, so a bad text is reported with its line; ReadControlText and
// SetControlText run it through the radio's family operations (CatRadio, and for ICOM and
// Yaesu the driver operations the command layer has no general form for).
//
// The parsing is pure (any thread); Read and Set run on the radio's thread, like every radio
// operation.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavlorin {

class CatRadio;

struct ControlText {
  enum class Op {
    kCommand,  // the family's own command notation (`command`)
    kMode,
    kFilter,
    kSMeter,  // bytes[0]: the meter selector
    kStatus,  // ICOM: bytes[0] command, bytes[1] sub-command (0xFF: none)
    kState,
    kLevel,
    kVfo,  // ICOM: bytes[0] command, bytes[1] data (0xFF: none)
    kMemory,
    kCommandState,  // Yaesu: bytes[0] the function
  };
  Op op = Op::kCommand;
  std::string command;
  uint8_t bytes[2] = {0, 0xFF};
  // A field of a Kenwood-style reply: `fieldLength` characters from `fieldStart`.
  size_t fieldStart = 0;
  size_t fieldLength = 0;         // 0: the whole value
  bool fieldIsCharacter = false;  // "[start,char]": the value is the character's code
};

// For reading (`forSet` false) or setting a control of `family`. nullopt with *why set when the
// text is not valid there ("status: is for ICOM radios", "\"1G-02\" is not hexadecimal").
std::optional<ControlText> ParseControlText(int family, std::string_view text, bool forSet,
                                            std::string* why);

// The value read; nullopt when the radio did not answer (the caller keeps what it showed).
std::optional<uint32_t> ReadControlText(CatRadio& radio, const ControlText& text);
// Sets `value` (a button's on/off value, a slider's level, a choice); false when the command
// could not be formed or the radio refused it.
bool SetControlText(CatRadio& radio, const ControlText& text, uint32_t value,
                    const std::string& label);

}  // namespace tavlorin
