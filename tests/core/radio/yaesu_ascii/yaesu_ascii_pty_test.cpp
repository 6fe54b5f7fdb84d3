// End to end over a real pseudo-terminal: CatRadio opens the device through termios and talks
// to a simulated FT-991A, FTDX101D or FTDX3000, which also answers late, refuses, or is a model
// other than the one the user chose.
#include <gtest/gtest.h>
#include <termios.h>

#include "radio/cat_radio.h"
#include "support/pty_radio.h"
#include "support/sim_line_radios.h"
#include "support/sim_yaesu_ascii.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::PtyRadio;
using testing::SimYaesuAscii;

struct Flavour {
  SimYaesuAscii::Model sim;
  const char* model;
  int stopBits;
};

void PrintTo(const Flavour& flavour, std::ostream* out) { *out << flavour.model; }

class YaesuAsciiPtyTest : public ::testing::TestWithParam<Flavour> {
 protected:
  YaesuAsciiPtyTest() : sim(GetParam().sim), pty(sim) {}

  bool Connect(const std::string& model, std::string* message) {
    std::string id;
    return radio.Connect(testing::PtyParams(kYaesuAscii, model, pty, "38400"), &id, message) != 0;
  }
  Frequency Read(int vfo) {
    Frequency hz = 0;
    radio.ReadFrequency(vfo, &hz);
    return hz;
  }

  SimYaesuAscii sim;
  PtyRadio pty;
  CatRadio radio;
};

TEST_P(YaesuAsciiPtyTest, ConnectsIdentifiesReadsAndSets) {
  ASSERT_TRUE(pty.ok());
  std::string message;
  ASSERT_TRUE(Connect(GetParam().model, &message)) << message;
  EXPECT_EQ(message, "Frequency = 14.074.000");
  EXPECT_EQ(radio.identity, SimYaesuAscii::Identity(GetParam().sim));
  EXPECT_EQ(radio.identityReport,
            std::string("found ") + GetParam().model + ", connected as " + GetParam().model);
  // Auto-information off before anything is read, and again before the frequency read.
  const std::vector<std::string> commands = sim.commands();
  ASSERT_GE(commands.size(), 3u);
  EXPECT_EQ(commands[0], "AI0;");
  EXPECT_EQ(commands[2], "FA;");
  termios line{};
  ASSERT_TRUE(pty.ReadTermios(&line));
  EXPECT_EQ((line.c_cflag & CSTOPB) != 0, GetParam().stopBits == 2);

  radio.SetFrequency(0, 7074000);
  radio.SetFrequency(1, 10136000);
  EXPECT_EQ(Read(0), 7074000u);
  EXPECT_EQ(Read(1), 10136000u);
  EXPECT_EQ(Read(2), 7074000u) << "the status of the VFO in use";
  EXPECT_EQ(radio.SetMode(12), 1);  // DATA-USB
  EXPECT_EQ(radio.ReadMode(), 12);
  EXPECT_EQ(sim.mode(), 'C');
  sim.SetMeter(200);
  EXPECT_EQ(radio.ReadSMeter(0), 200);

  // VFO, split and PTT through the family's command text, as the per-model controls send it.
  EXPECT_EQ(radio.SetValue("VS1", "VFO B"), 1);
  EXPECT_EQ(radio.ReadValue("VS", "VFO"), 1u);
  EXPECT_EQ(Read(2), 10136000u);
  EXPECT_EQ(radio.SetValue("FT1", "Split"), 1);
  EXPECT_EQ(radio.ReadValue("FT", "Split"), 1u);
  EXPECT_EQ(radio.SetValue("TX1", "PTT"), 1);
  EXPECT_EQ(radio.ReadValue("TX", "PTT"), 1u);
  EXPECT_TRUE(sim.transmitting());
  radio.SetValue("TX0", "PTT");
  EXPECT_EQ(radio.ReadValue("TX", "PTT"), 0u);
  EXPECT_FALSE(sim.transmitting());
}

TEST_P(YaesuAsciiPtyTest, RefusedSlowAndSilentRadios) {
  ASSERT_TRUE(pty.ok());
  std::string message;
  ASSERT_TRUE(Connect(GetParam().model, &message)) << message;

  // A refused command ends its read at once, with no value; the next command is not answered
  // by a stale reply.
  const size_t before = sim.commands().size();
  EXPECT_EQ(radio.ReadString("XX"), "");
  EXPECT_EQ(sim.commands().size(), before + 1) << "a refusal is not retried";
  sim.RefuseNext(1);
  EXPECT_EQ(radio.ReadMode(), 0) << "refused";
  EXPECT_EQ(radio.ReadMode(), 2);

  // A slow radio still answers each read in turn.
  sim.SetReplyDelay(milliseconds(150));
  sim.SetFrequencyA(3573000);
  EXPECT_EQ(Read(0), 3573000u);
  EXPECT_EQ(radio.ReadMode(), 2);
  sim.SetReplyDelay(milliseconds(0));

  // A silent radio fails the read: no frequency, the caller keeps what it had.
  sim.SetSilent(true);
  EXPECT_EQ(Read(0), 0u);
  sim.SetSilent(false);
  EXPECT_EQ(Read(0), 3573000u);
}

INSTANTIATE_TEST_SUITE_P(
    Models, YaesuAsciiPtyTest,
    ::testing::Values(Flavour{SimYaesuAscii::Model::kFt991A, "FT-991A", 1},
                      Flavour{SimYaesuAscii::Model::kFtdx101D, "FTDX101D", 1},
                      Flavour{SimYaesuAscii::Model::kFtdx3000, "FTDX3000", 2}),
    [](const auto& test) {
      std::string name = test.param.model;
      name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
      return name;
    });

// The user chose one model and another answers: the connection says which.
TEST(YaesuAsciiIdentityTest, AnotherModelOfTheFamilyIsNamed) {
  SimYaesuAscii sim(SimYaesuAscii::Model::kFtdx101D);
  PtyRadio pty(sim);
  CatRadio radio;
  std::string id;
  std::string message;
  ASSERT_EQ(radio.Connect(testing::PtyParams(kYaesuAscii, "FT-991A", pty, "38400"), &id, &message),
            1)
      << message;
  EXPECT_EQ(radio.identityReport, "found FTDX101D, connected as FT-991A");
}

}  // namespace
}  // namespace tavlorin
