// RunLoopUntil: runs an EventLoop in short turns until `done` holds or `limit` has passed, for
// tests that drive a radio window on the test's own thread. Returns done().
#pragma once

#include <chrono>
#include <functional>

#include "shell/event_loop.h"

namespace tavlorin::testing {

inline bool RunLoopUntil(EventLoop& loop, const std::function<bool()>& done,
                         std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!done() && std::chrono::steady_clock::now() < end) {
    loop.Run(std::chrono::milliseconds(10));
  }
  return done();
}

}  // namespace tavlorin::testing
