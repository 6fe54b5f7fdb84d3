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
  if (answer.action) {
    Apply(*answer.action);
  }
  return answer.reply;
}

void RadioEmulation::Apply(const EmulationAction& action) {
  using Kind = EmulationAction::Kind;
  switch (action.kind) {
    case Kind::kSetFrequency:
      Hold(action.vfo == 1 ? pendingB_ : pendingA_, action.value);
      view_.SetFrequency(action.value, action.vfo);
      break;
    case Kind::kSetMode: {
      const int mode = FromKenwoodMode(family_, static_cast<int>(action.value));
      if (mode >= 0) {
        Hold(pendingMode_, action.value);
        view_.SelectMode(mode);
      }
      break;
    }
    case Kind::kSetReceiveVfo:
      receiveVfo_ = static_cast<int>(action.value);
      transmitVfo_ = receiveVfo_;  // as on the radio: choosing the receive VFO sets both
      view_.SetButtonState("VFO B", receiveVfo_ == 1);
      if (SpeaksKenwood()) {
        view_.PressButton("FR" + std::to_string(receiveVfo_));
      }
      break;
    case Kind::kSetTransmitVfo:
      transmitVfo_ = static_cast<int>(action.value);
      if (SpeaksKenwood()) {
        view_.PressButton("FT" + std::to_string(transmitVfo_));
      }
      break;
    case Kind::kTransmit:
      transmitting_ = action.value != 0;
      if (SpeaksKenwood()) {
        view_.PressButton(transmitting_ ? "TX" : "RX");
      }
      break;
  }
}

}  // namespace tavlorin
