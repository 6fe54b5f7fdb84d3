// Clock: the time source of every wait and time-out in the radio path.
//
// Drivers wait (250 ms between connect attempts, 200 ms between Elecraft retries) and measure
// reply windows through a Clock, so tests can run them on a fake clock without sleeping.
// SystemClock() is the real one (steady clock, real sleeps); thread-safe.
#pragma once

#include <chrono>

namespace tavlorin {

class Clock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  virtual ~Clock() = default;
  virtual TimePoint Now() = 0;
  virtual void SleepFor(std::chrono::milliseconds duration) = 0;
};

Clock& SystemClock();

}  // namespace tavlorin
