#include "radio/radio_view.h"

#include <gtest/gtest.h>

#include <map>

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using Codes = std::vector<uint32_t>;

// Records what the view does to its window.
class FakeHost final : public RadioViewHost {
 public:
  void SetTimer(int id, milliseconds interval) override { timers[id] = interval; }
  void KillTimer(int id) override { timers.erase(id); }
  bool IsLeftButtonDown() const override { return leftDown; }
  bool IsActiveApplication() const override { return active; }
  void ShowFrequency(Frequency current, Frequency, Frequency) override { shown.push_back(current); }
  void ShowDropdown(const std::string& name, int selection) override {
    dropdowns[name] = selection;
  }
  void AskSliderToRefresh(int slider) override { sliderAsks.push_back(slider); }
  void ShowButtonState(const std::string& name, bool on) override { buttons[name] = on; }
  void ShowMainMeter(const MeterReading& meter) override { mainMeter.push_back(meter.numbers[0]); }
  void SMeterChanged(int reading) override { sMeter.push_back(reading); }
  void TransmitChanged(bool on) override { transmit.push_back(on); }
  void Closed() override { closed = true; }

  std::map<int, milliseconds> timers;
  bool leftDown = false;
  bool active = true;
  std::vector<Frequency> shown;
  std::map<std::string, int> dropdowns;
  std::vector<int> sliderAsks;
  std::map<std::string, bool> buttons;
  std::vector<int> mainMeter;
  std::vector<int> sMeter;
  std::vector<bool> transmit;
  bool closed = false;
};

class NullTarget final : public RadioResultTarget {
 public:
  void PostRadioData(int, std::unique_ptr<RadioResult>) override {}
  void PostUnsolicitedFrequency(Frequency) override {}
};

class RadioViewTest : public ::testing::Test {
 protected:
  RadioViewTest() { radio_.manufacturer = kKenwood; }

  void Drain() {
    while (worker_.RunOne()) {
    }
  }

  static std::unique_ptr<RadioResult> FrequencyResult(Frequency current, uint32_t code = 1000) {
    auto r = std::make_unique<RadioResult>();
    r->code = code;
    r->frequencyCurrent = current;
    r->frequencyA = current;
    return r;
  }

  // One poll cycle with the queue then emptied, as the worker would.
  void Cycle() {
    view_.OnTimer(kTimerRefresh);
    Drain();
  }

  // Makes the frequency known, as the first answered poll does.
  void KnowFrequency(Frequency hz = 14070000) { view_.OnRadioData(0, FrequencyResult(hz)); }

  CatRadio radio_;
  RadioWorker worker_;
  FakeHost host_;
  std::shared_ptr<NullTarget> target_ = std::make_shared<NullTarget>();
  RadioViewOptions options_;
  CRadioView view_{radio_, worker_, host_, target_, options_};
};

TEST_F(RadioViewTest, StartingArmsRefreshWatchdogAndPanelTimers) {
  view_.StartPolling();
  EXPECT_EQ(host_.timers,
            (std::map<int, milliseconds>{
                {100, milliseconds(300)}, {101, milliseconds(2000)}, {203, milliseconds(500)}}));
}

TEST_F(RadioViewTest, UntilAFrequencyIsKnownOnlyTheFrequencyIsPolled) {
  view_.StartPolling();
  view_.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1008, 1000}));
  EXPECT_EQ(host_.timers.count(100), 0u) << "the refresh waits for a result";
  EXPECT_EQ(host_.timers[101], milliseconds(2000));
  EXPECT_EQ(host_.timers[104], milliseconds(1000));
  EXPECT_EQ(view_.cycle(), 0) << "the counter waits for a frequency";
}

TEST_F(RadioViewTest, TheFirstCycleWithAFrequencyReadsTheWholePanel) {
  view_.AddSlider(7);
  view_.AddSlider(9);
  KnowFrequency();
  view_.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1008, 1000, 1005, 1002, 1001, 1003, 1004}));
  EXPECT_EQ(host_.sliderAsks, (std::vector<int>{7, 9})) << "the first cycle forces phase 2";
  EXPECT_EQ(view_.cycle(), 1);
}

TEST_F(RadioViewTest, LaterCyclesReadOnlyTheFrequencyUntilSlowItemsAreDue) {
  KnowFrequency();
  Cycle();
  view_.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1000}));
  Drain();
  view_.OnTimer(kTimerSlowItems);
  EXPECT_EQ(host_.timers.count(104), 0u) << "timer 104 fires once";
  // cycle 2 is phase 2; cycle 3 phase 3 asks for the buttons and the extra read.
  view_.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1000, 1004}));
  Drain();
  view_.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1000, 1004, 1001, 1002, 1009}));
  Drain();
  view_.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1000, 1004, 1003})) << "phase 0";
  Drain();
  view_.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1000, 1004, 1005})) << "phase 1";
}

TEST_F(RadioViewTest, DualTrackingReadsBothVfosFromTheTwelfthCycle) {
  view_.SetDualTracking(true);
  KnowFrequency();
  for (int cycle = 0; cycle <= 13; ++cycle) {
    ASSERT_EQ(view_.cycle(), cycle);
    const bool both = (view_.PollSelector() & kReadBothVfos) != 0;
    EXPECT_EQ(both, cycle > 10) << "cycle " << cycle;
    Cycle();
  }
}

TEST_F(RadioViewTest, TrackDualFastReadsBothVfosFromTheStart) {
  RadioViewOptions fast;
  fast.trackDualFast = true;
  CRadioView view(radio_, worker_, host_, target_, fast);
  view.SetDualTracking(true);
  EXPECT_NE(view.PollSelector() & kReadBothVfos, 0u);
}

TEST_F(RadioViewTest, VfoSelectorByFamily) {
  struct Case {
    int family;
    bool vfoB, mem;
    uint32_t selector;
  } cases[] = {
      {kKenwood, false, true, 3},  {kKenwood, true, true, 1},   {kKenwood, false, false, 0},
      {kElecraft, false, true, 0}, {kElecraft, true, false, 1}, {kYaesu, true, false, 1},
      {kTenTec, true, false, 1},   {kIcom, true, true, 0},      {kGeneral, true, false, 0},
  };
  for (const Case& c : cases) {
    radio_.manufacturer = c.family;
    view_.SetButtonState("VFO B", c.vfoB);
    view_.SetButtonState("MEM", c.mem);
    EXPECT_EQ(view_.PollSelector(), c.selector) << "family " << c.family;
  }
}

TEST_F(RadioViewTest, FamiliesWithoutTwoVfosNeverAskForBoth) {
  radio_.manufacturer = kIcom;
  RadioViewOptions fast;
  fast.trackDualFast = true;
  CRadioView view(radio_, worker_, host_, target_, fast);
  view.SetDualTracking(true);
  EXPECT_EQ(view.PollSelector(), 0u);
}

TEST_F(RadioViewTest, NoPollWhileTheMouseButtonIsHeld) {
  KnowFrequency();
  host_.leftDown = true;
  host_.timers.clear();
  view_.OnTimer(kTimerRefresh);
  view_.OnTimer(kTimerWatchdog);
  EXPECT_TRUE(worker_.PendingCodes().empty());
  EXPECT_TRUE(host_.timers.empty()) << "the timers keep running as they were";
  host_.leftDown = false;
  view_.OnTimer(kTimerWatchdog);
  EXPECT_FALSE(worker_.PendingCodes().empty());
}

TEST_F(RadioViewTest, PausedOrInactiveWindowsDoNotPoll) {
  view_.SetPaused(true);
  view_.OnTimer(kTimerRefresh);
  EXPECT_TRUE(worker_.PendingCodes().empty());
  view_.SetPaused(false);

  RadioViewOptions activeOnly;
  activeOnly.activeOnly = true;
  CRadioView view(radio_, worker_, host_, target_, activeOnly);
  host_.active = false;
  view.OnTimer(kTimerRefresh);
  EXPECT_TRUE(worker_.PendingCodes().empty());
  host_.active = true;
  view.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1008, 1000}));
}

TEST_F(RadioViewTest, AChangedFrequencyBringsTheNextPollAfterOneMillisecond) {
  view_.OnRadioData(0, FrequencyResult(14070000));
  EXPECT_EQ(host_.shown, (std::vector<Frequency>{14070000}));
  EXPECT_EQ(host_.timers[100], milliseconds(1));
  view_.OnRadioData(0, FrequencyResult(14070000));
  EXPECT_EQ(host_.shown.size(), 1u) << "an unchanged frequency is not redrawn";
  EXPECT_EQ(host_.timers[100], milliseconds(300));
}

TEST_F(RadioViewTest, TheRefreshWaitsUntilTheQueueHasDrained) {
  KnowFrequency();
  host_.timers.clear();
  view_.OnRadioData(2, FrequencyResult(7060000));
  EXPECT_EQ(host_.timers.count(100), 0u);
  EXPECT_EQ(host_.timers[101], milliseconds(2000)) << "the watchdog is always re-armed";
}

TEST_F(RadioViewTest, AFailedReadKeepsTheLastKnownFrequency) {
  KnowFrequency(14070000);
  view_.OnRadioData(0, FrequencyResult(0));
  EXPECT_EQ(view_.currentFrequency(), 14070000u);
  EXPECT_EQ(host_.shown.size(), 1u);
}

TEST_F(RadioViewTest, ResultsBeforeAFrequencyIsKnownAreIgnored) {
  auto mode = std::make_unique<RadioResult>();
  mode->code = 1003;
  mode->dropdowns = {{"Mode", 2}};
  view_.OnRadioData(0, std::move(mode));
  EXPECT_TRUE(host_.dropdowns.empty());
  EXPECT_EQ(host_.timers.count(101), 0u);
}

TEST_F(RadioViewTest, ATransceiveFrequencyIsShownAtOnce) {
  view_.OnUnsolicitedFrequency(0);
  EXPECT_TRUE(host_.shown.empty());
  view_.OnUnsolicitedFrequency(7074000);
  EXPECT_EQ(host_.shown, (std::vector<Frequency>{7074000}));
  EXPECT_EQ(view_.currentFrequency(), 7074000u);
}

TEST_F(RadioViewTest, TransmitSwitchesThePolledMeters) {
  KnowFrequency();
  Cycle();
  auto buttons = std::make_unique<RadioResult>();
  buttons->code = 1001;
  buttons->states = {{"TX", true}};
  view_.OnRadioData(0, std::move(buttons));
  EXPECT_EQ(host_.transmit, (std::vector<bool>{true}));
  EXPECT_TRUE(view_.transmitting());
  view_.OnTimer(kTimerSlowItems);
  view_.OnTimer(kTimerRefresh);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1000, 1007, 1005})) << "phase 1 of cycle 1";
}

TEST_F(RadioViewTest, StartAndSlowReadsFillButtonsAndDropdowns) {
  KnowFrequency();
  for (uint32_t code : {kStartOfPolling, kPhase3Read}) {
    auto r = std::make_unique<RadioResult>();
    r->code = code;
    r->states = {{"ATT", code == kPhase3Read}};
    r->dropdowns = {{"AGC", int(code)}};
    view_.OnRadioData(1, std::move(r));
    EXPECT_EQ(host_.buttons["ATT"], code == kPhase3Read);
    EXPECT_EQ(host_.dropdowns["AGC"], int(code));
  }
}

TEST_F(RadioViewTest, TransmitMetersAreShownOnlyWhileTransmitting) {
  KnowFrequency();
  auto meters = [](uint32_t code, int value) {
    auto r = std::make_unique<RadioResult>();
    r->code = code;
    r->mainMeter.numbers = {value, 255, 1};
    return r;
  };
  view_.OnRadioData(0, meters(kReadTxMeters, 40));  // late, from before the switch to receive
  view_.OnRadioData(0, meters(kReadRxMeters, 9));
  auto tx = std::make_unique<RadioResult>();
  tx->code = kReadButtons;
  tx->states = {{"TX", true}};
  view_.OnRadioData(0, std::move(tx));
  view_.OnRadioData(0, meters(kReadTxMeters, 50));
  EXPECT_EQ(host_.mainMeter, (std::vector<int>{9, 50}));
  EXPECT_EQ(host_.sMeter, (std::vector<int>{9})) << "a power reading is no S-meter reading";
}

TEST_F(RadioViewTest, AfterCloseNothingIsQueuedAndLateResultsHaveNoEffect) {
  KnowFrequency(14070000);
  view_.Close();
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1017}));
  host_.timers.clear();
  view_.OnTimer(kTimerRefresh);
  view_.SetFrequency(7000000);
  view_.OnRadioData(0, FrequencyResult(3500000));
  EXPECT_EQ(view_.currentFrequency(), 14070000u);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1017}));
  EXPECT_TRUE(host_.timers.empty());
  EXPECT_FALSE(host_.closed);
  auto close = std::make_unique<RadioResult>();
  close->code = 1017;
  view_.OnRadioData(0, std::move(close));
  EXPECT_TRUE(host_.closed);
}

TEST_F(RadioViewTest, UserActionsCarryTheirValues) {
  view_.SetDualTracking(true);
  view_.SetFrequency(7074000, 1);
  view_.StepFrequency(-100);
  view_.SelectMode(3);
  EXPECT_EQ(worker_.PendingCodes(), (Codes{1013, 1012, 1011}));
  view_.SetFrequency(0);
  view_.SetFrequency(kMaxTypedFrequency + 1u);
  EXPECT_EQ(worker_.PendingCodes().size(), 3u) << "out-of-range frequencies are not sent";
}

}  // namespace
}  // namespace tavlorin
