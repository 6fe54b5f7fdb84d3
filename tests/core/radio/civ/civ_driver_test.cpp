// The ICOM operations over a scripted byte stream on a fake clock.
#include "radio/civ/civ_driver.h"

#include <gtest/gtest.h>

#include "link/line_settings.h"
#include "radio/cat_radio.h"
#include "support/fake_clock.h"
#include "support/hex_bytes.h"
#include "support/scripted_device.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::HexBytes;
using testing::ScriptedDevice;
using testing::ToHex;

class CivDriverTest : public ::testing::Test {
 protected:
  void SetUp() override { Attach("IC-756Pro", 0x5C); }

  void Attach(const std::string& model, uint8_t address) {
    auto device = std::make_unique<ScriptedDevice>(clock_);
    device_ = device.get();
    std::string message;
    ASSERT_TRUE(radio_.link().Attach(
        std::move(device), FamilyLineSettings(kIcom, "19200", false, false, false, 500), &message));
    radio_.manufacturer = kIcom;
    radio_.modelName = model;
    radio_.civAddress = address;
    radio_.SetUnsolicitedFrequencySink([this](Frequency hz) { posted_.push_back(hz); });
  }

  // Expects `sent` (hex) and answers `reply` (hex).
  void Expect(const char* sent, const char* reply, milliseconds delay = milliseconds(0)) {
    device_->OnWrite(HexBytes(sent), HexBytes(reply), delay);
  }

  testing::FakeClock clock_;
  CatRadio radio_{clock_};
  ScriptedDevice* device_ = nullptr;
  std::vector<Frequency> posted_;
};

TEST_F(CivDriverTest, ReadsFrequencyFromTheRadioAt5C) {
  Expect("FE FE 5C E0 03 FD", "FE FE E0 5C 03 00 00 07 14 00 FD");
  Frequency hz = 0;
  std::string text;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz, &text), 0u);  // inverted: 0 is success
  EXPECT_EQ(hz, 14070000u);
  EXPECT_EQ(text, "14.070.000");
  EXPECT_EQ(device_->pendingExpectations(), 0u);
  EXPECT_EQ(radio_.civ().transaction().echo(), CivEcho::kNoEcho);
}

TEST_F(CivDriverTest, EchoedFramesAreSkippedWithinTheSameWindow) {
  Expect("FE FE 5C E0 03 FD", "FE FE 5C E0 03 FD FE FE E0 5C 03 00 00 07 14 00 FD");
  Frequency hz = 0;
  radio_.ReadFrequency(0, &hz);
  EXPECT_EQ(hz, 14070000u);
  EXPECT_EQ(radio_.civ().transaction().echo(), CivEcho::kEchoes);
  EXPECT_LT(clock_.elapsed(), milliseconds(200));

  Expect("FE FE 5C E0 05 00 00 06 07 00 FD", "FE FE 5C E0 05 00 00 06 07 00 FD FE FE E0 5C FB FD");
  EXPECT_EQ(radio_.civ().SetFrequency(7060000), 1);
  EXPECT_LT(clock_.elapsed(), milliseconds(200));
}

TEST_F(CivDriverTest, RefusalEndsTheReadAtOnce) {
  Expect("FE FE 5C E0 05 00 00 07 14 00 FD", "FE FE E0 5C FA FD");
  EXPECT_EQ(radio_.civ().SetFrequency(14070000), 0);
  EXPECT_EQ(radio_.SetFrequency(0, 14070000), 1);  // the operation itself always answers 1
  Expect("FE FE 5C E0 15 02 FD", "FE FE E0 5C FA FD");
  const auto before = clock_.elapsed();
  EXPECT_EQ(radio_.ReadSMeter(0), 0);
  EXPECT_EQ(clock_.elapsed(), before);  // FA FD: no waiting at all
}

TEST_F(CivDriverTest, BurstOfTransceiveBroadcastsAnswersTheFrequencyRead) {
  // The operator spins the dial and the radio never answers 03 directly: the latest broadcast
  // is the answer, and every broadcast has reached the window on the way.
  Expect("FE FE 5C E0 03 FD",
         "FE FE 00 5C 00 10 00 07 14 00 FD FE FE 00 5C 00 20 00 07 14 00 FD "
         "FE FE 00 5C 00 30 00 07 14 00 FD");
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 0u);
  EXPECT_EQ(hz, 14070030u);
  EXPECT_TRUE(radio_.transceiveSeen);
  EXPECT_EQ(posted_, (std::vector<Frequency>{14070010u, 14070020u, 14070030u}));
  EXPECT_EQ(device_->writes().size(), 1u);  // one attempt was enough
}

TEST_F(CivDriverTest, DirectReplyWinsOverBroadcastsLeftFromBefore) {
  // Broadcasts still in the line from before the request are older than the radio's reply.
  device_->Inject(HexBytes("FE FE 00 5C 00 00 00 06 07 00 FD"));
  Expect("FE FE 5C E0 03 FD", "FE FE E0 5C 03 00 00 07 14 00 FD", milliseconds(20));
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 0u);
  EXPECT_EQ(hz, 14070000u);
  EXPECT_EQ(posted_, std::vector<Frequency>{7060000u});
  EXPECT_LT(clock_.elapsed(), milliseconds(200));
}

TEST_F(CivDriverTest, BroadcastReadInPlaceOfAnAcknowledgeNeverAnswersASet) {
  Expect("FE FE 5C E0 05 00 00 07 14 00 FD",
         "FE FE 00 5C 00 00 00 07 14 00 FD FE FE 00 5C 01 03 01 FD FE FE E0 5C FB FD");
  EXPECT_EQ(radio_.civ().SetFrequency(14070000), 1);
  EXPECT_EQ(posted_, std::vector<Frequency>{14070000u});
  Expect("FE FE 5C E0 05 00 00 07 14 00 FD", "FE FE 00 5C 00 00 00 07 14 00 FD");
  EXPECT_EQ(radio_.civ().SetFrequency(14070000), 0);
}

TEST_F(CivDriverTest, BroadcastsNeverDisturbOtherReads) {
  Expect("FE FE 5C E0 15 02 FD",
         "FE FE 00 5C 00 00 00 07 14 00 FD FE FE 00 5C 01 03 02 FD FE FE E0 5C 15 02 01 20 FD");
  EXPECT_EQ(radio_.ReadSMeter(0), 120);
  EXPECT_EQ(posted_, std::vector<Frequency>{14070000u});
  EXPECT_TRUE(radio_.unsolicitedData);
  // A frequency read clears the flag: the window is up to date again.
  Expect("FE FE 5C E0 03 FD", "FE FE E0 5C 03 00 00 07 14 00 FD");
  Frequency hz = 0;
  radio_.ReadFrequency(0, &hz);
  EXPECT_FALSE(radio_.unsolicitedData);
}

TEST_F(CivDriverTest, TransceiveModeBroadcastAnswersTheModeRead) {
  Expect("FE FE 5C E0 04 FD", "FE FE 00 5C 01 03 01 FD");
  EXPECT_EQ(radio_.ReadMode(), 0x03);
  EXPECT_EQ(radio_.civ().lastFilter(), 0x01);
}

TEST_F(CivDriverTest, Ic735UsesFourFrequencyBytes) {
  Attach("IC-735", 0x04);
  Expect("FE FE 04 E0 03 FD", "FE FE E0 04 03 00 00 07 14 FD");
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 0u);
  EXPECT_EQ(hz, 14070000u);
  Expect("FE FE 04 E0 05 00 00 06 07 FD", "FE FE E0 04 FB FD");
  EXPECT_EQ(radio_.civ().SetFrequency(7060000), 1);
  // A five-byte reply is not an IC-735 frequency.
  device_->SetResponder(
      [](const std::string&) { return HexBytes("FE FE E0 04 03 00 00 07 14 00 FD"); });
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 0u);
}

TEST_F(CivDriverTest, SetValueThreeAndFourTokens) {
  Expect("FE FE 5C E0 1A 05 00 01 FD", "FE FE E0 5C FB FD");
  Expect("FE FE 5C E0 16 02 FD", "FE FE E0 5C FB FD");
  EXPECT_EQ(radio_.SetValue("1A-05-00-01", "four"), 1);
  EXPECT_EQ(radio_.SetValue("16-02-00", "three"), 1);
  EXPECT_TRUE(device_->unexpected().empty());
}

TEST_F(CivDriverTest, ReadValueBuildsTheValueAndCachesIt) {
  Expect("FE FE 5C E0 1A 05 00 40 FD", "FE FE E0 5C 1A 05 00 40 01 28 FD");
  EXPECT_EQ(radio_.ReadValue("1A-05-00-40", "AF level"), 128u);
  EXPECT_EQ(radio_.civ().CachedValue("1A-05-00-40"), 128u);
  Expect("FE FE 5C E0 1A 05 FD", "FE FE E0 5C 1A 05 47 FD");
  EXPECT_EQ(radio_.ReadValue("1A-05", "short"), 47u);
  EXPECT_EQ(radio_.civ().CachedValue("1A-05-00"), 47u);
  // A reply to another sub-command is not the answer; nor is a late reply to a neighbour.
  Expect("FE FE 5C E0 14 01 FD", "FE FE E0 5C 14 02 01 28 FD");
  EXPECT_EQ(radio_.ReadValue("14-01", "wrong sub"), 0u);
  EXPECT_FALSE(radio_.civ().CachedValue("14-01-00"));
  Expect("FE FE 5C E0 1A 05 00 40 FD",
         "FE FE E0 5C 1A 05 00 41 00 07 FD FE FE E0 5C 1A 05 00 40 00 09 FD");
  EXPECT_EQ(radio_.ReadValue("1A-05-00-40", "level"), 9u);
}

TEST_F(CivDriverTest, SetModeReadsTheFilterFirst) {
  Expect("FE FE 5C E0 04 FD", "FE FE E0 5C 04 01 02 FD");
  Expect("FE FE 5C E0 06 03 02 FD", "FE FE E0 5C FB FD");
  EXPECT_EQ(radio_.SetMode(0x03), 1);
  Expect("FE FE 5C E0 04 FD", "FE FE E0 5C 04 03 02 FD");
  Expect("FE FE 5C E0 06 03 01 FD", "FE FE E0 5C FB FD");
  EXPECT_EQ(radio_.SetFilter(0x01), 1);
  EXPECT_EQ(device_->pendingExpectations(), 0u);
}

TEST_F(CivDriverTest, SetModeWithoutAKnownFilterSendsNoFilterByte) {
  Expect("FE FE 5C E0 04 FD", "");
  Expect("FE FE 5C E0 06 05 FD", "FE FE E0 5C FB FD");
  EXPECT_EQ(radio_.SetMode(0x05), 1);
  // Without any mode known the filter cannot be set alone.
  Attach("IC-756Pro", 0x5C);
  CivDriver fresh(radio_);
  device_->SetResponder([](const std::string&) { return std::string(); });
  EXPECT_EQ(fresh.SetFilter(0x02), 0);
  EXPECT_EQ(device_->writes().size(), 1u);  // only the mode read went out
}

TEST_F(CivDriverTest, StatusIdentificationVfoAndMemoryCommands) {
  Expect("FE FE 5C E0 16 45 FD", "FE FE E0 5C 16 45 01 FD");
  EXPECT_EQ(radio_.civ().ReadStatus(0x16, 0x45), 1u);
  Expect("FE FE 5C E0 16 45 00 FD", "FE FE E0 5C FB FD");
  EXPECT_EQ(radio_.civ().SetState(0x16, 0x45, 0), 1);
  Expect("FE FE 5C E0 1C FD", "FE FE E0 5C 1C 00 FD");
  EXPECT_EQ(radio_.civ().ReadStatus(0x1C, kCivAnySub), 0u);
  Expect("FE FE 5C E0 19 00 FD", "FE FE E0 5C 19 00 5C FD");
  std::string id;
  EXPECT_EQ(radio_.civ().ReadIdentification(&id), 1);
  EXPECT_EQ(id, "5C");
  EXPECT_EQ(radio_.civReportedAddress, 0x5C);
  // VFO and memory commands omit the data byte FF.
  Expect("FE FE 5C E0 07 FD", "FE FE E0 5C FB FD");
  Expect("FE FE 5C E0 07 01 FD", "FE FE E0 5C FB FD");
  Expect("FE FE 5C E0 08 00 12 FD", "FE FE E0 5C FB FD");
  EXPECT_EQ(radio_.SetVfo(0x07, 0xFF), 1);
  EXPECT_EQ(radio_.SetVfo(0x07, 0x01), 1);
  EXPECT_EQ(radio_.civ().SetMemory(0x08, 0x00), 0);  // the script expected 00 12: unanswered
}

// Bad input from the radio: every case ends within the read windows, fails, and leaves the
// values the driver keeps as they were.
TEST_F(CivDriverTest, BadRepliesFailWithoutHangingAndKeepTheLastValues) {
  Expect("FE FE 5C E0 04 FD", "FE FE E0 5C 04 03 01 FD");
  ASSERT_EQ(radio_.ReadMode(), 0x03);
  const struct {
    const char* name;
    const char* bytes;
  } cases[] = {
      {"silence", ""},
      {"garbage", "13 37 00 FF 42 FD 99 FD"},
      {"truncated frame", "FE FE E0 5C 03 00 00"},
      {"frame for another address", "FE FE E2 5C 03 00 00 07 14 00 FD"},
      {"frame from another radio", "FE FE E0 66 03 00 00 07 14 00 FD"},
      {"reply too short", "FE FE E0 5C 03 00 07 14 00 FD"},
      {"not BCD", "FE FE E0 5C 03 0A 00 07 14 00 FD"},
      {"acknowledge in place of a value", "FE FE E0 5C FB FD"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string reply = HexBytes(c.bytes);
    device_->SetResponder([&](const std::string& w) { return w[4] == 0x03 ? reply : ""; });
    const auto before = clock_.elapsed();
    Frequency hz = 12345;
    EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
    EXPECT_EQ(hz, 0u);
    // Four attempts of one 200 ms reply window each, never the 500 ms byte time-out on top.
    EXPECT_LE(clock_.elapsed() - before, milliseconds(4 * 200));
    EXPECT_EQ(radio_.ReadMode(), 0x03);  // mode read unanswered: the last mode stays
    EXPECT_EQ(radio_.civ().lastFilter(), 0x01);
  }
}

TEST_F(CivDriverTest, BroadcastsThatNeverCarryTheAnswerCannotStretchARead) {
  // A radio sending its mode every 150 ms restarts the reply window each time; the frequency
  // read must still end, within a few of its own deadlines, not after the broadcasts stop.
  for (int i = 1; i <= 400; ++i) {
    device_->Inject(HexBytes("FE FE 00 5C 01 03 02 FD"), milliseconds(150 * i));
  }
  device_->SetResponder([](const std::string&) { return std::string(); });
  Frequency hz = 1;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 0u);
  EXPECT_LT(clock_.elapsed(), milliseconds(4 * 1000 + 500));
}

TEST_F(CivDriverTest, AbortOrAVanishedPortEndsEveryOperationAtOnce) {
  radio_.abort = true;
  Frequency hz = 1;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 0u);
  EXPECT_LT(clock_.elapsed(), milliseconds(200));
  radio_.abort = false;
  device_->Vanish();
  const auto before = clock_.elapsed();
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(radio_.civ().SetFrequency(14070000), 0);
  EXPECT_EQ(radio_.ReadValue("14-01", "x"), 0u);
  EXPECT_LT(clock_.elapsed() - before, milliseconds(1000));
}

}  // namespace
}  // namespace tavlorin
