// ScriptedDevice: a PortDevice for protocol tests, driven by a FakeClock.
//
// A test scripts the radio's side: "when these bytes are written, answer those bytes after this
// delay" (OnWrite, matched in order), or a responder function that answers every write, plus
// bytes that arrive unasked (Inject) and a device that vanishes (Vanish). Reads take no real
// time: a read that would wait moves the fake clock instead, to the moment the next bytes
// arrive or to the end of its time-out. Everything written, every purge and every setting is
// recorded for the test to check.
//
// Used by one thread (the test's, or the one radio thread under test).
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "link/port_device.h"
#include "support/fake_clock.h"

namespace tavlorin::testing {

class ScriptedDevice final : public PortDevice {
 public:
  using Responder = std::function<std::string(const std::string& written)>;

  explicit ScriptedDevice(FakeClock& clock) : clock_(clock) {}

  // When the next write equals `request`, the reply arrives `delay` later ("" = silence).
  // Expectations are matched in order; a write that matches none is recorded in unexpected().
  ScriptedDevice& OnWrite(std::string request, std::string reply,
                          std::chrono::milliseconds delay = std::chrono::milliseconds(0));
  // Answers every write that no OnWrite expectation took.
  void SetResponder(Responder responder) { responder_ = std::move(responder); }
  // Bytes that arrive unasked, `delay` from now.
  void Inject(std::string bytes, std::chrono::milliseconds delay = std::chrono::milliseconds(0));
  // From now on reads and writes fail, as when a USB adapter is pulled.
  void Vanish() { vanished_ = true; }
  // Makes Configure fail with this system text.
  void FailConfigure(std::string text) { configureError_ = std::move(text); }

  const std::vector<std::string>& writes() const { return writes_; }
  std::string AllWritten() const;
  const std::vector<std::string>& unexpected() const { return unexpected_; }
  size_t pendingExpectations() const { return expectations_.size(); }
  int purges() const { return purges_; }
  const std::vector<LineSettings>& configurations() const { return configurations_; }
  ModemLine dtr() const { return dtr_; }
  ModemLine rts() const { return rts_; }

  Status Configure(const LineSettings& settings) override;
  Status SetModemLines(ModemLine dtr, ModemLine rts) override;
  void Purge() override;
  IoOutcome ReadSome(uint8_t* buffer, size_t capacity, std::chrono::milliseconds timeout) override;
  IoOutcome Write(const uint8_t* data, size_t count, std::chrono::milliseconds timeout) override;

 private:
  struct Expectation {
    std::string request;
    std::string reply;
    std::chrono::milliseconds delay;
  };
  struct Arrival {
    Clock::TimePoint at;
    std::string bytes;
  };

  FakeClock& clock_;
  std::deque<Expectation> expectations_;
  std::deque<Arrival> arrivals_;
  Responder responder_;
  std::vector<std::string> writes_;
  std::vector<std::string> unexpected_;
  std::vector<LineSettings> configurations_;
  std::string configureError_;
  ModemLine dtr_ = ModemLine::kDrop;
  ModemLine rts_ = ModemLine::kDrop;
  int purges_ = 0;
  bool vanished_ = false;
};

}  // namespace tavlorin::testing
