// The radio window's answers to an emulated port, with the real worker and window logic in
// front of a demonstration radio: set-commands must reach the radio, and a value just set must
// be what the other program reads back.
#include "radio/emulation/radio_emulation.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "radio/headless_radio_window.h"
#include "support/fake_clock.h"
#include "support/run_until.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kHangGuard{10000};

class RadioEmulationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ConnectParams params;
    params.company = kDemonstration;
    params.model = "TS-2000: Demo";
    std::string id;
    std::string message;
    ASSERT_EQ(radio.Connect(params, &id, &message), 1) << message;
    RadioViewOptions options;
    options.refreshInterval = milliseconds(20);
    options.trackDualFast = true;
    window = std::make_unique<HeadlessRadioWindow>(radio, worker, loop, options,
                                                   HeadlessRadioWindow::Callbacks{});
    window->view().SetDualTracking(true);
  }
  void TearDown() override {
    worker.Start();  // idempotent for a started worker; the close request needs it running
    window->CloseAndWait(kHangGuard);
    window.reset();
    worker.Stop();
  }
  bool RunUntil(const std::function<bool()>& done) {
    return testing::RunLoopUntil(loop, done, kHangGuard);
  }

  CatRadio radio;
  RadioWorker worker;
  EventLoop loop;
  std::unique_ptr<HeadlessRadioWindow> window;
};

TEST_F(RadioEmulationTest, SetCommandsReachTheRadioThroughTheWorker) {
  worker.Start();
  window->Start();
  RadioEmulation emulation(window->view(), radio.manufacturer);
  ASSERT_TRUE(RunUntil([&] { return window->view().frequencyB() != 0; }));
  EXPECT_EQ(emulation.Answer("FA;"), "FA00014235000;");
  EXPECT_EQ(emulation.Answer("FB;"), "FB00003780000;");

  EXPECT_EQ(emulation.Answer("FA00007074000;"), "");
  EXPECT_EQ(emulation.Answer("FA;"), "FA00007074000;");  // before the worker ran it
  EXPECT_EQ(emulation.Answer("MD3;"), "");
  EXPECT_EQ(emulation.Answer("MD;"), "MD3;");
  EXPECT_EQ(emulation.Answer("TX;"), "");
  EXPECT_EQ(emulation.Answer("IF;").substr(2 + 26, 2), "13");
  ASSERT_TRUE(RunUntil([&] {
    return radio.values().Get("FA") == "00007074000" && radio.values().Get("MD") == "3" &&
           radio.values().Get("IF")[26] == '1';
  }));
  EXPECT_TRUE(RunUntil([&] { return window->view().frequencyA() == 7074000; }));
  EXPECT_EQ(emulation.Answer("FA;"), "FA00007074000;");

  EXPECT_EQ(emulation.Answer("RX;"), "");
  EXPECT_EQ(emulation.Answer("FR1;"), "");
  EXPECT_EQ(emulation.Answer("FR;"), "FR1;");
  EXPECT_EQ(emulation.Answer("FT;"), "FT1;");
  EXPECT_TRUE(RunUntil([&] {
    std::string status = radio.values().Get("IF");
    return status[26] == '0' && status[28] == '1' && radio.values().Get("FR") == "1";
  }));
  EXPECT_EQ(emulation.Answer("IF;").substr(2, 11), "00003780000");  // VFO B now receives
  EXPECT_EQ(emulation.Answer("ZZ;"), "?;");
}

TEST_F(RadioEmulationTest, UnconfirmedValueGivesWayToTheRadiosAfterAWhile) {
  testing::FakeClock clock;
  RadioEmulation emulation(window->view(), radio.manufacturer, clock);
  // The worker is not running: nothing set here reaches the radio or the window.
  EXPECT_EQ(emulation.Answer("FB00021074000;"), "");
  EXPECT_EQ(emulation.Answer("MD5;"), "");
  EXPECT_EQ(emulation.Answer("FB;"), "FB00021074000;");
  EXPECT_EQ(emulation.Answer("MD;"), "MD5;");
  clock.Advance(RadioEmulation::kPendingHold - milliseconds(1));
  EXPECT_EQ(emulation.Answer("MD;"), "MD5;");
  clock.Advance(milliseconds(1));
  EXPECT_EQ(emulation.Answer("FB;"), "FB00000000000;");  // the window has read nothing yet
  EXPECT_EQ(emulation.Answer("MD;"), "MD0;");
  std::vector<uint32_t> queued = worker.PendingCodes();
  EXPECT_EQ(std::count(queued.begin(), queued.end(), kSetFrequency), 1);
  EXPECT_EQ(std::count(queued.begin(), queued.end(), kSelectDropdown), 1);
}

}  // namespace
}  // namespace tavlorin
