// CRadioView: the logic of one radio window without its widgets: the poll cycle on the window
// timers, the requests it queues to the radio worker, and the handling of the results.
//
// Polling adapts itself to the link: the refresh timer (100) is armed again only when a result
// arrives with the worker's queue empty, so a slow link polls slower instead of piling up
// requests; a changed frequency brings the next poll after 1 ms so the panel follows a knob
// being turned; the watchdog timer (101) polls again when a result was lost.
//
// Thread: the window's thread only (timers, results, user actions). It never calls the radio:
// it only queues. The radio, the worker and the host must outlive it. The result target given
// at construction is the window's mailbox: results queued for it are dropped by the worker once
// the host lets go of it.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "radio/cat_radio.h"
#include "radio/radio_controls.h"
#include "radio/radio_request.h"
#include "radio/radio_view_host.h"
#include "radio/radio_worker.h"
#include "shell/settings.h"

namespace tavlorin {

// The window timers and their identifiers.
enum RadioViewTimer : int {
  kTimerRefresh = 100,
  kTimerWatchdog = 101,
  kTimerJob1 = 102,
  kTimerJob2 = 103,
  kTimerSlowItems = 104,
  kTimerSpeakFrequency = 200,
  kTimerSpeakMode = 201,
  kTimerEnablePanel = 203,
};

struct RadioViewOptions {
  std::chrono::milliseconds refreshInterval{300};
  bool activeOnly = false;
  bool trackDualFast = false;
  bool speech = false;
  std::chrono::milliseconds voiceFrequencyDelay{500};
  std::chrono::milliseconds voiceModeDelay{500};
  int job1Minutes = 0;  // timer 102: 0 = off
  int job2Minutes = 0;  // timer 103: 0 = off

  // The options as the user's settings give them.
  static RadioViewOptions FromSettings(const Settings& settings);
};

class CRadioView {
 public:
  CRadioView(CatRadio& radio, RadioWorker& worker, RadioViewHost& host,
             std::weak_ptr<RadioResultTarget> resultTarget, RadioViewOptions options);

  // Arms the timers in their order (100, 101, 203, 103, 102).
  void StartPolling();
  void OnTimer(int id);
  // The radio-data message: `pending` as the worker reported it.
  void OnRadioData(int pending, std::unique_ptr<RadioResult> result);
  // The radio-data message with wParam -1: a frequency the radio sent unasked (0 is ignored).
  void OnUnsolicitedFrequency(Frequency hz);
  // Queues the close request; nothing is queued after it.
  void Close();

  // The controls of the radio's model (its family's control definitions): what the panel is
  // built from. Never null; empty for a family without definitions.
  std::shared_ptr<const ModelControls> controls() const;

  // User actions. A control is named as its definition names it ("VFO B", "AF Gain"); a name
  // that is not one of the model's controls is sent as a command text of the family, with the
  // value where "%u" (or %d, %x, %X) stands.
  void SetFrequency(Frequency hz, int vfo = 0);
  void StepFrequency(int32_t stepHz, int vfo = 0);
  void SelectMode(int mode);
  // 1010: toggles the button (on when the panel shows it off); SetButton asks for a state.
  void PressButton(const std::string& name);
  void SetButton(const std::string& name, bool on);
  // 1013: a drop-down choice (the ControlChoice's value).
  void SelectDropdown(const std::string& name, uint32_t value);
  // 1015: a drop-down set by command; the drop-downs are read again after it.
  void SetDropdownByCommand(const std::string& name, uint32_t value);
  // 1014: a slider moved; its value is read back and handed to RefreshSlider.
  void SetSlider(int sliderId, const std::string& name, uint32_t value);
  // 1006: a slider asks for its value (after AskSliderToRefresh, or when it is created).
  void ReadSlider(int sliderId, const std::string& name);
  // 1016: a one-value control operation (0 to 255).
  void SetControlValue(const std::string& name, uint32_t value);
  void SendCommand(const std::string& command);
  // The block message: on = wait (50 ms a look, bounded) until the worker's queue has run dry.
  void Block(bool on);

  void SetPaused(bool paused) { paused_ = paused; }
  void SetDualTracking(bool on) { dualTracking_ = on; }
  void SetButtonState(const std::string& name, bool on) { buttons_[name] = on; }
  void AddSlider(int sliderId) { sliders_.push_back(sliderId); }

  Frequency currentFrequency() const { return current_; }
  Frequency frequencyA() const { return frequencyA_; }
  Frequency frequencyB() const { return frequencyB_; }
  int mode() const { return mode_; }
  int32_t cycle() const { return cycle_; }
  bool closing() const { return closing_; }
  bool transmitting() const { return !receiving_; }
  bool blocked() const { return blocked_; }
  // A button's state as the panel shows it (false for a button never read or pressed).
  bool buttonOn(const std::string& name) const { return Button(name); }
  // The VFO selector of the next frequency poll.
  uint32_t PollSelector() const;

 private:
  void PollCycle();
  void Queue(uint32_t code, uint32_t value1 = 0, const std::string& text = {}, uint32_t value2 = 0);
  bool Button(const std::string& name) const;
  bool HandleFrequencies(const RadioResult& result);
  void HandleStates(const RadioResult& result);
  void HandleDropdowns(const RadioResult& result);
  void HandleMeters(const RadioResult& result);
  void SpeakPending();
  void RestartRefresh(bool changed);

  CatRadio& radio_;
  RadioWorker& worker_;
  RadioViewHost& host_;
  std::weak_ptr<RadioResultTarget> target_;
  RadioViewOptions options_;

  Frequency current_ = 0;
  Frequency frequencyA_ = 0;
  Frequency frequencyB_ = 0;
  int mode_ = -1;
  std::map<std::string, bool> buttons_;
  std::vector<int> sliders_;
  int32_t cycle_ = 0;
  bool firstCycleDone_ = false;
  bool slowItemsDue_ = false;
  bool closing_ = false;
  bool paused_ = false;
  bool dualTracking_ = false;
  bool receiving_ = true;
  bool blocked_ = false;
  bool speakFrequencyPending_ = false;
  bool speakModePending_ = false;
};

}  // namespace tavlorin
