#include "radio/emulation/radio_emulation.h"

#include <algorithm>

#include "link/manufacturer.h"
#include "radio/emulation/emulation_modes.h"

namespace tavlorin {

bool RadioEmulation::SpeaksKenwood() const { return family_ == kKenwood || family_ == kElecraft; }

uint32_t RadioEmulation::Overlay(Pending& pending, uint32_t shown) {
  if (pending.active && (shown == pending.value || clock_.Now() >= pending.until)) {
    pending.active = false;
  }
  return pending.active ? pending.value : shown;
}

void RadioEmulation::Hold(Pending& pending, uint32_t value) {
  pending.active = true;
  pending.value = value;
  pending.until = clock_.Now() + kPendingHold;
}

EmulatedRadioState RadioEmulation::Snapshot() {
  EmulatedRadioState s;
  const Frequency a = view_.frequencyA() != 0 ? view_.frequencyA() : view_.currentFrequency();
  s.frequencyA = Overlay(pendingA_, a);
  s.frequencyB = Overlay(pendingB_, view_.frequencyB());
  const int shownMode = view_.mode() < 0 ? 0 : ToKenwoodMode(family_, view_.mode());
  s.mode = static_cast<int>(Overlay(pendingMode_, static_cast<uint32_t>(shownMode)));
  s.receiveVfo = receiveVfo_;
  s.transmitVfo = transmitVfo_;
  s.transmitting = transmitting_ || view_.transmitting();
  s.sMeter = std::clamp(sMeter_, 0, 30);
  return s;
}

std::string RadioEmulation::Answer(const std::string& command) {
  EmulationAnswer answer = AnswerKenwoodCommand(command, Snapshot());
  if (answer.action && !Apply(*answer.action)) {
    return std::string(kEmulationRefusal);  // the radio behind this port cannot do it
  }
  return answer.reply;
}

bool RadioEmulation::HasButton(const std::string& name) const {
  const ControlDefinition* c = view_.controls()->Find(name);
  return c != nullptr && c->kind == ControlKind::kButton && c->settable();
}

bool RadioEmulation::Apply(const EmulationAction& action) {
  using Kind = EmulationAction::Kind;
  switch (action.kind) {
    case Kind::kSetFrequency:
      Hold(action.vfo == 1 ? pendingB_ : pendingA_, action.value);
      view_.SetFrequency(action.value, action.vfo);
      return true;
    case Kind::kSetMode: {
      const int mode = FromKenwoodMode(family_, static_cast<int>(action.value));
      if (mode < 0) {
        return false;
      }
      Hold(pendingMode_, action.value);
      view_.SelectMode(mode);
      return true;
    }
    case Kind::kSetReceiveVfo: {
      const int vfo = static_cast<int>(action.value);
      if (SpeaksKenwood()) {
        view_.PressButton("FR" + std::to_string(vfo));  // the radio's own command, as sent
      } else if (HasButton(kVfoBButton)) {
        view_.SetButton(kVfoBButton, vfo == 1);
      } else {
        return false;
      }
      receiveVfo_ = vfo;
      transmitVfo_ = vfo;  // as on the radio: choosing the receive VFO sets both
      view_.SetButtonState(kVfoBButton, vfo == 1);
      return true;
    }
    case Kind::kSetTransmitVfo: {
      const int vfo = static_cast<int>(action.value);
      if (SpeaksKenwood()) {
        view_.PressButton("FT" + std::to_string(vfo));
      } else if (HasButton(kSplitButton)) {
        view_.SetButton(kSplitButton, vfo != receiveVfo_);
      } else {
        return false;
      }
      transmitVfo_ = vfo;
      return true;
    }
    case Kind::kTransmit:
      if (!HasButton(kTxButton)) {
        return false;
      }
      transmitting_ = action.value != 0;
      view_.SetButton(kTxButton, transmitting_);
      return true;
  }
  return false;
}

}  // namespace tavlorin
