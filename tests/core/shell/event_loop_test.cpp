#include "shell/event_loop.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

TEST(EventLoop, PostedCallsRunInOrderOnTheLoopThread) {
  EventLoop loop;
  std::vector<int> order;
  std::thread::id loopThread = std::this_thread::get_id();
  std::thread poster([&] {
    for (int i = 0; i < 5; ++i) {
      loop.Post([&, i] {
        EXPECT_EQ(std::this_thread::get_id(), loopThread);
        order.push_back(i);
        if (i == 4) {
          loop.Quit();
        }
      });
    }
  });
  EXPECT_TRUE(loop.Run(milliseconds(30000)));
  poster.join();
  EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(EventLoop, TimersRepeatUntilKilledAndRearmingRestartsThem) {
  EventLoop loop;
  int fired = 0;
  loop.SetTimer(100, milliseconds(1), [&](int id) {
    EXPECT_EQ(id, 100);
    if (++fired == 3) {
      loop.KillTimer(100);
      loop.Quit();
    }
  });
  EXPECT_TRUE(loop.Run(milliseconds(30000)));
  EXPECT_EQ(fired, 3);
  EXPECT_FALSE(loop.HasTimer(100));
}

TEST(EventLoop, ATimerKilledByAnotherHandlerInTheSameTurnDoesNotFire) {
  EventLoop loop;
  bool secondFired = false;
  loop.SetTimer(1, milliseconds(1), [&](int) { loop.KillTimer(2); });
  loop.SetTimer(2, milliseconds(1), [&](int) { secondFired = true; });
  std::this_thread::sleep_for(milliseconds(5));
  loop.Run(milliseconds(20));
  EXPECT_FALSE(secondFired);
}

TEST(EventLoop, AStopFlagEndsTheRun) {
  EventLoop loop;
  std::atomic<bool> stop{true};
  EXPECT_FALSE(loop.Run(milliseconds(30000), &stop));
}

}  // namespace
}  // namespace tavlorin
