// End to end over a real pseudo-terminal: CatRadio opens the device through termios and talks
// to a simulated Kenwood transceiver or Elecraft K2, which also answers late or refuses once.
// The other misbehaviour (junk, unasked status, switching on) is in the scripted read and
// driver tests.
#include <gtest/gtest.h>

#include "radio/cat_radio.h"
#include "support/pty_radio.h"
#include "support/sim_kenwood.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::PtyRadio;
using testing::SimKenwood;

class KenwoodPtyTest : public ::testing::TestWithParam<SimKenwood::Flavour> {
 protected:
  KenwoodPtyTest() : sim(GetParam()), pty(sim) {}

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

TEST_P(KenwoodPtyTest, ConnectsReadsSetsAndRecovers) {
  ASSERT_TRUE(pty.ok());
  ConnectParams params;
  params.company = k2() ? kElecraft : kKenwood;
  params.model = k2() ? "K2" : "TS-2000";
  params.port = pty.path();
  params.speed = "57600";
  std::string id;
  std::string message;
  ASSERT_EQ(radio.Connect(params, &id, &message), 1) << message;
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

  // A late reply, then a refusal: each read still gets its value, and the next command is not
  // answered by a stale reply.
  for (bool late : {true, false}) {
    SCOPED_TRACE(late ? "late reply" : "refused once");
    sim.SetReplyDelay(milliseconds(late ? 150 : 0));
    sim.RefuseNext(late ? 0 : 1);
    const Frequency hz = late ? 3573000 : 3574000;
    sim.SetFrequencyA(hz);
    EXPECT_EQ(Read(0), hz);
    EXPECT_EQ(radio.ReadMode(), 3);
  }
}

INSTANTIATE_TEST_SUITE_P(Flavours, KenwoodPtyTest,
                         ::testing::Values(SimKenwood::Flavour::kKenwood,
                                           SimKenwood::Flavour::kElecraftK2),
                         [](const auto& flavour) {
                           return flavour.param == SimKenwood::Flavour::kKenwood ? "Kenwood"
                                                                                 : "ElecraftK2";
                         });

}  // namespace
}  // namespace tavlorin
