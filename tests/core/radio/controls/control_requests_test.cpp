// The radio window's control requests against radios: a Kenwood and an ICOM on a
// pseudo-terminal, a Yaesu on a scripted line and the demonstration radios, through the real
// worker and window logic where the behaviour crosses them.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

#include "radio/headless_radio_window.h"
#include "radio/radio_request_handler.h"
#include "support/fake_clock.h"
#include "support/hex_bytes.h"
#include "support/run_until.h"
#include "support/scripted_device.h"
#include "support/sim_icom.h"
#include "support/sim_kenwood.h"
#include "support/sim_line_radios.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using Bytes = std::vector<uint8_t>;
using States = std::vector<std::pair<std::string, bool>>;

constexpr milliseconds kHangGuard{20000};

RadioResult Request(CatRadio& radio, uint32_t code, const std::string& text = {},
                    uint32_t value1 = 0) {
  RadioRequest request;
  request.code = code;
  request.radio = &radio;
  request.modelName = radio.modelName;
  request.text = text;
  request.value1 = value1;
  RadioResult result;
  result.code = code;
  RadioRequestHandler::Run(request, result);
  return result;
}

bool Has(const States& states, const std::string& name, bool on) {
  return std::find(states.begin(), states.end(), std::pair{name, on}) != states.end();
}

int Value(const std::vector<std::pair<std::string, int>>& list, const std::string& name) {
  for (const auto& [n, v] : list) {
    if (n == name) {
      return v;
    }
  }
  return -1;
}

// A Kenwood radio on a serial line, driven by a radio window: the buttons the panel shows
// follow the radio, and the VFO the window follows is the one the radio listens on.
TEST(KenwoodControlsTest, VfoMemoryTransmitAndDualTrackingFollowTheRadio) {
  testing::SimKenwood sim;
  testing::PtyRadio pty(sim);
  CatRadio radio;
  std::string id, message;
  ASSERT_EQ(radio.Connect(testing::PtyParams(kKenwood, "TS-2000", pty, "57600"), &id, &message), 1)
      << message;
  RadioWorker worker;
  EventLoop loop;
  std::vector<bool> transmit;
  HeadlessRadioWindow::Callbacks callbacks;
  callbacks.transmit = [&](bool on) { transmit.push_back(on); };
  RadioViewOptions options;
  options.refreshInterval = milliseconds(20);
  options.trackDualFast = true;
  HeadlessRadioWindow window(radio, worker, loop, options, callbacks);
  CRadioView& view = window.view();
  auto until = [&](const std::function<bool()>& done) {
    return testing::RunLoopUntil(loop, done, kHangGuard);
  };
  worker.Start();
  window.Start();
  ASSERT_TRUE(until([&] { return view.currentFrequency() == 14070000; }));

  view.SetButton("VFO B", true);  // the panel's button
  ASSERT_TRUE(until([&] { return view.currentFrequency() == 7074000; }));
  EXPECT_EQ(sim.receiveVfo(), 1);
  EXPECT_EQ(sim.transmitVfo(), 1);

  view.SetDualTracking(true);  // both VFOs read; the one with its button lit is shown
  sim.SetFrequencyA(21074000);
  ASSERT_TRUE(until([&] { return view.frequencyA() == 21074000; }));
  EXPECT_EQ(view.currentFrequency(), 7074000u);

  sim.SetFrequencyA(3573000);
  view.PressButton("VFO B");  // lit: pressing switches back to A
  ASSERT_TRUE(until([&] { return view.currentFrequency() == 3573000; }));
  EXPECT_EQ(sim.receiveVfo(), 0);

  view.SetButton("TX", true);
  ASSERT_TRUE(until([&] { return view.transmitting(); }));
  EXPECT_TRUE(sim.transmitting());
  view.SetButton("TX", false);
  ASSERT_TRUE(until([&] { return !view.transmitting(); }));
  EXPECT_EQ(transmit, (std::vector<bool>{true, false}));

  view.SetButton("MEM", true);
  ASSERT_TRUE(until([&] { return sim.receiveVfo() == 2; }));
  EXPECT_EQ(view.PollSelector() & 0x3u, 3u) << "memory is read from the status reply";
  EXPECT_TRUE(window.CloseAndWait(kHangGuard));
  worker.Stop();
}

// An ICOM radio answers its status reads and takes its states, levels, VFO and memory
// commands: every control kind of the family through the CI-V operations.
class IcomControlsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    sim_.SetValue({0x0F}, {0x01});        // split on
    sim_.SetValue({0x1C, 0x00}, {0x00});  // receiving
    sim_.SetValue({0x16, 0x02}, {0x01});  // preamp 1
    sim_.SetValue({0x16, 0x12}, {0x03});  // AGC slow
    sim_.SetValue({0x14, 0x01}, {0x00, 0x80});
    sim_.SetValue({0x15, 0x01}, {0x01});  // squelch open
    sim_.SetValue({0x15, 0x11}, {0x01, 0x20});
    sim_.SetValue({0x15, 0x12}, {0x00, 0x30});
    sim_.SetValue({0x15, 0x13}, {0x00, 0x05});
    ConnectParams params = testing::PtyParams(kIcom, "IC-7300", pty_, "19200");
    params.civAddress = "5C";
    std::string id, message;
    ASSERT_EQ(radio_.Connect(params, &id, &message), 1) << message;
  }
  std::vector<Bytes> Sets() const { return sim_.sets(); }

  testing::SimIcom sim_{{0x5C, false, 0, false, false}};
  testing::PtyRadio pty_{sim_};
  CatRadio radio_;
};

TEST_F(IcomControlsTest, ButtonsAndStatusAreReadAndSet) {
  RadioResult r = Request(radio_, kReadButtons);
  EXPECT_TRUE(Has(r.states, "Split", true));
  EXPECT_TRUE(Has(r.states, "TX", false));
  EXPECT_TRUE(Has(Request(radio_, kReadStatusItems).states, "Busy", true));

  r = Request(radio_, kPressButton, "Split", 0);
  EXPECT_EQ(Sets().back(), (Bytes{0x0F, 0x00}));
  EXPECT_TRUE(Has(r.states, "Split", false)) << "read again after the press";

  // The radio cannot say which VFO is in use: the button shows what was set.
  r = Request(radio_, kPressButton, "VFO B", 1);
  EXPECT_EQ(Sets().back(), (Bytes{0x07, 0x01}));
  EXPECT_TRUE(Has(r.states, "VFO B", true));
  Request(radio_, kPressButton, "MEM", 1);
  EXPECT_EQ(Sets().back(), (Bytes{0x08}));
  Request(radio_, kPressButton, "MEM", 0);
  EXPECT_EQ(Sets().back(), (Bytes{0x07}));
  r = Request(radio_, kPressButton, "A/B", 1);
  EXPECT_EQ(Sets().back(), (Bytes{0x07, 0xB0}));
  EXPECT_FALSE(std::any_of(r.states.begin(), r.states.end(), [](const auto& s) {
    return s.first == "A/B";
  })) << "a swap has no state to show";
}

TEST_F(IcomControlsTest, DropdownsSlidersAndMeters) {
  RadioResult r = Request(radio_, kReadDropdowns);
  EXPECT_EQ(Value(r.dropdowns, "Preamp"), 1);
  EXPECT_EQ(Value(r.dropdowns, "AGC"), 3);
  EXPECT_EQ(Value(r.dropdowns, "Mode"), 0x01);
  EXPECT_EQ(Value(r.dropdowns, "Filter"), 0x02);

  Request(radio_, kSelectDropdown, "AGC", 1);
  EXPECT_EQ(Sets().back(), (Bytes{0x16, 0x12, 0x01}));
  Request(radio_, kSelectDropdown, "Mode", 0x03);
  EXPECT_EQ(sim_.mode(), 0x03);

  r = Request(radio_, kSetSlider, "AF Gain", 128);
  EXPECT_EQ(Sets().back(), (Bytes{0x14, 0x01, 0x01, 0x28}));
  EXPECT_EQ(r.value, 128u) << "read back from the radio";
  EXPECT_EQ(Request(radio_, kReadSlider, "AF Gain").value, 128u);

  sim_.SetSMeter(121);
  r = Request(radio_, kReadRxMeters);
  EXPECT_EQ(r.mainMeter.numbers[0], 121);
  EXPECT_EQ(r.mainMeter.numbers[2], 1);
  r = Request(radio_, kReadTxMeters);
  EXPECT_EQ(r.meters, (std::vector<std::pair<std::string, int>>{
                          {"Power out", 120}, {"SWR", 30}, {"ALC", 5}}));
  EXPECT_EQ(r.mainMeter.numbers[0], 120);
  EXPECT_EQ(r.subMeter.numbers[0], 30);
}

// Yaesu: switches go through SetCommandState, the SAT button moves the FT-847's frequency
// reads to the satellite slots, and the transmit meters are read as such.
class YaesuControlsTest : public ::testing::Test {
 protected:
  void Attach(const std::string& model) {
    auto device = std::make_unique<testing::ScriptedDevice>(clock_);
    device_ = device.get();
    device_->SetResponder([](const std::string&) { return std::string(1, '\x35'); });
    std::string message;
    ASSERT_TRUE(radio_.link().Attach(std::move(device),
                                     FamilyLineSettings(kYaesu, "38400", false, false, false, 500),
                                     &message));
    radio_.manufacturer = kYaesu;
    radio_.modelName = model;
  }
  std::string Last() const { return testing::ToHex(device_->writes().back()); }

  testing::FakeClock clock_;
  CatRadio radio_{clock_};
  testing::ScriptedDevice* device_ = nullptr;
};

TEST_F(YaesuControlsTest, SwitchesSatelliteSlotsAndTransmitMeters) {
  Attach("FT-817");
  RadioResult r = Request(radio_, kPressButton, "Split", 1);
  EXPECT_EQ(Last(), "00 00 00 00 02");
  EXPECT_TRUE(Has(r.states, "Split", true));
  Request(radio_, kPressButton, "Split", 0);
  EXPECT_EQ(Last(), "00 00 00 00 82");
  r = Request(radio_, kReadTxMeters);
  EXPECT_EQ(testing::ToHex(device_->writes().back()), "00 00 00 00 F7")
      << "the transmit meters, not the sub receiver's";
  EXPECT_EQ(r.meters, (std::vector<std::pair<std::string, int>>{{"Power out", 5}}));

  Attach("FT-847");
  Frequency hz = 0;
  radio_.ReadFrequency(0, &hz);
  EXPECT_EQ(Last(), "00 00 00 00 03");
  Request(radio_, kPressButton, "SAT", 1);
  EXPECT_TRUE(radio_.yaesu().satelliteMode());
  radio_.ReadFrequency(0, &hz);
  EXPECT_EQ(Last(), "00 00 00 00 13") << "the satellite receive slot";
  Request(radio_, kPressButton, "SAT", 0);
  EXPECT_FALSE(radio_.yaesu().satelliteMode());
}

// The demonstration TS-2000 answers the same requests from its table.
class DemoControlsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ConnectParams params;
    params.company = kDemonstration;
    params.model = "TS-2000: Demo";
    std::string id, message;
    ASSERT_EQ(radio_.Connect(params, &id, &message), 1) << message;
  }
  testing::FakeClock clock_;
  CatRadio radio_{clock_};
};

TEST_F(DemoControlsTest, PressingAButtonTogglesItThroughTheWindow) {
  RadioWorker worker;
  EventLoop loop;
  HeadlessRadioWindow window(radio_, worker, loop, RadioViewOptions{}, {});
  worker.Start();
  window.Start();  // results count once a frequency is known
  ASSERT_TRUE(testing::RunLoopUntil(
      loop, [&] { return window.view().currentFrequency() != 0; }, kHangGuard));
  for (int press = 0; press < 3; ++press) {
    window.view().PressButton("NB");
    const bool on = press % 2 == 0;  // read back from the radio after each press
    ASSERT_TRUE(testing::RunLoopUntil(
        loop, [&] { return window.view().buttonOn("NB") == on; }, kHangGuard));
  }
  window.CloseAndWait(kHangGuard);
  worker.Stop();
  EXPECT_EQ(radio_.values().Get("NB"), "1");
}

TEST_F(DemoControlsTest, TheSecondReceiverFillsTheSubMeter) {
  radio_.values().Set("SM1", "0012");
  RadioResult r = Request(radio_, kReadRxMeters);
  EXPECT_NE(r.mainMeter.numbers[0], 0);
  EXPECT_EQ(r.subMeter.numbers[0], 12);
  EXPECT_EQ(r.subMeter.numbers[1], 30) << "the meter's full scale";
}

TEST_F(DemoControlsTest, CommandTextsWithAForeignPercentAreNeverSent) {
  // A slider command of another program: "%s" and "%n" used to reach printf as its format.
  for (const char* text : {"AG%s;", "AG0%n", "AG0%2000000000u", "AG0%03u%"}) {
    RadioResult r = Request(radio_, kSetSlider, text, 120);
    EXPECT_EQ(r.value, 0xFFFFFFFFu) << text;
    Request(radio_, kControlValue, text, 120);
    Request(radio_, kSetDropdownByCommand, text, 3);
  }
  EXPECT_EQ(radio_.values().Get("AG0"), "50") << "nothing was stored";
  EXPECT_FALSE(radio_.values().Has("AG"));
  // A text with its one number still works, as other programs send them.
  EXPECT_EQ(Request(radio_, kSetSlider, "AG0%03u", 120).value, 120u);
  EXPECT_EQ(radio_.values().Get("AG0"), "120");
  Request(radio_, kPressButton, "FR1", 0);  // not a control: sent as it is
  EXPECT_EQ(radio_.values().Get("FR"), "1");
}

}  // namespace
}  // namespace tavlorin
