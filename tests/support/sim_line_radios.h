// Simulated line-command radios for PtyRadio: a Ten-Tec Orion, a PCR-1000 and an NRD-535.
//
// SimOrion answers "?X" with "@X" + value from its table ("?A" -> "@A00D6B3F0") and takes
// "*X" + value into it; "?V" answers the version; an unknown query gets no answer.
// SimPcr1000 starts powered off: "H1?" answers "H100" until "H101" arrives; sets answer
// "G000" (or "G001" for a command it does not know); "K0" tunes; "I2?" answers "I2" + the
// signal level in hex. It keeps the last tuning for the test to see.
// SimNrd535 answers "I1" with its status line and "Y1" with the signal level; "F" tunes.
//
// Thread-safe: the pty thread answers while the test reads the state.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "support/pty_radio.h"

namespace tavlorin::testing {

class SimOrion : public Simulator {
 public:
  SimOrion();
  void OnBytes(std::string_view bytes, std::vector<Emission>& out) override;
  std::string Get(const std::string& key) const;
  void Set(const std::string& key, const std::string& value);

 private:
  mutable std::mutex mutex_;
  std::string pending_;
  std::map<std::string, std::string> table_;
};

class SimPcr1000 : public Simulator {
 public:
  void OnBytes(std::string_view bytes, std::vector<Emission>& out) override;
  std::string lastTuning() const;
  bool powered() const;
  std::vector<std::string> commands() const;
  void SetLevel(int level);

 private:
  std::string Answer(const std::string& command);

  mutable std::mutex mutex_;
  std::string pending_;
  bool powered_ = false;
  std::string tuning_;
  std::vector<std::string> commands_;
  int level_ = 0x40;
};

class SimNrd535 : public Simulator {
 public:
  void OnBytes(std::string_view bytes, std::vector<Emission>& out) override;
  uint32_t frequency() const;
  bool remote() const;
  void SetLevel(int level);

 private:
  mutable std::mutex mutex_;
  std::string pending_;
  bool remote_ = false;
  uint32_t frequency_ = 9650000;
  int mode_ = 4;
  int level_ = 120;
};

}  // namespace tavlorin::testing
