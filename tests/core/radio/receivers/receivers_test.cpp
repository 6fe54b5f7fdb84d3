// The PCR-1000 and NRD-535 receivers over a pseudo-terminal, and the demonstration PCR-1000.
#include <gtest/gtest.h>

#include "radio/cat_radio.h"
#include "radio/nrd535/nrd535_driver.h"
#include "shell/debug_log.h"
#include "support/sim_line_radios.h"

namespace tavlorin {
namespace {

using testing::PtyParams;
using testing::PtyRadio;
using testing::SimNrd535;
using testing::SimPcr1000;

class Pcr1000PtyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    DebugLog::SetObserver([this](const std::string& line) {
      std::lock_guard lock(mutex_);
      log_.push_back(line);
    });
  }
  void TearDown() override { DebugLog::SetObserver(nullptr); }

  int Connect(std::string* message) {
    std::string id;
    return radio_.Connect(PtyParams(kGeneral, "PCR-1000", pty_, "9600"), &id, message);
  }
  bool Logged(const std::string& line) {
    std::lock_guard lock(mutex_);
    return std::find(log_.begin(), log_.end(), line) != log_.end();
  }

  SimPcr1000 sim_;
  PtyRadio pty_{sim_};
  CatRadio radio_;
  std::mutex mutex_;
  std::vector<std::string> log_;
};

TEST_F(Pcr1000PtyTest, StartUpPowersOnSpeedsUpTunesAndReads) {
  std::string message;
  ASSERT_EQ(Connect(&message), 1) << message;
  EXPECT_TRUE(radio_.isPcr1000);
  EXPECT_TRUE(sim_.powered());
  EXPECT_EQ(message, "Frequency = 14.225.000");
  const std::vector<std::string> c = sim_.commands();
  ASSERT_GE(c.size(), 6u);
  EXPECT_EQ(std::vector<std::string>(c.begin(), c.begin() + 6),
            (std::vector<std::string>{"H1?", "H101", "G300", "H1?", "G105", c[5]}));
  EXPECT_EQ(radio_.link().settings().speedText, "38400");
  EXPECT_EQ(sim_.lastTuning(),
            "K0001422500001000"
            "0");
  EXPECT_TRUE(Logged("Send PCR-1000 H101"));
  EXPECT_TRUE(Logged("Read PCR-1000 H101"));

  // Tuning, mode and filter travel together.
  EXPECT_EQ(radio_.SetFrequency(0, 145500000), 1);
  EXPECT_EQ(sim_.lastTuning(),
            "K0014550000001000"
            "0");
  EXPECT_EQ(radio_.SetValue("mode05", "NFM"), 1);
  EXPECT_EQ(radio_.SetValue("filter02", "15k"), 1);
  EXPECT_EQ(sim_.lastTuning(),
            "K0014550000005020"
            "0");
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 145500000u);
  EXPECT_EQ(radio_.ReadMode(), 5);
  sim_.SetLevel(0x9C);
  EXPECT_EQ(radio_.ReadSMeter(0), 0x9C);
  EXPECT_EQ(radio_.SetValue("J4180", "squelch"), 1);
  EXPECT_EQ(radio_.SetValue("XX99", "unknown"), 0);  // G001: refused
  EXPECT_EQ(radio_.SetMode(1), 0);                   // no mode set for this family
  EXPECT_EQ(radio_.ReadValue("I2", "no reads"), 0u);
  EXPECT_EQ(radio_.SwitchPower("PCR-1000", false), 1);
}

TEST_F(Pcr1000PtyTest, ReceiverThatNeverPowersUpFailsTheConnect) {
  pty_.Hangup();  // nothing answers "H1?"
  std::string message;
  EXPECT_EQ(Connect(&message), 0);
  EXPECT_FALSE(radio_.link().IsOpen());
}

TEST(Pcr1000DemoTest, TheTableAnswersAndTakesWrites) {
  CatRadio radio;
  ConnectParams p;
  p.company = kDemonstration;
  p.model = "PCR-1000: Demo";
  std::string id, message;
  radio.Connect(p, &id, &message);
  EXPECT_EQ(radio.manufacturer, kGeneral);
  EXPECT_TRUE(radio.isDemo);
  radio.values().LoadLines({"freq=0014225000", "mode=01", "filter=00"});
  Frequency hz = 0;
  EXPECT_EQ(radio.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 14225000u);
  EXPECT_EQ(radio.SetFrequency(0, 7060000), 1);
  EXPECT_EQ(radio.values().Get("freq"), "0007060000");
  EXPECT_EQ(radio.SetValue("mode03", "CW"), 1);
  EXPECT_EQ(radio.ReadMode(), 3);
  EXPECT_FALSE(radio.link().IsOpen());
}

TEST(Nrd535StatusTest, StatusLines) {
  Nrd535Status s = ParseNrd535Status("F14070000D2B1G1");
  EXPECT_EQ(s.frequency, 14070000u);
  EXPECT_EQ(s.mode, 2);
  EXPECT_EQ(s.bandwidth, 1);
  Nrd535Status partial = ParseNrd535Status("D3");
  EXPECT_FALSE(partial.frequency);
  EXPECT_EQ(partial.mode, 3);
  EXPECT_FALSE(ParseNrd535Status("F00000000").frequency);
  EXPECT_FALSE(ParseNrd535Status("garbage").mode);
}

TEST(Nrd535PtyTest, TakesRemoteControlTunesAndReads) {
  SimNrd535 sim;
  PtyRadio pty(sim);
  CatRadio radio;
  std::string id, message;
  ASSERT_EQ(radio.Connect(PtyParams(kNrd535, "NRD-535", pty, "4800"), &id, &message), 1) << message;
  EXPECT_TRUE(sim.remote());
  EXPECT_EQ(message, "Frequency = 9.650.000");
  EXPECT_EQ(radio.SetFrequency(0, 6070000), 1);
  Frequency hz = 0;
  EXPECT_EQ(radio.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 6070000u);
  EXPECT_NE(pty.Received().find("F06070000\r"), std::string::npos);
  EXPECT_EQ(radio.ReadMode(), 4);
  EXPECT_EQ(radio.SetValue("D2", "USB"), 1);
  EXPECT_EQ(radio.ReadMode(), 2);
  sim.SetLevel(87);
  EXPECT_EQ(radio.ReadSMeter(0), 87);
  EXPECT_EQ(radio.SetMode(2), 0);  // not an operation of this family
  pty.Hangup();
  EXPECT_EQ(radio.ReadMode(), 2);  // the last mode read stays
  EXPECT_EQ(radio.ReadFrequency(0, &hz), 0u);
}

}  // namespace
}  // namespace tavlorin
