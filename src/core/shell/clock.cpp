#include "shell/clock.h"

#include <thread>

namespace tavlorin {
namespace {

class RealClock final : public Clock {
 public:
  TimePoint Now() override { return std::chrono::steady_clock::now(); }
  void SleepFor(std::chrono::milliseconds duration) override {
    std::this_thread::sleep_for(duration);
  }
};

}  // namespace

Clock& SystemClock() {
  static RealClock clock;
  return clock;
}

}  // namespace tavlorin
