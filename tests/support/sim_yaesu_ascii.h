// SimYaesuAscii: a simulated radio of Yaesu's ASCII command set for PtyRadio: an FT-991A, an
// FTDX101D (its sub receiver answering "MD1" and "FB") or an FTDX3000 (eight-digit
// frequencies), each with its own identity number.
//
// It answers "ID", "FA"/"FB", "MD0"/"MD1", "IF", "SM0", "TX", "VS", "FT", "AI" and "PS" as the
// radios do, takes the set forms silently, and answers "?;" for a command it does not know or
// a value it does not take. Faults a test can ask for: the next N commands refused with "?;",
// replies sent late (a slow radio), nothing answered at all.
//
// Thread-safe: the pty thread calls OnBytes while the test reads or changes the state.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "support/sim_line_radios.h"

namespace tavlorin::testing {

class SimYaesuAscii final : public Simulator, protected SimulatorState {
 public:
  enum class Model { kFt991A, kFtdx101D, kFtdx3000 };
  explicit SimYaesuAscii(Model model) : model_(model) {}

  void OnBytes(std::string_view bytes, std::vector<Emission>& out) override;

  uint32_t frequencyA() const { return Read(frequencyA_); }
  uint32_t frequencyB() const { return Read(frequencyB_); }
  char mode() const { return Read(modeA_); }
  bool transmitting() const { return Read(transmit_); }
  void SetFrequencyA(uint32_t hz) { Write(frequencyA_, hz); }
  void SetMeter(int level) { Write(meter_, level); }
  void RefuseNext(int count) { Write(refuse_, count); }
  void SetReplyDelay(std::chrono::milliseconds delay) { Write(delay_, delay); }
  void SetSilent(bool silent) { Write(silent_, silent); }
  // The complete commands received so far ("FA;", "MD02;").
  std::vector<std::string> commands() const { return Read(commands_); }

  // The identity number and frequency digits of each model.
  static std::string Identity(Model model);
  static int Digits(Model model);

 private:
  // The reply to one command ("" = none); called under the state's lock.
  std::string Answer(const std::string& body);
  std::string Frequency(uint32_t hz) const;

  const Model model_;
  std::string pending_;  // the pty thread's own
  std::vector<std::string> commands_;
  uint32_t frequencyA_ = 14074000;
  uint32_t frequencyB_ = 7074000;
  char modeA_ = '2';
  char modeB_ = '1';
  int meter_ = 0;
  bool transmit_ = false;
  int vfo_ = 0;
  int split_ = 0;
  int refuse_ = 0;
  std::chrono::milliseconds delay_{0};
  bool silent_ = false;
};

}  // namespace tavlorin::testing
