#include "link/radio_link.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/debug_log.h"
#include "support/fake_clock.h"
#include "support/scripted_device.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::FakeClock;
using testing::ScriptedDevice;

class RadioLinkTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto owned = std::make_unique<ScriptedDevice>(clock_);
    device_ = owned.get();
    std::string message;
    ASSERT_TRUE(link_.Attach(std::move(owned), Settings(), &message)) << message;
  }

  static LineSettings Settings() {
    return FamilyLineSettings(kKenwood, "9600", false, true, false, 100);
  }

  std::string ReadUntil(char terminator, size_t max = 256) {
    std::vector<uint8_t> buffer(max);
    size_t got = 0;
    link_.ReadUntil(buffer.data(), max, uint8_t(terminator), &got);
    return std::string(buffer.begin(), buffer.begin() + long(got));
  }

  std::string Read(size_t count) {
    std::vector<uint8_t> buffer(count);
    size_t got = 0;
    link_.Read(buffer.data(), count, &got);
    return std::string(buffer.begin(), buffer.begin() + long(got));
  }

  FakeClock clock_;
  RadioLink link_{clock_};
  ScriptedDevice* device_ = nullptr;
};

TEST_F(RadioLinkTest, ReadUntilStopsAtTheTerminatorAndLeavesTheRest) {
  device_->Inject("FA00014070000;IF");
  EXPECT_EQ(ReadUntil(';'), "FA00014070000;");
  EXPECT_EQ(clock_.elapsed(), milliseconds(0)) << "a complete reply must not wait";
  EXPECT_EQ(ReadUntil(';'), "IF") << "the rest stays for the next read";
}

TEST_F(RadioLinkTest, ReadUntilGivesUpAfterOneByteTimeOut) {
  device_->Inject("FA000");
  EXPECT_EQ(ReadUntil(';'), "FA000");
  // multiplier + constant for the one byte that never came
  EXPECT_EQ(clock_.elapsed(), milliseconds(500));
}

TEST_F(RadioLinkTest, ReadUntilNeverWaitsPastItsDeadline) {
  device_->Inject("FE");
  size_t got = 0;
  uint8_t buffer[16];
  link_.ReadUntil(buffer, sizeof buffer, 0xFD, &got, clock_.Now() + milliseconds(200));
  EXPECT_EQ(got, 2u);
  EXPECT_EQ(clock_.elapsed(), milliseconds(200)) << "not the 500 ms of a byte time-out";
  link_.ReadUntil(buffer, sizeof buffer, 0xFD, &got, clock_.Now() - milliseconds(1));
  EXPECT_EQ(got, 0u);
  EXPECT_EQ(clock_.elapsed(), milliseconds(200)) << "a passed deadline waits for nothing";
}

TEST_F(RadioLinkTest, ReadUntilStopsAtTheMaximumCount) {
  device_->Inject("ABCDEFGH;");
  EXPECT_EQ(ReadUntil(';', 4), "ABCD");
  EXPECT_EQ(ReadUntil(';'), "EFGH;");
}

TEST_F(RadioLinkTest, ReadUntilWaitsForALateReply) {
  device_->Inject("FA00007060430;", milliseconds(300));
  EXPECT_EQ(ReadUntil(';'), "FA00007060430;");
  EXPECT_EQ(clock_.elapsed(), milliseconds(300));
}

TEST_F(RadioLinkTest, ReadReturnsAsSoonAsTheCountArrived) {
  device_->Inject(std::string("\x01\x02\x03\x04\x05", 5));
  EXPECT_EQ(Read(5).size(), 5u);
  EXPECT_EQ(clock_.elapsed(), milliseconds(0));
}

TEST_F(RadioLinkTest, ReadStopsWhenTheIntervalBetweenBytesPasses) {
  device_->Inject("ab");
  device_->Inject("cd", milliseconds(150));  // longer than the 100 ms interval
  EXPECT_EQ(Read(5), "ab");
  EXPECT_EQ(clock_.elapsed(), milliseconds(100));
  EXPECT_EQ(Read(2), "cd");
}

TEST_F(RadioLinkTest, ReadWaitsTheTotalTimeOutForTheFirstByte) {
  EXPECT_EQ(Read(5), "");
  EXPECT_EQ(clock_.elapsed(), milliseconds(250 * 5 + 250));
}

TEST_F(RadioLinkTest, PurgeDropsWhatWasBuffered) {
  device_->Inject("FA00014070000;IF00014070000;");
  EXPECT_EQ(ReadUntil(';'), "FA00014070000;");
  EXPECT_TRUE(link_.Purge());
  EXPECT_EQ(ReadUntil(';'), "");
}

TEST_F(RadioLinkTest, AVanishedDeviceFailsEveryLaterCallAtOnce) {
  device_->Vanish();
  EXPECT_EQ(ReadUntil(';'), "");
  EXPECT_TRUE(link_.lost());
  EXPECT_EQ(link_.lostReason(), "Input/output error");
  const auto before = clock_.elapsed();
  EXPECT_FALSE(link_.Write("FA;"));
  EXPECT_EQ(Read(10), "");
  EXPECT_EQ(clock_.elapsed(), before) << "a lost port must not wait out time-outs";
}

TEST_F(RadioLinkTest, CloseDropsTheModemLines) {
  EXPECT_EQ(device_->dtr(), ModemLine::kRaise);
  link_.Close();
  EXPECT_FALSE(link_.IsOpen());
  EXPECT_FALSE(link_.Write("FA;"));
}

TEST(RadioLinkOpen, RefusedSettingsCloseThePortWithTheMessage) {
  struct Case {
    const char* speed;
    const char* configureError;
    const char* message;
  } cases[] = {
      {"fast", "", "Error building device control block - Invalid argument"},
      {"9600", "Invalid argument", "Error setting port status - Invalid argument"},
  };
  for (const Case& c : cases) {
    FakeClock clock;
    RadioLink link(clock);
    auto device = std::make_unique<ScriptedDevice>(clock);
    if (*c.configureError) {
      device->FailConfigure(c.configureError);
    }
    std::string message;
    EXPECT_FALSE(link.Attach(
        std::move(device), FamilyLineSettings(kIcom, c.speed, false, false, false, 500), &message));
    EXPECT_EQ(message, c.message);
    EXPECT_FALSE(link.IsOpen()) << "a failed open leaves no port behind";
  }
}

TEST(RadioLinkOpen, LogsTheSettingsAndTimeouts) {
  std::vector<std::string> lines;
  DebugLog::SetObserver([&](const std::string& line) { lines.push_back(line); });
  FakeClock clock;
  RadioLink link(clock);
  std::string message;
  ASSERT_TRUE(link.Attach(std::make_unique<ScriptedDevice>(clock),
                          FamilyLineSettings(kYaesu, "4800", false, false, false, 300), &message));
  DebugLog::SetObserver(nullptr);
  const std::vector<std::string> expected = {
      "Build DCB: 4800,n,8,2",
      "Set DCB: 4800,n,8,2",
      "Set timeouts:",
      "  Read interval timeout ...........: 300",
      "  Read Total Timeout Multiplier ...: 500",
      "  Read Total Timeout Constant .....: 500",
      "  Write Total Timeout Multiplier ..: 500",
      "  Write Total Timeout Constant ....: 1000",
  };
  EXPECT_EQ(lines, expected);
}

}  // namespace
}  // namespace tavlorin
