// The demonstration FT-991 through the ordinary operations: its default table and what each
// write does to the state the next reads see.
#include <gtest/gtest.h>

#include <set>

#include "radio/cat_radio.h"
#include "support/fake_clock.h"

namespace tavlorin {
namespace {

class DemoYaesuAsciiTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ConnectParams params;
    params.company = kDemonstration;
    params.model = "FT-991: Demo";
    std::string id;
    ASSERT_EQ(radio.Connect(params, &id, &message), 1) << message;
  }
  Frequency Read(int vfo) {
    Frequency hz = 0;
    radio.ReadFrequency(vfo, &hz);
    return hz;
  }

  testing::FakeClock clock;
  CatRadio radio{clock};
  std::string message;
};

TEST_F(DemoYaesuAsciiTest, AnswersAsAnFt991WithoutAPort) {
  EXPECT_EQ(radio.manufacturer, kYaesuAscii);
  EXPECT_FALSE(radio.link().IsOpen());
  EXPECT_EQ(message, "Frequency = 14.074.000");
  EXPECT_EQ(radio.identityReport, "found FT-991, connected as FT-991: Demo");
  EXPECT_EQ(Read(1), 7074000u);
  EXPECT_EQ(radio.ReadMode(), 2);
  EXPECT_EQ(radio.SwitchPower("FT-991: Demo", false), 0);
}

TEST_F(DemoYaesuAsciiTest, WritesChangeWhatTheReadsSee) {
  radio.SetFrequency(0, 21074000);
  radio.SetMode(12);
  EXPECT_EQ(Read(0), 21074000u);
  EXPECT_EQ(Read(2), 21074000u) << "the status follows VFO A";
  EXPECT_EQ(radio.ReadMode(), 12);
  EXPECT_EQ(radio.ReadString("IF").substr(19, 1), "C");

  radio.SetValue("SV", "Swap");
  EXPECT_EQ(Read(0), 7074000u);
  EXPECT_EQ(Read(1), 21074000u);
  EXPECT_EQ(Read(2), 7074000u);
  radio.SetValue("AB", "A to B");
  EXPECT_EQ(Read(1), 7074000u);

  radio.SetValue("AG0200", "AF gain");
  EXPECT_EQ(radio.ReadValue("AG0", "AF gain"), 200u);
  radio.SetValue("TX1", "PTT");
  EXPECT_EQ(radio.ReadValue("TX", "PTT"), 1u);
}

TEST_F(DemoYaesuAsciiTest, TheMeterMovesWhileTheWindowPolls) {
  std::set<int> seen;
  for (int i = 0; i < 20; ++i) {
    Read(0);
    seen.insert(radio.ReadSMeter(0));
  }
  EXPECT_GT(seen.size(), 10u);
  EXPECT_LE(*seen.rbegin(), 255);
}

}  // namespace
}  // namespace tavlorin
