// Simulated line-command radios for PtyRadio: a Ten-Tec Orion, a PCR-1000 and an NRD-535; the
// lock every simulator here and in sim_icom.h and sim_yaesu.h shares with its test; and the
// connection parameters that reach a simulated radio.
//
// SimOrion answers "?X" with "@X" + value from its table ("?AF" -> "@AF14070000") and takes
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

#include "radio/cat_radio.h"
#include "support/pty_radio.h"

namespace tavlorin::testing {

// What CatRadio::Connect needs to reach the simulated radio behind `pty`.
ConnectParams PtyParams(int company, const std::string& model, const PtyRadio& pty,
                        const std::string& speed);

// The state a simulator shares between the pty thread and the test, behind one mutex.
class SimulatorState {
 protected:
  template <class T>
  T Read(const T& field) const {
    std::lock_guard lock(mutex_);
    return field;
  }
  template <class T>
  void Write(T& field, T value) {
    std::lock_guard lock(mutex_);
    field = std::move(value);
  }
  mutable std::mutex mutex_;
};

// A line simulator that answers each line, its line end taken off, under the state's lock.
class LockedLineSimulator : public LineSimulator, protected SimulatorState {
 protected:
  explicit LockedLineSimulator(char end);
  virtual std::string Answer(const std::string& line) = 0;
};

class SimOrion : public LockedLineSimulator {
 public:
  SimOrion();
  std::string Get(const std::string& key) const { return Read(table_)[key]; }
  void Set(const std::string& key, const std::string& value) {
    std::lock_guard lock(mutex_);
    table_[key] = value;
  }

 private:
  std::string Answer(const std::string& line) override;
  std::map<std::string, std::string> table_;
};

class SimPcr1000 : public LockedLineSimulator {
 public:
  SimPcr1000() : LockedLineSimulator('\n') {}
  std::string lastTuning() const { return Read(tuning_); }
  bool powered() const { return Read(powered_); }
  std::vector<std::string> commands() const { return Read(commands_); }
  void SetLevel(int level) { Write(level_, level); }

 private:
  std::string Answer(const std::string& line) override;
  std::string Reply(const std::string& command);

  bool powered_ = false;
  std::string tuning_;
  std::vector<std::string> commands_;
  int level_ = 0x40;
};

class SimNrd535 : public LockedLineSimulator {
 public:
  SimNrd535() : LockedLineSimulator('\r') {}
  bool remote() const { return Read(remote_); }
  void SetLevel(int level) { Write(level_, level); }

 private:
  std::string Answer(const std::string& line) override;

  bool remote_ = false;
  uint32_t frequency_ = 9650000;
  int mode_ = 4;
  int level_ = 120;
};

}  // namespace tavlorin::testing
