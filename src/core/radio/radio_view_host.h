// RadioViewHost: what the radio window's logic (CRadioView) needs from the program around it:
// window timers, the mouse and application state, and the panel it draws on.
//
// The desktop program implements it with its widgets and timers, the command-line tool with
// its event loop and printed lines, tests with a recording fake. Every call comes on the
// window's thread. Timers behave like window timers: they fire again and again at their
// interval until killed; arming an armed timer restarts it.
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "radio/frequency.h"
#include "radio/radio_request.h"

namespace tavlorin {

class RadioViewHost {
 public:
  virtual ~RadioViewHost() = default;

  virtual void SetTimer(int id, std::chrono::milliseconds interval) = 0;
  virtual void KillTimer(int id) = 0;
  // True while the user holds the left mouse button (dragging a control).
  virtual bool IsLeftButtonDown() const { return false; }
  // True while this program is the active application.
  virtual bool IsActiveApplication() const { return true; }

  // The panel.
  virtual void ShowFrequency(Frequency /*current*/, Frequency /*a*/, Frequency /*b*/) {}
  virtual void ShowButtonState(const std::string& /*name*/, bool /*on*/) {}
  virtual void ShowDropdown(const std::string& /*name*/, int /*selection*/) {}
  virtual void ShowStatusItems(const std::vector<std::pair<std::string, bool>>& /*items*/) {}
  virtual void ShowMainMeter(const MeterReading& /*meter*/) {}
  virtual void ShowSubMeter(const MeterReading& /*meter*/) {}
  // Every meter of the model that was read (receive or transmit set), by control name.
  virtual void ShowMeters(const std::vector<std::pair<std::string, int>>& /*meters*/) {}
  // A slider's value read from the radio (the refresh message with the value), and the
  // phase-2 request that a slider read itself again.
  virtual void RefreshSlider(int /*sliderId*/, uint32_t /*value*/) {}
  virtual void AskSliderToRefresh(int /*sliderId*/) {}
  virtual void EnablePanel() {}

  // The application.
  virtual void TransmitChanged(bool /*transmitting*/) {}
  virtual void SMeterChanged(int /*reading*/) {}
  virtual void Speak(const std::string& /*text*/) {}
  virtual void RunPeriodicJob(int /*timerId*/) {}
  // The radio's port failed: the window should close and tell the user `reason`.
  virtual void LinkLost(const std::string& /*reason*/) {}
  // The close request came back: the window may be destroyed now.
  virtual void Closed() {}
};

}  // namespace tavlorin
