// EventLoop: a window thread for programs without a GUI toolkit (the command-line tool, the
// emulated-port server, tests): posted calls and numbered window-style timers, run one at a
// time on the thread that calls Run.
//
// Post and Quit may be called from any thread; timers are set and killed on the loop's thread
// (or before Run). A timer fires again and again at its interval until killed; setting an armed
// timer restarts it.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>

namespace tavlorin {

class EventLoop {
 public:
  using TimerHandler = std::function<void(int id)>;

  void Post(std::function<void()> call);
  void SetTimer(int id, std::chrono::milliseconds interval, TimerHandler handler);
  void KillTimer(int id);
  bool HasTimer(int id) const;

  // Runs until Quit, until `limit` has passed, or until *stopFlag turns true (looked at every
  // 100 ms, so a signal handler may set it). Returns true when Quit ended it.
  bool Run(std::chrono::milliseconds limit = std::chrono::milliseconds::max(),
           const std::atomic<bool>* stopFlag = nullptr);
  void Quit();

 private:
  using Clock = std::chrono::steady_clock;
  struct Timer {
    std::chrono::milliseconds interval;
    Clock::time_point due;
    TimerHandler handler;
    uint64_t generation;
  };
  // Runs what is due; returns the time of the next timer (or max).
  Clock::time_point RunDue();

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::function<void()>> posted_;
  std::map<int, Timer> timers_;
  uint64_t generation_ = 0;
  bool quit_ = false;
};

}  // namespace tavlorin
