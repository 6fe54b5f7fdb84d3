// Yaesu radios end to end: CatRadio over a real pseudo-terminal against simulated radios that
// answer only what they are asked.
#include <gtest/gtest.h>

#include "radio/cat_radio.h"
#include "support/sim_yaesu.h"

namespace tavlorin {
namespace {

using testing::PtyRadio;
using testing::SimYaesu;
using testing::SimYaesuModel;

class YaesuPtyTest : public ::testing::Test {
 protected:
  int Connect(SimYaesuModel model, const char* name, bool acknowledgeSets, std::string* message) {
    sim_ = std::make_unique<SimYaesu>(model, acknowledgeSets);
    pty_ = std::make_unique<PtyRadio>(*sim_);
    std::string id = "untouched";
    const int ok = radio_.Connect(testing::PtyParams(kYaesu, name, *pty_, "38400"), &id, message);
    EXPECT_EQ(id, "untouched");  // only ICOM radios identify themselves
    return ok;
  }

  std::unique_ptr<SimYaesu> sim_;
  std::unique_ptr<PtyRadio> pty_;
  CatRadio radio_;
};

TEST_F(YaesuPtyTest, Ft817ConnectsTunesAndReads) {
  std::string message;
  ASSERT_EQ(Connect(SimYaesuModel::kFt817, "FT-817", true, &message), 1) << message;
  EXPECT_EQ(message, "Frequency = 14.070.000");

  EXPECT_EQ(radio_.SetFrequency(0, 7060430), 1);
  EXPECT_EQ(sim_->frequency(), 7060430u / 10 * 10);  // the radio tunes in 10 Hz steps
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 7060430u / 10 * 10);
  // VFO B: swapped in for the read and back again.
  EXPECT_EQ(radio_.ReadFrequency(1, &hz), 1u);
  EXPECT_EQ(hz, 7060000u);
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);  // A is back in use
  EXPECT_EQ(hz, 7060430u / 10 * 10);

  EXPECT_EQ(radio_.SetMode(0x03), 1);
  EXPECT_EQ(sim_->mode(), 0x03);
  EXPECT_EQ(radio_.ReadMode(), 0x03);
  sim_->SetSMeter(0xA7);  // high nibble: squelch and other flags
  EXPECT_EQ(radio_.ReadSMeter(0), 7);

  // The narrow filter bits live in the current VFO's band record.
  sim_->SetMemory(0x55, 0x00);  // VFO A
  sim_->SetMemory(0x59, 0x05);  // band 5
  const uint16_t record = 0x7D + 5 * 26;
  sim_->SetMemory(record + 1, 0x41);
  sim_->SetMemory(record + 2, 0x7F);
  EXPECT_EQ(radio_.SetValue("I-Narrow-On", "narrow"), 1);
  // The radio answers no write: a read behind the writes is answered only once it took them.
  radio_.ReadFrequency(0, &hz);
  EXPECT_EQ(sim_->Memory(record + 1), 0x59);
  EXPECT_EQ(sim_->Memory(record + 2), 0x7F);
  EXPECT_EQ(radio_.SetValue("I-Narrow-Off", "wide"), 1);
  radio_.ReadFrequency(0, &hz);
  EXPECT_EQ(sim_->Memory(record + 1), 0x41);
}

TEST_F(YaesuPtyTest, Ft817StaysInStepAfterABadCommandAndASilentResultByte) {
  std::string message;
  ASSERT_EQ(Connect(SimYaesuModel::kFt817, "FT-817", false, &message), 1) << message;
  // An opcode the radio does not know: the write goes out, nothing comes back.
  EXPECT_EQ(radio_.SetValue("00-00-00-00-5A", "unknown"), 1);
  // No result byte after the set: the read waits its time-out and the next read is still right.
  EXPECT_EQ(radio_.SetFrequency(0, 3573000), 1);
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 3573000u);
  EXPECT_GE(sim_->ignored(), 1);
}

TEST_F(YaesuPtyTest, Ft847NeedsItsStartUpBytesAndReadsSatelliteSlots) {
  std::string message;
  ASSERT_EQ(Connect(SimYaesuModel::kFt847, "FT-847", false, &message), 1) << message;
  EXPECT_EQ(message, "Frequency = 14.070.000");
  radio_.yaesu().SetSatelliteMode(true);
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 145990000u);
  EXPECT_EQ(radio_.ReadFrequency(1, &hz), 1u);
  EXPECT_EQ(hz, 435800000u);
  // The FT-847 answers no set: a read behind it shows that it took the command.
  EXPECT_EQ(radio_.SetFrequency(1, 435795000), 1);
  EXPECT_EQ(radio_.ReadFrequency(1, &hz), 1u);
  EXPECT_EQ(hz, 435795000u);
  EXPECT_EQ(sim_->frequency(2), 435795000u);
  EXPECT_EQ(radio_.ReadMode(), 0x08);
  radio_.yaesu().SetSatelliteMode(false);
  EXPECT_EQ(radio_.SetFrequency(0, 21074000), 1);
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 21074000u);
}

}  // namespace
}  // namespace tavlorin
