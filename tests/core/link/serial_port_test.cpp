// The serial link through a real pseudo-terminal: the termios path a USB cable takes.
#include <gtest/gtest.h>
#include <termios.h>

#include <thread>

#include "link/radio_link.h"
#include "support/pty_radio.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::LineSimulator;
using testing::PtyRadio;

std::string AnswerFrequency(const std::string& command) {
  return command == "FA;" ? "FA00014070000;" : "";
}

TEST(SerialPort, AppliesStopBitsAndFlowControlOfTheFamily) {
  struct Case {
    int family;
    const char* speed;
    bool cts;
    speed_t baud;
    bool twoStopBits;
    bool rtscts;
  } cases[] = {
      {kKenwood, "4800", false, B4800, true, false},
      {kKenwood, "9600", true, B9600, false, true},
      {kElecraft, "38400", true, B38400, true, false},
      {kIcom, "19200", false, B19200, false, false},
  };
  for (const Case& c : cases) {
    LineSimulator sim(';', AnswerFrequency);
    PtyRadio pty(sim);
    ASSERT_TRUE(pty.ok());
    RadioLink link;
    std::string message;
    ASSERT_TRUE(link.Open(pty.path(), FamilyLineSettings(c.family, c.speed, c.cts, true, true, 500),
                          &message))
        << message;
    termios t{};
    ASSERT_TRUE(pty.ReadTermios(&t));
    EXPECT_EQ(cfgetospeed(&t), c.baud) << c.speed;
    EXPECT_EQ((t.c_cflag & CSTOPB) != 0, c.twoStopBits) << c.family << " " << c.speed;
    EXPECT_EQ((t.c_cflag & CRTSCTS) != 0, c.rtscts) << c.family;
    EXPECT_EQ(t.c_cflag & CSIZE, tcflag_t(CS8));
    EXPECT_EQ(t.c_cflag & PARENB, 0u);
  }
}

TEST(SerialPort, RoundTripThroughThePseudoTerminal) {
  LineSimulator sim(';', AnswerFrequency);
  PtyRadio pty(sim);
  RadioLink link;
  std::string message;
  ASSERT_TRUE(link.Open(pty.path(), FamilyLineSettings(kKenwood, "9600", false, false, false, 500),
                        &message));
  ASSERT_TRUE(link.Write("FA;"));
  uint8_t buffer[64];
  size_t got = 0;
  ASSERT_TRUE(link.ReadUntil(buffer, sizeof buffer, ';', &got));
  EXPECT_EQ(std::string(reinterpret_cast<char*>(buffer), got), "FA00014070000;");
  EXPECT_EQ(pty.Received(), "FA;");
}

TEST(SerialPort, ASecondOpenOfTheSamePortIsRefused) {
  LineSimulator sim(';', AnswerFrequency);
  PtyRadio pty(sim);
  const LineSettings settings = FamilyLineSettings(kKenwood, "9600", false, false, false, 500);
  RadioLink first;
  RadioLink second;
  std::string message;
  ASSERT_TRUE(first.Open(pty.path(), settings, &message)) << message;
  EXPECT_FALSE(second.Open(pty.path(), settings, &message));
  EXPECT_TRUE(second.deviceRefused());
  EXPECT_EQ(message, "Device or resource busy");
  first.Close();
  EXPECT_TRUE(second.Open(pty.path(), settings, &message)) << "free again once closed";
}

TEST(SerialPort, DevicesThatCannotBeOpenedSayWhy) {
  struct Case {
    const char* path;
    const char* message;
  } cases[] = {
      {"/dev/ttyTAVLORIN-missing", "No such file or directory"},
      {"/dev/null", "Inappropriate ioctl for device"},
  };
  for (const Case& c : cases) {
    RadioLink link;
    std::string message;
    EXPECT_FALSE(
        link.Open(c.path, FamilyLineSettings(kIcom, "9600", false, false, false, 500), &message));
    EXPECT_EQ(message, c.message) << c.path;
    EXPECT_TRUE(link.deviceRefused());
    EXPECT_FALSE(link.IsOpen());
  }
}

TEST(SerialPort, APulledCableEndsAReadInsteadOfHangingIt) {
  LineSimulator sim(';', [](const std::string&) { return std::string(); });
  PtyRadio pty(sim);
  RadioLink link;
  std::string message;
  ASSERT_TRUE(link.Open(pty.path(), FamilyLineSettings(kKenwood, "9600", false, false, false, 500),
                        &message));
  std::thread puller([&] {
    std::this_thread::sleep_for(milliseconds(50));
    pty.Hangup();
  });
  uint8_t buffer[64];
  size_t got = 0;
  // Without the hang-up this read would wait for ever-repeated byte time-outs; it must end
  // with the port marked lost.
  for (int i = 0; i < 40 && !link.lost(); ++i) {
    link.ReadUntil(buffer, sizeof buffer, ';', &got);
  }
  puller.join();
  EXPECT_TRUE(link.lost());
  EXPECT_FALSE(link.Write("FA;"));
}

}  // namespace
}  // namespace tavlorin
