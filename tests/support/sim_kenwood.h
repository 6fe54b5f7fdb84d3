// SimKenwood: a simulated Kenwood-command radio for the far side of a PtyRadio: a Kenwood
// transceiver (echoless ASCII, every reply ending in ";", "?;" for what it does not know, set
// commands answered by silence; modes above 9 as the letters A to F, as on the TS-890S) or an
// Elecraft K2 ("BG" bar graph, no "FC", "K22" accepted).
// It keeps VFO A and B, the receive and transmit VFO (FR, FT), transmit (TX, RX) and the mode,
// and reports them in its "IF" status as the radios do.
//
// Faults a test can ask for: the next N commands refused with "?;", replies sent late, a radio
// that answers nothing or only noise.
//
// OnBytes runs on the PtyRadio's thread, the setters on the test's thread.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "support/pty_radio.h"

namespace tavlorin::testing {

class SimKenwood final : public Simulator {
 public:
  enum class Flavour { kKenwood, kElecraftK2 };
  explicit SimKenwood(Flavour flavour = Flavour::kKenwood) : flavour_(flavour) {}

  void OnBytes(std::string_view bytes, std::vector<Emission>& out) override;

  void SetFrequencyA(uint32_t hz) { frequencyA_ = hz; }
  uint32_t frequencyA() const { return frequencyA_; }
  int mode() const { return mode_; }
  int receiveVfo() const { return receiveVfo_; }
  int transmitVfo() const { return transmitVfo_; }
  bool transmitting() const { return transmitting_; }
  void SetFrequencyB(uint32_t hz) { frequencyB_ = hz; }
  void SetMeter(int value) { meter_ = value; }
  // The answer to "ID;" ("020" for a TS-480); unset, "ID;" is refused.
  void SetIdentity(std::string identity) {
    std::lock_guard lock(mutex_);
    identity_ = std::move(identity);
  }
  // A TS-990S: the mode command carries the receiver ("MD0;", "MD0A;").
  void SetReceiverInModeCommand(bool on) { receiverInMode_ = on; }

  void RefuseNext(int count) { refuse_ = count; }
  void SetReplyDelay(std::chrono::milliseconds delay) { delay_ = delay; }
  void SetSilent(bool silent) { silent_ = silent; }
  // Every reply replaced by line noise that still ends in ";".
  void SetGarbled(bool garbled) { garbled_ = garbled; }
  // The complete commands received so far ("FA;", "MD3;").
  std::vector<std::string> commands() const;

 private:
  // The reply to one command ("" = none).
  std::string Answer(const std::string& command);

  const Flavour flavour_;
  mutable std::mutex mutex_;  // guards commands_; pending_ is the PtyRadio thread's
  std::string pending_;
  std::vector<std::string> commands_;
  std::atomic<uint32_t> frequencyA_ = 14070000;
  std::atomic<uint32_t> frequencyB_ = 7074000;
  std::atomic<int> mode_ = 2;
  std::atomic<int> receiveVfo_ = 0;  // FR, FT: 0 A, 1 B
  std::atomic<int> transmitVfo_ = 0;
  std::atomic<bool> transmitting_ = false;
  std::atomic<int> meter_ = 5;
  std::atomic<int> refuse_ = 0;
  std::atomic<std::chrono::milliseconds> delay_{std::chrono::milliseconds(0)};
  std::atomic<bool> silent_ = false;
  std::atomic<bool> garbled_ = false;
  std::atomic<bool> receiverInMode_ = false;
  std::string identity_;  // guarded by mutex_
};

}  // namespace tavlorin::testing
