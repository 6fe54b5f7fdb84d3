// ICOM radios end to end: CatRadio over a real pseudo-terminal against simulated radios.
#include <gtest/gtest.h>

#include <mutex>

#include "radio/cat_radio.h"
#include "support/sim_icom.h"

namespace tavlorin {
namespace {

using testing::PtyRadio;
using testing::SimIcom;
using testing::SimIcomOptions;

class CivPty {
 protected:
  int Connect(SimIcomOptions options, std::string* message, std::string* id) {
    pty_.reset();  // its thread answers with the simulator: stop it first
    sim_ = std::make_unique<SimIcom>(options);
    pty_ = std::make_unique<PtyRadio>(*sim_);
    radio_.SetUnsolicitedFrequencySink([this](Frequency hz) {
      std::lock_guard lock(mutex_);
      posted_.push_back(hz);
    });
    ConnectParams p = testing::PtyParams(kIcom, "IC-756Pro", *pty_, "19200");
    p.civAddress = "5C";
    return radio_.Connect(p, id, message);
  }

  std::unique_ptr<SimIcom> sim_;
  std::unique_ptr<PtyRadio> pty_;
  CatRadio radio_;
  std::mutex mutex_;
  std::vector<Frequency> posted_;
};

struct Setup {
  const char* name;
  SimIcomOptions options;
};

class CivPtyTest : public CivPty, public ::testing::TestWithParam<Setup> {
 protected:
  void SetUp() override {
    std::string id, message;
    ASSERT_EQ(Connect(GetParam().options, &message, &id), 1) << message;
    EXPECT_EQ(id, "5C");
    EXPECT_EQ(message, "Frequency = 14.070.000");
  }
};

TEST_P(CivPtyTest, ConnectsReadsAndTunes) {
  EXPECT_EQ(radio_.SetFrequency(0, 7060430), 1);
  EXPECT_EQ(sim_->frequency(), 7060430u);
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 0u);
  EXPECT_EQ(hz, 7060430u);

  EXPECT_EQ(radio_.SetMode(0x03), 1);
  EXPECT_EQ(sim_->mode(), 0x03);
  EXPECT_EQ(sim_->filter(), 0x02);  // the filter read first was sent back unchanged
  EXPECT_EQ(radio_.ReadMode(), 0x03);
  EXPECT_EQ(radio_.SetFilter(0x01), 1);
  EXPECT_EQ(sim_->filter(), 0x01);

  sim_->SetValue({0x1A, 0x05, 0x00, 0x40}, {0x01, 0x28});
  EXPECT_EQ(radio_.ReadValue("1A-05-00-40", "level"), 128u);
  EXPECT_EQ(radio_.SetValue("16-02-00", "preamp"), 1);
  EXPECT_EQ(sim_->sets().back(), (std::vector<uint8_t>{0x16, 0x02}));
}

TEST_P(CivPtyTest, TransceiveBroadcastsReachTheWindowAndNeverSpoilAReply) {
  for (int i = 0; i < 5; ++i) {
    sim_->SetSMeter(static_cast<uint32_t>(10 * i + 201));
    EXPECT_EQ(radio_.ReadSMeter(0), 10 * i + 201);
    EXPECT_EQ(radio_.ReadValue("15-02", "meter"), static_cast<uint32_t>(10 * i + 201));
  }
  if (GetParam().options.broadcastsAfterReply > 0) {
    // Broadcasts still waiting in the line reach the window with the next read.
    Frequency hz = 0;
    radio_.ReadFrequency(0, &hz);
    EXPECT_EQ(hz, 14070000u);
    std::lock_guard lock(mutex_);
    EXPECT_FALSE(posted_.empty());
    EXPECT_TRUE(radio_.transceiveSeen);
    for (Frequency announced : posted_) {
      EXPECT_EQ(announced, 14070000u);  // what the radio announced, decoded
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Radios, CivPtyTest,
    ::testing::Values(Setup{"UsbWithoutEcho", {0x5C, false, 0, false, false}},
                      Setup{"BusWithEcho", {0x5C, true, 0, false, false}},
                      Setup{"BusWithBroadcasts", {0x5C, true, 3, false, false}},
                      Setup{"UsbWithBroadcasts", {0x5C, false, 2, false, false}},
                      Setup{"UnswappedReplies", {.address = 0x5C, .unswappedReplies = true}},
                      Setup{"EchoThenUnswappedReplies",
                            {.address = 0x5C, .echo = true, .unswappedReplies = true}}),
    [](const ::testing::TestParamInfo<Setup>& param) { return std::string(param.param.name); });

class CivPtyFaultTest : public CivPty, public ::testing::Test {};

TEST_F(CivPtyFaultTest, RefusingRadioConnectsButRefusesSets) {
  std::string id, message;
  ASSERT_EQ(Connect({0x5C, true, 0, true, false}, &message, &id), 1) << message;
  EXPECT_EQ(radio_.civ().SetFrequency(3500000), 0);
  EXPECT_EQ(radio_.SetMode(0x00), 0);
  EXPECT_EQ(radio_.SetValue("16-02-01", "preamp"), 0);
  EXPECT_TRUE(sim_->sets().empty());
  Frequency hz = 0;
  radio_.ReadFrequency(0, &hz);
  EXPECT_EQ(hz, 14070000u);  // unchanged
}

TEST_F(CivPtyFaultTest, SilentRadioOrOneAtAnotherAddressFailsToConnect) {
  for (SimIcomOptions options :
       {SimIcomOptions{0x5C, false, 0, false, true}, SimIcomOptions{0x94, true, 0, false, false}}) {
    SCOPED_TRACE(options.address);
    std::string id, message;
    EXPECT_EQ(Connect(options, &message, &id), 0);
    EXPECT_EQ(message, "Failed to read frequency");
  }
}

}  // namespace
}  // namespace tavlorin
