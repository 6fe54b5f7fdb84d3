// SimKenwood: a simulated Kenwood-command radio for the far side of a PtyRadio: a Kenwood
// transceiver (echoless ASCII, every reply ending in ";", "?;" for what it does not know, set
// commands answered by silence) or an Elecraft K2 ("BG" bar graph, no "FC", "K22" accepted).
//
// Faults a test can ask for: the next N commands refused with "?;", replies sent late, junk
// bytes before the next reply, an unasked "IF" status before the next reply, a radio that
// answers nothing or only noise, a radio that is switched off (answers nothing until "PS1;" after a
// wake-up).
//
// OnBytes runs on the PtyRadio's thread, the setters on the test's thread: one mutex guards
// the state.
#pragma once

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

  void SetFrequencyA(uint32_t hz);
  uint32_t frequencyA() const;
  uint32_t frequencyB() const;
  void SetMode(int mode);
  int mode() const;
  void SetMeter(int value);
  void SetPowered(bool on);
  bool powered() const;

  void RefuseNext(int count);
  void SetReplyDelay(std::chrono::milliseconds delay);
  void JunkBeforeNextReply(std::string junk);
  void StatusBeforeNextReply();
  void SetSilent(bool silent);
  // Every reply replaced by line noise that still ends in ";".
  void SetGarbled(bool garbled);
  // The complete commands received so far ("FA;", "MD3;").
  std::vector<std::string> commands() const;

 private:
  // The reply to one command ("" = none); called with the mutex held.
  std::string Answer(const std::string& command);
  std::string StatusText() const;

  const Flavour flavour_;
  mutable std::mutex mutex_;
  std::string pending_;
  std::vector<std::string> commands_;
  uint32_t frequencyA_ = 14070000;
  uint32_t frequencyB_ = 7074000;
  int mode_ = 2;
  int meter_ = 5;
  int vfo_ = 0;
  bool transmitting_ = false;
  bool powered_ = true;
  bool awake_ = false;
  int refuse_ = 0;
  std::chrono::milliseconds delay_{0};
  std::string junk_;
  bool statusFirst_ = false;
  bool silent_ = false;
  bool garbled_ = false;
};

}  // namespace tavlorin::testing
