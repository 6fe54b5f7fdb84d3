// A Kenwood radio polled as the radio window polls it (real worker, window logic, pseudo-
// terminal): noise, silence and a pulled cable leave the last known values, are logged, and
// never hang the worker.
#include <gtest/gtest.h>

#include <functional>
#include <mutex>

#include "radio/headless_radio_window.h"
#include "shell/debug_log.h"
#include "support/pty_radio.h"
#include "support/run_until.h"
#include "support/sim_kenwood.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kHangGuard{20000};

class KenwoodPollTest : public ::testing::Test {
 protected:
  void SetUp() override {
    DebugLog::SetObserver([this](const std::string& line) {
      std::lock_guard lock(mutex_);
      log_ += line + "\n";
    });
    ASSERT_TRUE(pty.ok());
    ConnectParams params;
    params.company = kKenwood;
    params.model = "TS-570";
    params.port = pty.path();
    params.speed = "57600";
    std::string id;
    std::string message;
    ASSERT_EQ(radio.Connect(params, &id, &message), 1) << message;
    worker.Start();
    HeadlessRadioWindow::Callbacks callbacks;
    callbacks.linkLost = [this](const std::string& reason) { lostReason = reason; };
    RadioViewOptions options;
    options.refreshInterval = milliseconds(20);
    window = std::make_unique<HeadlessRadioWindow>(radio, worker, loop, options, callbacks);
    window->Start();
  }
  void TearDown() override {
    DebugLog::SetObserver(nullptr);
    if (window) {
      window->CloseAndWait(kHangGuard);
    }
    window.reset();
    worker.Stop();
  }
  bool RunUntil(const std::function<bool()>& done) {
    return testing::RunLoopUntil(loop, done, kHangGuard);
  }
  bool Logged(const std::string& text) {
    std::lock_guard lock(mutex_);
    return log_.find(text) != std::string::npos;
  }
  void ForgetLog() {
    std::lock_guard lock(mutex_);
    log_.clear();
  }

  testing::SimKenwood sim;
  testing::PtyRadio pty{sim};
  CatRadio radio;
  RadioWorker worker;
  EventLoop loop;
  std::unique_ptr<HeadlessRadioWindow> window;
  std::string lostReason;
  std::mutex mutex_;
  std::string log_;
};

TEST_F(KenwoodPollTest, NoiseAndSilenceKeepTheLastValuesAPulledCableClosesCleanly) {
  CRadioView& view = window->view();
  ASSERT_TRUE(RunUntil([&] { return view.currentFrequency() == 14070000 && view.mode() == 2; }));
  struct Fault {
    const char* name;
    std::function<void(bool)> set;
  } faults[] = {
      {"noise", [&](bool on) { sim.SetGarbled(on); }},
      {"silence", [&](bool on) { sim.SetSilent(on); }},
  };
  Frequency hz = 14070000;
  for (const Fault& f : faults) {
    SCOPED_TRACE(f.name);
    ForgetLog();
    f.set(true);
    sim.SetFrequencyA(hz + 5000);  // the radio moved, but nothing readable comes back
    ASSERT_TRUE(RunUntil([&] { return Logged("KenwoodRead: no answer to FA"); }));
    EXPECT_EQ(view.currentFrequency(), hz);
    EXPECT_EQ(view.mode(), 2);
    f.set(false);
    hz += 5000;
    EXPECT_TRUE(RunUntil([&] { return view.currentFrequency() == hz; }));
  }
  EXPECT_TRUE(lostReason.empty());

  pty.Hangup();
  ASSERT_TRUE(RunUntil([&] { return !lostReason.empty(); }));
  EXPECT_TRUE(Logged("Port lost: "));
  EXPECT_EQ(view.currentFrequency(), hz);
  EXPECT_TRUE(window->CloseAndWait(kHangGuard));  // the worker still runs requests
}

}  // namespace
}  // namespace tavlorin
