#include "shell/event_loop.h"

#include <algorithm>

namespace tavlorin {

void EventLoop::Post(std::function<void()> call) {
  {
    std::lock_guard lock(mutex_);
    posted_.push_back(std::move(call));
  }
  wake_.notify_one();
}

void EventLoop::SetTimer(int id, std::chrono::milliseconds interval, TimerHandler handler) {
  std::lock_guard lock(mutex_);
  interval = std::max(interval, std::chrono::milliseconds(1));
  timers_[id] = Timer{interval, Clock::now() + interval, std::move(handler), ++generation_};
}

void EventLoop::KillTimer(int id) {
  std::lock_guard lock(mutex_);
  timers_.erase(id);
}

bool EventLoop::HasTimer(int id) const {
  std::lock_guard lock(mutex_);
  return timers_.count(id) != 0;
}

void EventLoop::Quit() {
  {
    std::lock_guard lock(mutex_);
    quit_ = true;
  }
  wake_.notify_one();
}

EventLoop::Clock::time_point EventLoop::RunDue() {
  for (;;) {
    std::function<void()> call;
    {
      std::lock_guard lock(mutex_);
      if (posted_.empty()) {
        break;
      }
      call = std::move(posted_.front());
      posted_.pop_front();
    }
    call();
  }
  // Fire each due timer once; a handler may set or kill timers, so look them up again after.
  std::vector<std::pair<int, uint64_t>> due;
  {
    std::lock_guard lock(mutex_);
    const auto now = Clock::now();
    for (const auto& [id, t] : timers_) {
      if (t.due <= now) {
        due.emplace_back(id, t.generation);
      }
    }
  }
  for (const auto& [id, generation] : due) {
    TimerHandler handler;
    {
      std::lock_guard lock(mutex_);
      auto it = timers_.find(id);
      if (it == timers_.end() || it->second.generation != generation) {
        continue;
      }
      it->second.due = Clock::now() + it->second.interval;
      handler = it->second.handler;
    }
    handler(id);
  }
  std::lock_guard lock(mutex_);
  auto next = Clock::time_point::max();
  for (const auto& [id, t] : timers_) {
    next = std::min(next, t.due);
  }
  return next;
}

bool EventLoop::Run(std::chrono::milliseconds limit, const std::atomic<bool>* stopFlag) {
  const auto start = Clock::now();
  const auto end =
      limit == std::chrono::milliseconds::max() ? Clock::time_point::max() : start + limit;
  for (;;) {
    const auto next = RunDue();
    std::unique_lock lock(mutex_);
    if (quit_) {
      quit_ = false;
      return true;
    }
    const auto now = Clock::now();
    if (now >= end || (stopFlag != nullptr && stopFlag->load())) {
      return false;
    }
    auto wakeAt = std::min({next, end, now + std::chrono::milliseconds(100)});
    if (posted_.empty()) {
      wake_.wait_until(lock, wakeAt, [this] { return quit_ || !posted_.empty(); });
    }
  }
}

}  // namespace tavlorin
