// HeadlessRadioWindow: a radio window without widgets, for the command-line tool and the
// emulated-port server: a CRadioView whose timers and result messages run on an EventLoop, and
// whose panel is a set of callbacks.
//
// Thread: create, use and destroy it on the loop's thread. Results the worker posts after the
// window is gone are dropped. The radio, the worker and the loop must outlive it; Connect the
// radio before creating it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "radio/radio_view.h"
#include "shell/event_loop.h"

namespace tavlorin {

class HeadlessRadioWindow final : public RadioViewHost {
 public:
  struct Callbacks {
    std::function<void(Frequency current, Frequency a, Frequency b)> frequency;
    std::function<void(int mode)> mode;
    std::function<void(int reading)> sMeter;
    std::function<void(bool transmitting)> transmit;
    std::function<void(const std::string& reason)> linkLost;
    std::function<void()> closed;
  };

  HeadlessRadioWindow(CatRadio& radio, RadioWorker& worker, EventLoop& loop,
                      RadioViewOptions options, Callbacks callbacks);
  ~HeadlessRadioWindow() override;

  CRadioView& view() { return view_; }
  void Start() { view_.StartPolling(); }
  // Queues the close request and runs the loop until it came back (at most `limit`).
  bool CloseAndWait(std::chrono::milliseconds limit);
  bool closed() const { return closed_; }

  // RadioViewHost
  void SetTimer(int id, std::chrono::milliseconds interval) override;
  void KillTimer(int id) override;
  void ShowFrequency(Frequency current, Frequency a, Frequency b) override;
  void ShowDropdown(const std::string& name, int selection) override;
  void SMeterChanged(int reading) override;
  void TransmitChanged(bool transmitting) override;
  void LinkLost(const std::string& reason) override;
  void Closed() override;

 private:
  class Mailbox;

  EventLoop& loop_;
  Callbacks callbacks_;
  std::shared_ptr<Mailbox> mailbox_;
  CRadioView view_;
  bool closed_ = false;
  bool linkLostReported_ = false;
};

}  // namespace tavlorin
