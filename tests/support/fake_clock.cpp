#include "support/fake_clock.h"

namespace tavlorin::testing {

Clock::TimePoint FakeClock::Now() {
  std::lock_guard lock(mutex_);
  return now_;
}

void FakeClock::SleepFor(std::chrono::milliseconds duration) {
  std::lock_guard lock(mutex_);
  sleeps_.push_back(duration);
  now_ += duration;
}

void FakeClock::Advance(std::chrono::milliseconds duration) {
  std::lock_guard lock(mutex_);
  now_ += duration;
}

void FakeClock::AdvanceTo(TimePoint t) {
  std::lock_guard lock(mutex_);
  if (t > now_) {
    now_ = t;
  }
}

std::vector<std::chrono::milliseconds> FakeClock::sleeps() const {
  std::lock_guard lock(mutex_);
  return sleeps_;
}

std::chrono::milliseconds FakeClock::elapsed() const {
  std::lock_guard lock(mutex_);
  return std::chrono::duration_cast<std::chrono::milliseconds>(now_ - start_);
}

}  // namespace tavlorin::testing
