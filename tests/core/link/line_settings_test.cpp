#include "link/line_settings.h"

#include <gtest/gtest.h>

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

struct LineCase {
  int family;
  const char* speed;
  bool cts, dtr, rts;
  const char* text;
  int stopBits;
  bool ctsFlow;
  ModemLine dtrLine, rtsLine;
};

void PrintTo(const LineCase& c, std::ostream* os) {
  *os << "family " << c.family << " at " << c.speed << (c.cts ? " cts" : "")
      << (c.dtr ? " dtr" : "") << (c.rts ? " rts" : "");
}

class FamilyLines : public ::testing::TestWithParam<LineCase> {};

TEST_P(FamilyLines, StopBitsFlowControlAndModemLines) {
  const LineCase& c = GetParam();
  LineSettings s = FamilyLineSettings(c.family, c.speed, c.cts, c.dtr, c.rts, 500);
  EXPECT_EQ(s.text, c.text);
  EXPECT_EQ(s.stopBits, c.stopBits);
  EXPECT_EQ(s.ctsFlowControl, c.ctsFlow);
  EXPECT_EQ(s.dtr, c.dtrLine);
  EXPECT_EQ(s.rts, c.rtsLine);
}

constexpr ModemLine kUp = ModemLine::kRaise;
constexpr ModemLine kDown = ModemLine::kDrop;

INSTANTIATE_TEST_SUITE_P(
    Table, FamilyLines,
    ::testing::Values(
        // Kenwood needs two stop bits only at 4800 bit/s.
        LineCase{kKenwood, "4800", false, true, true, "4800,n,8,2", 2, false, kUp, kUp},
        LineCase{kKenwood, "9600", false, true, true, "9600,n,8,1", 1, false, kUp, kUp},
        LineCase{kKenwood, "57600", true, false, false, "57600,n,8,1", 1, true, kDown, kDown},
        // Elecraft always drops both lines whatever the options say; no CTS flow either.
        LineCase{kElecraft, "4800", true, true, true, "4800,n,8,2", 2, false, kDown, kDown},
        // The PCR-1000 always gets both lines raised.
        LineCase{kGeneral, "9600", false, false, false, "9600,n,8,1", 1, false, kUp, kUp},
        LineCase{kYaesu, "38400", true, true, false, "38400,n,8,2", 2, false, kUp, kDown},
        LineCase{kIcom, "19200", true, false, true, "19200,n,8,1", 1, false, kDown, kUp},
        LineCase{kTenTec, "57600", true, true, true, "57600,n,8,1", 1, true, kUp, kUp},
        LineCase{kNrd535, "4800", true, false, true, "4800,n,8,1", 1, true, kDown, kUp},
        LineCase{kDemonstration, "9600", false, false, false, "9600,n,8,2", 2, false, kDown,
                 kDown}));

TEST(FamilyTimeouts, ReceiveTimeoutIsClampedToFiftyToFiveHundred) {
  struct {
    int setting;
    int interval;
  } cases[] = {{20, 50}, {50, 50}, {120, 120}, {500, 500}, {2000, 500}, {-5, 50}};
  for (const auto& c : cases) {
    LineSettings s = FamilyLineSettings(kKenwood, "9600", false, false, false, c.setting);
    EXPECT_EQ(s.timeouts.readInterval, milliseconds(c.interval)) << "setting " << c.setting;
  }
}

TEST(FamilyTimeouts, YaesuAndPcrWaitLongerThanTheOthers) {
  for (int family : {kYaesu, kGeneral}) {
    PortTimeouts t = FamilyLineSettings(family, "9600", false, false, false, 500).timeouts;
    EXPECT_EQ(t.readTotalMultiplier, milliseconds(500));
    EXPECT_EQ(t.readTotalConstant, milliseconds(500));
    EXPECT_EQ(t.writeTotalMultiplier, milliseconds(500));
    EXPECT_EQ(t.writeTotalConstant, milliseconds(1000));
  }
  for (int family : {1, 2, 3, 5, 8, 0, 42}) {
    PortTimeouts t = FamilyLineSettings(family, "9600", false, false, false, 500).timeouts;
    EXPECT_EQ(t.readTotalMultiplier, milliseconds(250)) << family;
    EXPECT_EQ(t.writeTotalConstant, milliseconds(250)) << family;
  }
}

TEST(ParseSpeed, AcceptsWholePositiveNumbersOnly) {
  EXPECT_EQ(ParseSpeed("4800"), 4800);
  EXPECT_EQ(ParseSpeed(""), 0);
  EXPECT_EQ(ParseSpeed("48OO"), 0);
  EXPECT_EQ(ParseSpeed("-9600"), 0);
  EXPECT_EQ(ParseSpeed("9600 "), 0);
}

}  // namespace
}  // namespace tavlorin
