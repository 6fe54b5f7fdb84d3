// LoopThread: an EventLoop run on a thread of its own, the background worker of jobs that must
// never run on a window's thread (network transfers, file copies) and of their periodic timers.
//
// Post may be called from any thread; the posted calls run one at a time, in order, on the
// loop's thread, which may also set timers on loop(). The destructor quits the loop after the
// call running now and joins the thread; calls still queued are dropped. A job that may take
// long must watch an abort flag that its owner sets before destroying the LoopThread.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

#include "shell/event_loop.h"

namespace tavlorin {

class LoopThread {
 public:
  LoopThread() : thread_([this] { loop_.Run(); }) {}
  ~LoopThread() {
    loop_.Quit();
    thread_.join();
  }
  LoopThread(const LoopThread&) = delete;
  LoopThread& operator=(const LoopThread&) = delete;

  void Post(std::function<void()> call) { loop_.Post(std::move(call)); }
  // While `on`, runs `job` on the loop's thread every `interval` (first after one interval);
  // off stops it. Setting it again restarts it. Any thread.
  void SetPeriodic(int id, bool on, std::chrono::milliseconds interval,
                   std::function<void()> job) {
    Post([this, id, on, interval, job = std::move(job)] {
      if (on) {
        loop_.SetTimer(id, interval, [job](int) { job(); });
      } else {
        loop_.KillTimer(id);
      }
    });
  }
  EventLoop& loop() { return loop_; }

 private:
  EventLoop loop_;
  std::thread thread_;
};

}  // namespace tavlorin
