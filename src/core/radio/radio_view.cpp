#include "radio/radio_view.h"

#include <cstdio>
#include <thread>

#include "radio/radio_model_properties.h"
#include "radio/radio_settings.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kWatchdogInterval{2000};
constexpr milliseconds kAfterChange{1};
constexpr milliseconds kEnablePanelDelay{500};
constexpr milliseconds kJob1FirstDelay{10000};
constexpr milliseconds kJob2FirstDelay{20000};
constexpr milliseconds kSlowItemsDelay{1000};
constexpr milliseconds kSlowItemsDelaySlowLink{2000};
constexpr milliseconds kBlockLook{50};
constexpr int kBlockMaxLooks = 600;  // 30 s: a worker stuck longer than that is not waited for
const char* const kModeDropdown = "Mode";

std::string SpokenFrequency(Frequency hz) {
  if (hz == 0) {
    return "No frequency";
  }
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", hz / 1e6);
  return std::string(text) + " megahertz";
}

}  // namespace

RadioViewOptions RadioViewOptions::FromSettings(const Settings& settings) {
  RadioViewOptions o;
  o.refreshInterval =
      milliseconds(std::max(1, settings.Get(radio_settings::kRefreshRadioInterval)));
  o.activeOnly = settings.Get(radio_settings::kActiveOnly);
  o.trackDualFast = settings.Get(radio_settings::kTrackDualFast);
  o.voiceFrequencyDelay = milliseconds(settings.Get(radio_settings::kVoiceFreqInterval));
  o.voiceModeDelay = milliseconds(settings.Get(radio_settings::kVoiceModeInterval));
  return o;
}

CRadioView::CRadioView(CatRadio& radio, RadioWorker& worker, RadioViewHost& host,
                       std::weak_ptr<RadioResultTarget> resultTarget, RadioViewOptions options)
    : radio_(radio),
      worker_(worker),
      host_(host),
      target_(std::move(resultTarget)),
      options_(options) {}

void CRadioView::StartPolling() {
  for (int id : {kTimerRefresh, kTimerWatchdog, kTimerEnablePanel, kTimerJob2, kTimerJob1}) {
    host_.KillTimer(id);
  }
  host_.SetTimer(kTimerRefresh, options_.refreshInterval);
  host_.SetTimer(kTimerWatchdog, kWatchdogInterval);
  host_.SetTimer(kTimerEnablePanel, kEnablePanelDelay);
  if (options_.job2Minutes > 0) {
    host_.SetTimer(kTimerJob2, kJob2FirstDelay);
  }
  if (options_.job1Minutes > 0) {
    host_.SetTimer(kTimerJob1, kJob1FirstDelay);
  }
}

bool CRadioView::Button(const std::string& name) const {
  auto it = buttons_.find(name);
  return it != buttons_.end() && it->second;
}

uint32_t CRadioView::PollSelector() const {
  uint32_t selector = 0;
  switch (radio_.manufacturer) {
    case kElecraft:
    case kYaesu:
    case kTenTec:
      selector = Button("VFO B") ? 1 : 0;
      break;
    case kKenwood:
    case kYaesuAscii:
      selector = Button("VFO B") ? 1 : Button("MEM") ? 3 : 0;
      break;
    default:
      return 0;
  }
  if (dualTracking_ && (options_.trackDualFast || cycle_ > 10)) {
    selector |= kReadBothVfos;
  }
  return selector;
}

void CRadioView::Queue(uint32_t code, uint32_t value1, const std::string& text, uint32_t value2) {
  if (closing_) {
    return;
  }
  auto request = std::make_unique<RadioRequest>();
  request->code = code;
  request->target = target_;
  request->radio = &radio_;
  request->modelName = radio_.modelName;
  request->text = text;
  request->value1 = value1;
  request->value2 = value2;
  worker_.Queue(std::move(request));
}

void CRadioView::OnTimer(int id) {
  if (closing_) {
    return;
  }
  switch (id) {
    case kTimerRefresh:
    case kTimerWatchdog:
      PollCycle();
      break;
    case kTimerSlowItems:
      host_.KillTimer(kTimerSlowItems);
      slowItemsDue_ = true;
      break;
    case kTimerJob1:
    case kTimerJob2: {
      const int minutes = id == kTimerJob1 ? options_.job1Minutes : options_.job2Minutes;
      host_.SetTimer(id, milliseconds(int64_t(minutes) * 60000));
      host_.RunPeriodicJob(id);
      break;
    }
    case kTimerSpeakFrequency:
    case kTimerSpeakMode:
      host_.KillTimer(id);
      SpeakPending();
      break;
    case kTimerEnablePanel:
      host_.KillTimer(kTimerEnablePanel);
      host_.EnablePanel();
      break;
    default:
      break;
  }
}

void CRadioView::PollCycle() {
  if (paused_ || (options_.activeOnly && !host_.IsActiveApplication())) {
    return;
  }
  if (host_.IsLeftButtonDown()) {
    return;
  }
  host_.KillTimer(kTimerRefresh);
  host_.KillTimer(kTimerWatchdog);
  host_.SetTimer(kTimerWatchdog, kWatchdogInterval);
  if (cycle_ == 0) {
    Queue(kStartOfPolling);
    slowItemsDue_ = false;
    host_.SetTimer(kTimerSlowItems, radio_.slowLink ? kSlowItemsDelaySlowLink : kSlowItemsDelay);
  }
  Queue(kReadFrequency, PollSelector());
  if (current_ == 0) {
    return;
  }
  if (!firstCycleDone_) {
    Queue(kReadStatusItems);
    Queue(kReadButtons2);
    Queue(kReadButtons);
    Queue(kReadDropdowns);
  }
  int phase = cycle_ % 4;
  bool meterQueued = false;
  if (receiving_ && !radio_.unsolicitedData && slowItemsDue_) {
    Queue(kReadRxMeters);
    meterQueued = true;
  }
  const bool fullCycle = !firstCycleDone_ || (slowItemsDue_ && !host_.IsLeftButtonDown());
  if (fullCycle) {
    radio_.waitFlag = false;
    if (receiving_ && !meterQueued) {
      Queue(kReadRxMeters);
    } else if (!receiving_) {
      Queue(kReadTxMeters);
    }
    bool sendPhase = !radio_.slowLink || radio_.companionCount != 0;
    if (!firstCycleDone_) {
      phase = 2;
      sendPhase = true;
      firstCycleDone_ = true;
    }
    if (sendPhase) {
      switch (phase) {
        case 0:
          Queue(kReadDropdowns);
          break;
        case 1:
          Queue(kReadStatusItems);
          break;
        case 2:
          for (int slider : sliders_) {
            host_.AskSliderToRefresh(slider);
          }
          break;
        default:
          Queue(kReadButtons);
          Queue(kReadButtons2);
      }
    }
  }
  if (phase == 3) {
    Queue(kPhase3Read);
  }
  ++cycle_;
}

void CRadioView::OnUnsolicitedFrequency(Frequency hz) {
  if (closing_ || hz == 0) {
    return;
  }
  current_ = hz;
  host_.ShowFrequency(current_, frequencyA_, frequencyB_);
}

bool CRadioView::HandleFrequencies(const RadioResult& r) {
  const bool changed = (r.frequencyCurrent != 0 && r.frequencyCurrent != current_) ||
                       (r.frequencyA != 0 && r.frequencyA != frequencyA_) ||
                       (r.frequencyB != 0 && r.frequencyB != frequencyB_);
  if (!changed) {
    return false;
  }
  if (r.frequencyA != 0) {
    frequencyA_ = r.frequencyA;
  }
  if (r.frequencyB != 0) {
    frequencyB_ = r.frequencyB;
  }
  Frequency current = r.frequencyCurrent;
  if (dualTracking_ && (r.vfoSelector & kReadBothVfos)) {
    current = Button("VFO B") ? frequencyB_ : frequencyA_;
  }
  if (current != 0) {
    current_ = current;
  }
  host_.ShowFrequency(current_, frequencyA_, frequencyB_);
  if (options_.speech) {
    speakFrequencyPending_ = true;
    host_.KillTimer(kTimerSpeakFrequency);
    host_.SetTimer(kTimerSpeakFrequency, options_.voiceFrequencyDelay);
  }
  return true;
}

void CRadioView::HandleStates(const RadioResult& r) {
  for (const auto& [name, on] : r.states) {
    buttons_[name] = on;
    host_.ShowButtonState(name, on);
    if (name == "TX" && on == receiving_) {
      receiving_ = !on;
      host_.TransmitChanged(on);
      if (!on) {
        host_.ShowMainMeter(MeterReading{});
      }
    }
  }
}

void CRadioView::HandleDropdowns(const RadioResult& r) {
  for (const auto& [name, selection] : r.dropdowns) {
    host_.ShowDropdown(name, selection);
    if (name == kModeDropdown && selection != mode_) {
      mode_ = selection;
      if (options_.speech) {
        speakModePending_ = true;
        host_.KillTimer(kTimerSpeakMode);
        host_.SetTimer(kTimerSpeakMode, options_.voiceModeDelay);
      }
    }
  }
}

void CRadioView::HandleMeters(const RadioResult& r) {
  if (!r.meters.empty()) {
    host_.ShowMeters(r.meters);
  }
  // The transmit meters are shown only while transmitting: a late result from before the
  // switch back to receive must not leave them on the panel.
  if (r.mainMeter.numbers[0] == 0 || (r.code == kReadTxMeters && receiving_)) {
    return;
  }
  MeterReading main = r.mainMeter;
  main.text = std::to_string(main.numbers[0]) + " " + std::to_string(main.numbers[1]);
  host_.ShowMainMeter(main);
  if (r.code != kReadTxMeters) {
    host_.SMeterChanged(main.numbers[0]);  // the logbook and interfaces take the S-meter only
  }
  if (r.subMeter.numbers[0] != 0) {
    host_.ShowSubMeter(r.subMeter);
  }
}

void CRadioView::OnRadioData(int pending, std::unique_ptr<RadioResult> result) {
  if (!result) {
    return;
  }
  const RadioResult& r = *result;
  if (closing_ && r.code != kClose) {
    return;
  }
  if (r.linkLost) {
    host_.LinkLost(r.linkLostReason);
  }
  if (current_ == 0 && r.code != kReadFrequency && r.code != kClose) {
    return;
  }
  bool changed = false;
  switch (r.code) {
    case kReadFrequency:
    case kSetFrequency:
    case kStepFrequency:
      changed = HandleFrequencies(r) && r.code == kReadFrequency;
      break;
    case kReadButtons:
    case kReadButtons2:
    case kPressButton:
      HandleStates(r);
      break;
    case kReadStatusItems:
      host_.ShowStatusItems(r.states);
      break;
    case kStartOfPolling:
    case kPhase3Read:
      HandleStates(r);
      HandleDropdowns(r);
      break;
    case kReadDropdowns:
      HandleDropdowns(r);
      break;
    case kReadSlider:
    case kSetSlider:
      if (!radio_.definition().Has(model_property::kSlidersWriteOnly) && r.value != 0xFFFFFFFFu) {
        host_.RefreshSlider(int(r.sliderId), r.value);
      }
      break;
    case kSelectDropdown:
      Queue(kReadDropdowns);
      break;
    case kClose:
      host_.Closed();
      return;
    default:
      break;
  }
  if (r.code == kReadRxMeters || r.code == kReadTxMeters || r.code == kSetFrequency ||
      r.code == kStepFrequency) {
    HandleMeters(r);
  }
  if (pending == 0) {
    RestartRefresh(changed);
  }
  host_.KillTimer(kTimerWatchdog);
  host_.SetTimer(kTimerWatchdog, kWatchdogInterval);
}

void CRadioView::RestartRefresh(bool changed) {
  host_.KillTimer(kTimerRefresh);
  host_.SetTimer(kTimerRefresh, changed ? kAfterChange : options_.refreshInterval);
}

void CRadioView::SpeakPending() {
  std::string text;
  if (speakFrequencyPending_ && speakModePending_) {
    text = SpokenFrequency(current_) + ", mode " + std::to_string(mode_);
  } else if (speakFrequencyPending_) {
    text = SpokenFrequency(current_);
  } else if (speakModePending_) {
    text = "mode " + std::to_string(mode_);
  }
  speakFrequencyPending_ = speakModePending_ = false;
  host_.KillTimer(kTimerSpeakFrequency);
  host_.KillTimer(kTimerSpeakMode);
  if (!text.empty()) {
    host_.Speak(text);
  }
}

void CRadioView::Close() {
  if (closing_) {
    return;
  }
  Queue(kClose);
  closing_ = true;
  for (int id : {kTimerRefresh, kTimerWatchdog, kTimerJob1, kTimerJob2, kTimerSlowItems,
                 kTimerSpeakFrequency, kTimerSpeakMode, kTimerEnablePanel}) {
    host_.KillTimer(id);
  }
}

void CRadioView::SetFrequency(Frequency hz, int vfo) {
  if (hz == 0 || hz > kMaxTypedFrequency) {
    return;
  }
  uint32_t value2 = (uint32_t(vfo) & 0x3u) << 2;
  if (dualTracking_) {
    value2 |= kReadBothVfos;
  }
  Queue(kSetFrequency, hz, {}, value2);
}

void CRadioView::StepFrequency(int32_t stepHz, int vfo) {
  Queue(kStepFrequency, uint32_t(stepHz), {}, uint32_t(vfo) & 0x1u);
}

std::shared_ptr<const ModelControls> CRadioView::controls() const {
  return ControlsForModel(radio_.manufacturer, radio_.definition());
}

void CRadioView::SelectMode(int mode) { SelectDropdown(kModeDropdown, uint32_t(mode)); }

void CRadioView::PressButton(const std::string& name) { SetButton(name, !Button(name)); }

void CRadioView::SetButton(const std::string& name, bool on) {
  Queue(kPressButton, on ? 1 : 0, name);
}

void CRadioView::SelectDropdown(const std::string& name, uint32_t value) {
  Queue(kSelectDropdown, value, name);
}

void CRadioView::SetDropdownByCommand(const std::string& name, uint32_t value) {
  Queue(kSetDropdownByCommand, value, name);
}

void CRadioView::SetSlider(int sliderId, const std::string& name, uint32_t value) {
  Queue(kSetSlider, value, name, uint32_t(sliderId));
}

void CRadioView::ReadSlider(int sliderId, const std::string& name) {
  Queue(kReadSlider, 0, name, uint32_t(sliderId));
}

void CRadioView::SetControlValue(const std::string& name, uint32_t value) {
  Queue(kControlValue, value > 255 ? 255 : value, name);
}

void CRadioView::SendCommand(const std::string& command) { Queue(kSendTester, 0, command); }

void CRadioView::Block(bool on) {
  blocked_ = on;
  if (!on) {
    return;
  }
  for (int look = 0; look < kBlockMaxLooks && !worker_.Idle(); ++look) {
    std::this_thread::sleep_for(kBlockLook);
  }
}

}  // namespace tavlorin
