#include "radio/headless_radio_window.h"

namespace tavlorin {

// The window's end of the worker's results: posts each one to the loop, where it reaches the
// view only if the window still exists.
class HeadlessRadioWindow::Mailbox final : public RadioResultTarget,
                                           public std::enable_shared_from_this<Mailbox> {
 public:
  Mailbox(EventLoop& loop, HeadlessRadioWindow* window) : loop_(loop), window_(window) {}

  void PostRadioData(int pending, std::unique_ptr<RadioResult> result) override {
    std::weak_ptr<Mailbox> self = weak_from_this();
    auto shared = std::shared_ptr<RadioResult>(std::move(result));
    loop_.Post([self, pending, shared]() mutable {
      if (auto box = self.lock(); box && box->window_ != nullptr) {
        box->window_->view_.OnRadioData(pending, std::make_unique<RadioResult>(std::move(*shared)));
      }
    });
  }

  void PostUnsolicitedFrequency(Frequency hz) override {
    std::weak_ptr<Mailbox> self = weak_from_this();
    loop_.Post([self, hz] {
      if (auto box = self.lock(); box && box->window_ != nullptr) {
        box->window_->view_.OnUnsolicitedFrequency(hz);
      }
    });
  }

  void Detach() { window_ = nullptr; }

 private:
  EventLoop& loop_;
  HeadlessRadioWindow* window_;
};

HeadlessRadioWindow::HeadlessRadioWindow(CatRadio& radio, RadioWorker& worker, EventLoop& loop,
                                         RadioViewOptions options, Callbacks callbacks)
    : loop_(loop),
      callbacks_(std::move(callbacks)),
      mailbox_(std::make_shared<Mailbox>(loop, this)),
      view_(radio, worker, *this, mailbox_, options) {
  std::weak_ptr<Mailbox> box = mailbox_;
  radio.SetUnsolicitedFrequencySink([box](Frequency hz) {
    if (auto b = box.lock()) {
      b->PostUnsolicitedFrequency(hz);
    }
  });
}

HeadlessRadioWindow::~HeadlessRadioWindow() {
  mailbox_->Detach();
  for (int id : {kTimerRefresh, kTimerWatchdog, kTimerJob1, kTimerJob2, kTimerSlowItems,
                 kTimerSpeakFrequency, kTimerSpeakMode, kTimerEnablePanel}) {
    loop_.KillTimer(id);
  }
}

bool HeadlessRadioWindow::CloseAndWait(std::chrono::milliseconds limit) {
  view_.Close();
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!closed_ && std::chrono::steady_clock::now() < end) {
    loop_.Run(std::chrono::milliseconds(20));
  }
  return closed_;
}

void HeadlessRadioWindow::SetTimer(int id, std::chrono::milliseconds interval) {
  loop_.SetTimer(id, interval, [this](int timer) { view_.OnTimer(timer); });
}

void HeadlessRadioWindow::KillTimer(int id) { loop_.KillTimer(id); }

void HeadlessRadioWindow::ShowFrequency(Frequency current, Frequency a, Frequency b) {
  if (callbacks_.frequency) {
    callbacks_.frequency(current, a, b);
  }
}

void HeadlessRadioWindow::ShowDropdown(const std::string& name, int selection) {
  if (name == "Mode" && callbacks_.mode) {
    callbacks_.mode(selection);
  }
}

void HeadlessRadioWindow::SMeterChanged(int reading) {
  if (callbacks_.sMeter) {
    callbacks_.sMeter(reading);
  }
}

void HeadlessRadioWindow::TransmitChanged(bool transmitting) {
  if (callbacks_.transmit) {
    callbacks_.transmit(transmitting);
  }
}

void HeadlessRadioWindow::LinkLost(const std::string& reason) {
  if (!linkLostReported_ && callbacks_.linkLost) {
    linkLostReported_ = true;
    callbacks_.linkLost(reason);
  }
}

void HeadlessRadioWindow::Closed() {
  closed_ = true;
  if (callbacks_.closed) {
    callbacks_.closed();
  }
}

}  // namespace tavlorin
