// SimYaesu: a simulated FT-817 or FT-847 for PtyRadio, answering 5-byte commands the way the
// radios do: only what it is asked, nothing at all for a command it does not know.
//
// FT-817: 03 frequency and mode; 01 set frequency; 07 set mode; 81 swap VFOs; E7 receive status
// (S-meter in the low nibble); BB/BC read and write its memory.
// FT-847: the same reads and sets per slot (03/13/23 reads, 01/11/21 frequency sets, 07/17/27
// modes), E7; it ignores every command until it has seen CAT ON (opcode 00), as the radio does.
// With acknowledgeSets each set command is answered by one result byte 00.
//
// Thread-safe: the pty thread calls OnBytes while the test reads the state.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "support/sim_line_radios.h"

namespace tavlorin::testing {

enum class SimYaesuModel { kFt817, kFt847 };

class SimYaesu : public Simulator, protected SimulatorState {
 public:
  SimYaesu(SimYaesuModel model, bool acknowledgeSets) : model_(model), ack_(acknowledgeSets) {}

  void OnBytes(std::string_view bytes, std::vector<Emission>& out) override;

  // slot: 0 main (VFO in use), 1 satellite receive, 2 satellite transmit.
  uint32_t frequency(int slot = 0) const { return Read(frequency_)[static_cast<size_t>(slot)]; }
  uint8_t mode() const { return Read(mode_)[0]; }
  void SetSMeter(uint8_t level) { Write(sMeter_, level); }
  uint8_t Memory(uint16_t address) const { return Read(memory_)[address]; }
  void SetMemory(uint16_t address, uint8_t value) {
    std::lock_guard lock(mutex_);
    memory_[address] = value;
  }
  int ignored() const { return Read(ignored_); }

 private:
  std::string Answer(const std::array<uint8_t, 5>& c);
  std::string Slot(int slot) const;

  SimYaesuModel model_;
  bool ack_;
  std::string pending_;
  bool catOn_ = false;
  std::array<uint32_t, 3> frequency_{14070000, 145990000, 435800000};
  std::array<uint8_t, 3> mode_{0x01, 0x08, 0x08};
  uint32_t otherVfo_ = 7060000;
  uint8_t sMeter_ = 9;
  std::map<uint16_t, uint8_t> memory_;
  int ignored_ = 0;
};

}  // namespace tavlorin::testing
