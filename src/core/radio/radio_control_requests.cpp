// The radio window's requests about its controls (1001-1010, 1013-1016), run on the worker
// through the model's control definitions.
#include "radio/cat_radio.h"
#include "radio/control_operations.h"
#include "radio/radio_controls.h"
#include "radio/radio_request_handler.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

constexpr std::chrono::milliseconds kElecraftDropdownWait{250};
constexpr uint32_t kNoValue = 0xFFFFFFFFu;

// The radio's operations with its model's controls.
class Controls {
 public:
  Controls(CatRadio& radio, RadioResult& result)
      : radio_(radio),
        result_(result),
        controls_(ControlsForModel(radio.manufacturer, radio.definition())) {}

  const ControlDefinition* Find(const std::string& name, ControlKind kind) const {
    const ControlDefinition* c = controls_->Find(name);
    return c != nullptr && c->kind == kind ? c : nullptr;
  }
  const ControlDefinition* FindSettable(const std::string& name) const {
    const ControlDefinition* c = controls_->Find(name);
    return c != nullptr && c->settable() ? c : nullptr;
  }

  std::optional<uint32_t> Read(const ControlDefinition& c) {
    std::string why;
    std::optional<ControlText> text = ParseControlText(radio_.manufacturer, c.read, false, &why);
    return text ? ReadControlText(radio_, *text) : std::nullopt;
  }

  bool Set(const ControlDefinition& c, uint32_t value, bool off = false) {
    const std::string& command = off && !c.setOff.empty() ? c.setOff : c.set;
    std::string why;
    std::optional<ControlText> text = ParseControlText(radio_.manufacturer, command, true, &why);
    return text && SetControlText(radio_, *text, value, c.name);
  }

  // Reads every control `poll` names into the result, as far as the radio answers. A user
  // action waiting (abort) or a lost port ends the group: what was read so far is reported.
  void ReadGroup(ControlPoll poll) {
    for (const ControlDefinition* c : controls_->PolledBy(poll)) {
      if (radio_.abort.load() || radio_.link().lost()) {
        return;
      }
      std::optional<uint32_t> value = Read(*c);
      if (!value) {
        continue;
      }
      switch (c->kind) {
        case ControlKind::kButton:
        case ControlKind::kStatus:
          result_.states.emplace_back(c->name, c->IsOn(*value));
          break;
        case ControlKind::kDropdown:
          result_.dropdowns.emplace_back(c->name, static_cast<int>(*value));
          break;
        case ControlKind::kMeter:
          result_.meters.emplace_back(c->name, static_cast<int>(*value));
          if (result_.meters.size() <= 2) {  // the panel's two meters; the rest by name only
            Meter(result_.meters.size() == 1 ? result_.mainMeter : result_.subMeter, *value,
                  c->max);
          }
          break;
        case ControlKind::kSlider:
          break;  // a slider reads itself (1006)
      }
    }
  }

  void ReadDropdowns() {
    if (!controls_->PolledBy(ControlPoll::kDropdowns).empty()) {
      ReadGroup(ControlPoll::kDropdowns);
    } else {
      result_.dropdowns.emplace_back("Mode", radio_.ReadMode());  // a family without a file
    }
  }

  // `meter` is the Yaesu meter selector of a family without control definitions.
  void ReadMeters(ControlPoll poll, uint8_t meter) {
    if (!controls_->PolledBy(poll).empty()) {
      ReadGroup(poll);
      return;
    }
    const uint8_t value = radio_.ReadSMeter(meter);
    Meter(result_.mainMeter, value, 255);
  }

  bool empty() const { return controls_->empty(); }

 private:
  static void Meter(MeterReading& meter, uint32_t value, uint32_t max) {
    meter.numbers = {static_cast<int>(value), static_cast<int>(max), 1};
    meter.text = std::to_string(value) + " " + std::to_string(max);
  }

  CatRadio& radio_;
  RadioResult& result_;
  std::shared_ptr<const ModelControls> controls_;
};

// A button that only sends, and has no state to show (A/B swap, A=B).
bool IsMomentary(const ControlDefinition& c) {
  return !c.readable() && c.setOff.empty() && c.set.find('%') == std::string::npos &&
         c.set.rfind("state:", 0) != 0 && c.set.rfind("cmd:", 0) != 0;
}

// The mode lists of the panels ("Mode", "Mode A", "Main Mode"): set with the family's mode
// command when the model has no definition for them.
bool IsModeList(const std::string& name) {
  return name.empty() || name == "Mode" || name == "Mode A" || name == "Main Mode";
}

// A command text sent as another program gave it, the value in its place. Refused (nothing
// sent) when the text has a "%" that is not a place for the value.
bool SendCommandText(CatRadio& radio, const std::string& text, uint32_t value) {
  std::optional<std::string> command = FormatControlCommand(text, value);
  if (!command) {
    DebugLog::Write("Command refused: \"%s\" has a %% that is not a value", text.c_str());
    return false;
  }
  return radio.SetValue(*command, text) != 0;
}

void PressButton(Controls& controls, CatRadio& radio, const RadioRequest& request,
                 RadioResult& result) {
  const ControlDefinition* c = controls.Find(request.text, ControlKind::kButton);
  if (c == nullptr || !c->settable()) {
    if (!request.text.empty()) {
      SendCommandText(radio, request.text, request.value1);
    }
    controls.ReadGroup(ControlPoll::kButtons);
    return;
  }
  const bool on = request.value1 != 0;
  const bool sent = controls.Set(*c, c->ValueFor(on), !on);
  if (sent && c->satellite && radio.manufacturer == kYaesu) {
    radio.yaesu().SetSatelliteMode(on);
  }
  controls.ReadGroup(c->poll == ControlPoll::kButtons2 ? ControlPoll::kButtons2
                                                       : ControlPoll::kButtons);
  if (sent && !c->readable() && !IsMomentary(*c)) {
    result.states.emplace_back(c->name, on);  // it cannot be read: it is what was set
  }
}

// 1014 and 1016: a slider or one-value control set; 1014 reads it back.
void SetValueControl(Controls& controls, CatRadio& radio, const RadioRequest& request,
                     RadioResult& result, bool readBack) {
  if (const ControlDefinition* c = controls.FindSettable(request.text)) {
    controls.Set(*c, request.value1);
    if (readBack && c->readable()) {
      result.value = controls.Read(*c).value_or(kNoValue);
    }
    return;
  }
  if (SendCommandText(radio, request.text, request.value1) && readBack) {
    const std::string query = request.text.substr(0, request.text.find('%'));
    result.value = radio.ReadValue(query, query);
  }
}

}  // namespace

void RunControlRequest(const RadioRequest& request, RadioResult& result) {
  CatRadio& radio = *request.radio;
  Controls controls(radio, result);
  switch (request.code) {
    case kReadButtons:
      controls.ReadGroup(ControlPoll::kButtons);
      break;
    case kReadButtons2:
      controls.ReadGroup(ControlPoll::kButtons2);
      break;
    case kReadStatusItems:
      controls.ReadGroup(ControlPoll::kStatus);
      break;
    case kStartOfPolling:
      controls.ReadGroup(ControlPoll::kStart);
      break;
    case kPhase3Read:
      controls.ReadGroup(ControlPoll::kSlow);
      break;
    case kReadDropdowns:
      controls.ReadDropdowns();
      break;
    case kReadRxMeters:
      controls.ReadMeters(ControlPoll::kRxMeters, 0);
      break;
    case kReadTxMeters:
      controls.ReadMeters(ControlPoll::kTxMeters, 2);
      break;
    case kReadSlider:
      if (const ControlDefinition* c = controls.Find(request.text, ControlKind::kSlider)) {
        result.value = controls.Read(*c).value_or(kNoValue);
      } else {
        result.value = radio.ReadValue(request.text, request.text);
      }
      break;
    case kPressButton:
      PressButton(controls, radio, request, result);
      break;
    case kSelectDropdown:
      if (const ControlDefinition* c = controls.Find(request.text, ControlKind::kDropdown);
          c != nullptr && c->settable()) {
        controls.Set(*c, request.value1);
      } else if (IsModeList(request.text)) {
        radio.SetMode(static_cast<uint8_t>(request.value1));  // a family without definitions
      } else {
        DebugLog::Write("No drop-down \"%s\" on this radio", request.text.c_str());
      }
      break;
    case kSetSlider:
      SetValueControl(controls, radio, request, result, true);
      break;
    case kControlValue:
      SetValueControl(controls, radio, request, result, false);
      break;
    case kSetDropdownByCommand:
      if (const ControlDefinition* c = controls.FindSettable(request.text)) {
        controls.Set(*c, request.value1);
      } else {
        SendCommandText(radio, request.text, request.value1);
      }
      if (radio.manufacturer == kElecraft) {
        radio.clock().SleepFor(kElecraftDropdownWait);
      }
      controls.ReadDropdowns();
      break;
    default:
      break;
  }
}

}  // namespace tavlorin
