// RadioEmulation: the radio window's side of an emulated port. It answers the Kenwood commands
// another program sends (through CEmulComPortThread) from the window's view of the connected
// radio, and turns that program's set-commands into the window's own user actions, so they
// reach the real radio through the worker queue ahead of the polls. A radio of another family
// is switched through its own controls ("VFO B", "Split", "TX" of its control definitions); a
// command it has no control for is answered "?;".
//
// A set-command takes effect on the radio only when the worker has run it, but the program
// that sent it usually reads the value straight back. So a value just set is answered until
// the window's poll shows it (or for at most kPendingHold, after which the radio's own value
// wins again, as when the radio refused it).
//
// Thread: the window's thread only, like the view it holds. The view and the clock must
// outlive it.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "radio/emulation/kenwood_emulation_answerer.h"
#include "radio/radio_view.h"
#include "shell/clock.h"

namespace tavlorin {

class RadioEmulation {
 public:
  // `family` is the connected radio's Manufacturer code (after Connect).
  RadioEmulation(CRadioView& view, int family, Clock& clock = SystemClock())
      : view_(view), family_(family), clock_(clock) {}

  // The reply to one command (with its ";"); "" when there is nothing to send back.
  std::string Answer(const std::string& command);
  // The S-meter as the window last showed it (the view keeps no copy).
  void NoteSMeter(int reading) { sMeter_ = reading; }
  EmulatedRadioState Snapshot();

  static constexpr std::chrono::milliseconds kPendingHold{3000};

 private:
  // A value set through the port that the window's poll has not confirmed yet.
  struct Pending {
    bool active = false;
    uint32_t value = 0;
    Clock::TimePoint until{};
  };
  uint32_t Overlay(Pending& pending, uint32_t shown);
  void Hold(Pending& pending, uint32_t value);
  // False when the radio has no control for it (the client is answered "?;").
  bool Apply(const EmulationAction& action);
  bool SpeaksKenwood() const;
  bool HasButton(const std::string& name) const;

  static constexpr const char* kVfoBButton = "VFO B";
  static constexpr const char* kSplitButton = "Split";
  static constexpr const char* kTxButton = "TX";

  CRadioView& view_;
  const int family_;
  Clock& clock_;
  Pending pendingA_;
  Pending pendingB_;
  Pending pendingMode_;
  int receiveVfo_ = 0;
  int transmitVfo_ = 0;
  bool transmitting_ = false;
  int sMeter_ = 0;
};

}  // namespace tavlorin
