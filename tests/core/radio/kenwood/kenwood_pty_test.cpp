// End to end over a real pseudo-terminal: CatRadio opens the device through termios and talks
// to a simulated Kenwood transceiver or Elecraft K2 that misbehaves the way real radios do.
#include <gtest/gtest.h>

#include <future>

#include "radio/cat_radio.h"
#include "support/pty_radio.h"
#include "support/sim_kenwood.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::PtyRadio;
using testing::SimKenwood;

// Hang guard only: every operation below finishes in well under a second when it works.
constexpr std::chrono::seconds kHangGuard{30};

class KenwoodPtyTest : public ::testing::TestWithParam<SimKenwood::Flavour> {
 protected:
  KenwoodPtyTest() : sim(GetParam()), pty(sim) {}

  bool Connect(std::string* message) {
    ConnectParams params;
    params.company = k2() ? kElecraft : kKenwood;
    params.model = k2() ? "K2" : "TS-2000";
    params.port = pty.path();
    params.speed = "57600";
    std::string id;
    return radio.Connect(params, &id, message) != 0;
  }
  bool k2() const { return GetParam() == SimKenwood::Flavour::kElecraftK2; }
  Frequency Read(int vfo) {
    Frequency hz = 0;
    radio.ReadFrequency(vfo, &hz);
    return hz;
  }

  SimKenwood sim;
  PtyRadio pty;
  CatRadio radio;
};

TEST_P(KenwoodPtyTest, ConnectsReadsAndSets) {
  ASSERT_TRUE(pty.ok());
  std::string message;
  ASSERT_TRUE(Connect(&message)) << message;
  EXPECT_EQ(message, "Frequency = 14.070.000");
  // The start-up, repeated before the first frequency read.
  std::vector<std::string> expected =
      k2() ? std::vector<std::string>{"AI0;", "K22;", "AI0;", "K22;", "FA;"}
           : std::vector<std::string>{"AI0;", "AI0;", "FA;"};
  std::vector<std::string> commands = sim.commands();
  commands.resize(std::min(commands.size(), expected.size()));
  EXPECT_EQ(commands, expected);

  radio.SetFrequency(0, 7074000);
  radio.SetFrequency(1, 10136000);
  radio.SetMode(3);
  EXPECT_EQ(Read(0), 7074000u);
  EXPECT_EQ(Read(1), 10136000u);
  EXPECT_EQ(radio.ReadMode(), 3);
  EXPECT_EQ(sim.frequencyA(), 7074000u);
  EXPECT_EQ(sim.mode(), 3);
  sim.SetMeter(k2() ? 15 : 9);
  EXPECT_EQ(radio.ReadSMeter(0), k2() ? 3 : 9);
}

TEST_P(KenwoodPtyTest, RecoversFromMisbehaviour) {
  ASSERT_TRUE(pty.ok());
  std::string message;
  ASSERT_TRUE(Connect(&message)) << message;
  struct Fault {
    const char* name;
    std::function<void()> arm;
  } faults[] = {
      {"late reply", [&] { sim.SetReplyDelay(milliseconds(150)); }},
      {"refused once",
       [&] {
         sim.SetReplyDelay(milliseconds(0));
         sim.RefuseNext(1);
       }},
      {"junk before the reply", [&] { sim.JunkBeforeNextReply("\x7f\x13#"); }},
      {"unasked status first", [&] { sim.StatusBeforeNextReply(); }},
  };
  Frequency hz = 3573000;
  for (const Fault& f : faults) {
    SCOPED_TRACE(f.name);
    sim.SetFrequencyA(hz);
    f.arm();
    EXPECT_EQ(Read(0), hz);
    EXPECT_EQ(radio.ReadMode(), 2);  // the next command is not answered by a stale reply
    hz += 1000;
  }
}

INSTANTIATE_TEST_SUITE_P(Flavours, KenwoodPtyTest,
                         ::testing::Values(SimKenwood::Flavour::kKenwood,
                                           SimKenwood::Flavour::kElecraftK2),
                         [](const auto& flavour) {
                           return flavour.param == SimKenwood::Flavour::kKenwood ? "Kenwood"
                                                                                 : "ElecraftK2";
                         });

TEST(KenwoodPowerPtyTest, SwitchesASleepingRadioOn) {
  SimKenwood sim;
  sim.SetPowered(false);
  PtyRadio pty(sim);
  ASSERT_TRUE(pty.ok());
  CatRadio radio;
  ConnectParams params;
  params.company = kKenwood;
  params.model = "TS-480";
  params.port = pty.path();
  params.speed = "57600";
  params.switchOn = true;
  std::string id;
  std::string message;
  auto connect =
      std::async(std::launch::async, [&] { return radio.Connect(params, &id, &message); });
  ASSERT_EQ(connect.wait_for(kHangGuard), std::future_status::ready);
  EXPECT_EQ(connect.get(), 1) << message;
  EXPECT_TRUE(sim.powered());
  EXPECT_EQ(message, "Frequency = 14.070.000");
}

}  // namespace
}  // namespace tavlorin
