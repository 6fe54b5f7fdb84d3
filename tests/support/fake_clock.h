// FakeClock: a Clock whose time moves only when someone sleeps on it or advances it, so tests
// of time-outs and retry waits run instantly and give the same result on any machine.
// Thread-safe.
#pragma once

#include <chrono>
#include <mutex>
#include <vector>

#include "shell/clock.h"

namespace tavlorin::testing {

class FakeClock final : public Clock {
 public:
  TimePoint Now() override;
  // Advances the time and records the sleep.
  void SleepFor(std::chrono::milliseconds duration) override;
  void Advance(std::chrono::milliseconds duration);
  // Moves the time forward to `t` (never back).
  void AdvanceTo(TimePoint t);
  // The durations passed to SleepFor, in order.
  std::vector<std::chrono::milliseconds> sleeps() const;
  std::chrono::milliseconds elapsed() const;

 private:
  mutable std::mutex mutex_;
  TimePoint start_{std::chrono::hours(1)};
  TimePoint now_{std::chrono::hours(1)};
  std::vector<std::chrono::milliseconds> sleeps_;
};

}  // namespace tavlorin::testing
