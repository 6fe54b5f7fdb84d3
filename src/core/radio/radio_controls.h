// Radio controls: the buttons, drop-down lists, sliders, meters and status items of a radio
// model's front panel, defined as data, one definition file per family.
//
// The files are definition files of type 17 ("Custom definitions") named
// "TVR Custom Defs - <family>.txt" (ControlFileName): shipped in the shared data folder, and a
// user's copy in the data folder wins over the shipped one. One control a body line, fields
// separated by "|":
//
//   Kind|Name|Caption|Group|Models|Read|Set|Options
//
//   Kind ....: button, status, dropdown, slider or meter
//   Name ....: what requests and settings call it ("VFO B", "MEM", "TX", "AF Gain", "Mode");
//              the radio window looks up "VFO B", "MEM", "TX" and "SAT" by these names
//   Caption .: the text on the panel
//   Group ...: the panel group it is laid out in ("VFO", "Receive", "Transmit", "Meters")
//   Models ..: "*" for every model of the family, or model names separated by ","; a name
//              with "!" in front excludes that model ("*,!TS-440S"). A model matches by its own
//              name or by the command set it borrows (a demonstration model by the model it
//              imitates). When two lines of one name match a model, the first one counts.
//   Read ....: how the value is read (empty: the control cannot be read back), see below
//   Set .....: how it is set (empty: read-only). A button may give the commands that switch it
//              on and off as "ON / OFF" (" / " between them)
//   Options .: separated by ",": buttons and status items "on=N" / "off=N" (the value read
//              that means on / off; default: non-zero is on; a value may also be one character
//              in quotes, 'B', standing for its code) and "group2" (a button read with
//              the second group); sliders and meters "min=N", "max=N" (default 0 and 255);
//              meters "tx" (a transmit meter; default receive); drop-downs the choices as
//              "Caption=N"; any control "start" (read once when polling starts) or "slow"
//              (read every fourth poll); a button "satellite" (switches the Yaesu satellite
//              frequency slots with its state)
//
// Read and Set texts are the family's own command notation (the texts of CatRadio::ReadValue
// and SetValue), or one of these operation words:
//   mode, filter            the family's mode and filter reads and sets
//   smeter, smeter:N        CatRadio::ReadSMeter (N: the Yaesu meter, 0 main, 1 sub, 2 transmit)
//   status:CC[-SS]          ICOM: read the status of command CC, sub-command SS (one or two
//                           BCD bytes)
//   state:CC[-SS]           ICOM: set that state to the value (one BCD byte)
//   level:CC[-SS]           ICOM: set a level to the value (two BCD bytes, 0000 to 0255)
//   vfo:CC[-DD]             ICOM: the VFO command CC with data DD (07-01: VFO B, 07-B0: swap)
//   memory:CC[-DD]          ICOM: the memory command (08: memory mode)
//   cmd:CC                  Yaesu: switch function CC on or off (SetCommandState)
// A read of an ASCII family may pick a field of the reply: "IF[26]" is the character at 26 of
// the value after "IF" read as a number, "RA[0,2]" the two characters from 0, "RMA[0,char]"
// the code of the character at 0 (for choices such as Fast='F'). A Set text carries the
// control's value where "%u", "%d", "%x" or "%X" stands (with an optional 0 and width:
// "AG0%03u"), or "%c" (the value as one printable character); every such place takes the same
// value, and any other "%" makes the line invalid.
//
// Immutable once loaded; any thread may use a ModelControls. The files are read once, on first
// use; ReloadControlDefinitions drops what was read (after the user edited a file).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "radio/radio_models.h"

namespace tavlorin {

enum class ControlKind { kButton, kStatus, kDropdown, kSlider, kMeter };

// Which request of the radio window reads a control.
enum class ControlPoll {
  kButtons,    // 1001: the first button group
  kButtons2,   // 1002: the second button group
  kDropdowns,  // 1003
  kRxMeters,   // 1004
  kStatus,     // 1005: the status strip
  kSlider,     // 1006: on the slider's own request
  kTxMeters,   // 1007
  kStart,      // 1008: once, when polling starts
  kSlow,       // 1009: every fourth poll
};

struct ControlChoice {
  std::string caption;
  uint32_t value = 0;
};

struct ControlDefinition {
  ControlKind kind = ControlKind::kButton;
  std::string name;
  std::string caption;
  std::string group;
  ControlPoll poll = ControlPoll::kButtons;
  std::string read;    // empty: cannot be read back
  std::string set;     // empty: read-only
  std::string setOff;  // buttons: the command that switches off, when it differs from `set`
  std::optional<uint32_t> onValue;   // buttons, status: the value read that means on
  std::optional<uint32_t> offValue;  // ... that means off (on is anything else)
  uint32_t min = 0;                  // sliders, meters
  uint32_t max = 255;
  std::vector<ControlChoice> choices;  // drop-downs, in file order
  bool satellite = false;              // a button that switches the satellite slots

  bool readable() const { return !read.empty(); }
  bool settable() const { return !set.empty(); }
  // Buttons and status items: whether a value read means on.
  bool IsOn(uint32_t value) const;
  // Buttons: the value a set sends for `on` (on=N / off=N, else 1 and 0).
  uint32_t ValueFor(bool on) const;
  // Drop-downs: the choice of a value read; nullptr when none has it.
  const ControlChoice* ChoiceOf(uint32_t value) const;
};

// The controls of one model, in file order.
class ModelControls {
 public:
  ModelControls() = default;
  explicit ModelControls(std::vector<ControlDefinition> controls)
      : controls_(std::move(controls)) {}

  const std::vector<ControlDefinition>& all() const { return controls_; }
  // nullptr when the model has no control of that name.
  const ControlDefinition* Find(std::string_view name) const;
  std::vector<const ControlDefinition*> OfKind(ControlKind kind) const;
  // The controls a request reads, in file order.
  std::vector<const ControlDefinition*> PolledBy(ControlPoll poll) const;
  bool empty() const { return controls_.empty(); }

 private:
  std::vector<ControlDefinition> controls_;
};

// A definition with the models it applies to, as read from a file.
struct FamilyControl {
  ControlDefinition control;
  std::vector<std::string> models;    // empty: every model
  std::vector<std::string> excluded;  // "!" names
  bool AppliesTo(const RadioModel& model) const;
};

// "TVR Custom Defs - Kenwood.txt"; empty for a family without controls (demonstration radios
// take the controls of the family they imitate).
std::string ControlFileName(int family);

// Parses body lines of a family's file (comment lines are skipped). A line that cannot be read
// is skipped and reported in *errors as "line N: why" (N counts the lines given, from 1).
std::vector<FamilyControl> ParseControlDefinitions(int family,
                                                   const std::vector<std::string>& lines,
                                                   std::vector<std::string>* errors = nullptr);

// The controls of `model` in `family` (the family it connects as, after Connect), from the
// user's copy of the family's file or else the shipped one. Never null; empty when the family
// has no file. Problems with a file go to the debug log.
std::shared_ptr<const ModelControls> ControlsForModel(int family, const RadioModel& model);
// Forgets the files read, so the next ControlsForModel reads them again.
void ReloadControlDefinitions();

// The Set text of a control with `value` in its place (see above); nullopt when the text has a
// "%" that is not one of those places, or a width above 11.
std::optional<std::string> FormatControlCommand(std::string_view text, uint32_t value);

}  // namespace tavlorin
