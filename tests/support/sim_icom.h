// SimIcom: a simulated ICOM radio for PtyRadio: answers CI-V frames the way the radios do.
//
// It keeps a frequency, a mode and filter, an S-meter level and a table of read values, answers
// 19 00, 03, 04, 05, 06, 15 02 (five frequency bytes, or the option's count) and any command of
// its value table, and acknowledges sets; a set whose command is in the table (0F 01 after 0F)
// changes its value. Options pick the behaviour of real set-ups:
//  - echo: every frame the computer sends comes back first (a CI-V bus, or a radio with its
//    USB echo on); without it only replies arrive (most radios on a USB cable);
//  - broadcastsAfterReply: after each reply the radio sends that many transceive frequency
//    broadcasts of its frequency, a few milliseconds apart (a radio with transceive on);
//  - refuseSets: every set command is answered with FA (the radio refuses);
//  - silent: nothing is answered (radio off);
//  - unswappedReplies: replies repeat the header as it was sent (to the radio, from the
//    computer) instead of swapping the two addresses, as some interfaces and clones do.
// Frames for other addresses are ignored, as on a bus.
//
// Thread-safe: the pty thread calls OnBytes while the test reads or changes the state.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "support/sim_line_radios.h"

namespace tavlorin::testing {

struct SimIcomOptions {
  uint8_t address = 0x5C;
  bool echo = false;
  int broadcastsAfterReply = 0;
  bool refuseSets = false;
  bool silent = false;
  int frequencyBytes = 5;  // 6 for an IC-905
  bool unswappedReplies = false;
};

class SimIcom : public Simulator, protected SimulatorState {
 public:
  explicit SimIcom(SimIcomOptions options) : options_(options) {}

  void OnBytes(std::string_view bytes, std::vector<Emission>& out) override;

  uint32_t frequency() const { return static_cast<uint32_t>(Read(frequency_)); }
  void SetFrequency(uint64_t hz) { Write(frequency_, hz); }
  uint8_t mode() const { return Read(mode_); }
  uint8_t filter() const { return Read(filter_); }
  void SetSMeter(uint32_t level) { Write(sMeter_, level); }
  // A value table entry: the reply data (BCD bytes) to a command given as its payload bytes.
  void SetValue(std::vector<uint8_t> command, std::vector<uint8_t> data) {
    std::lock_guard lock(mutex_);
    values_[std::move(command)] = std::move(data);
  }
  // The payloads of every set command the radio accepted, in order.
  std::vector<std::vector<uint8_t>> sets() const { return Read(sets_); }

  // A whole frame from the radio: FE FE to from payload FD.
  static std::string Frame(uint8_t to, uint8_t from, const std::vector<uint8_t>& payload);

 private:
  void Answer(const std::vector<uint8_t>& frame, std::vector<Emission>& out);
  std::string Reply(const std::vector<uint8_t>& payload);
  std::vector<uint8_t> FrequencyPayload(uint8_t command) const;

  SimIcomOptions options_;
  std::vector<uint8_t> pending_;
  uint64_t frequency_ = 14070000;
  uint8_t mode_ = 0x01;
  uint8_t filter_ = 0x02;
  uint32_t sMeter_ = 120;
  std::map<std::vector<uint8_t>, std::vector<uint8_t>> values_;
  std::vector<std::vector<uint8_t>> sets_;
};

}  // namespace tavlorin::testing
