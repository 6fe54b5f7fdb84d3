// What the emulated Kenwood port answers and which changes it asks for.
#include "radio/emulation/kenwood_emulation_answerer.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <vector>

#include "link/manufacturer.h"
#include "radio/emulation/emulation_modes.h"

namespace tavlorin {
namespace {

using Kind = EmulationAction::Kind;

EmulatedRadioState State() {
  EmulatedRadioState s;
  s.frequencyA = 14074000;
  s.frequencyB = 7074000;
  s.mode = 2;
  s.sMeter = 7;
  return s;
}

// Queries, quiet commands and refusals: none asks for a change ("PS0;" must never switch the
// real radio off).
TEST(KenwoodEmulationAnswererTest, QueriesAnswerFromTheStateAndOthersActOnNothing) {
  struct Case {
    std::string command;
    std::string reply;
  } cases[] = {
      {"FA;", "FA00014074000;"}, {"fa;", "FA00014074000;"}, {"FB;", "FB00007074000;"},
      {"MD;", "MD2;"},           {"FR;", "FR0;"},           {"FT;", "FT0;"},
      {"ID;", "ID019;"},         {"PS;", "PS1;"},           {"AI;", "AI0;"},
      {"SM0;", "SM00007;"},      {"SM;", "SM0007;"},
  };
  std::vector<Case> all(std::begin(cases), std::end(cases));
  std::istringstream malformed(
      "XX; EX0010000; ; F; FA FA1407400; FA0001407400X; FA99999999999; FA00000000000; MD8; "
      "MD12; MDx; FR2; IF1; ID1; SM5; PS2; AIx; RX1; \x7f\x13;");
  for (std::string bad; malformed >> bad;) {
    all.push_back({bad, "?;"});
  }
  for (const char* quiet : {"AI0;", "AI2;", "PS1;", "PS0;"}) {
    all.push_back({quiet, ""});
  }
  for (const Case& c : all) {
    EmulationAnswer a = AnswerKenwoodCommand(c.command, State());
    EXPECT_EQ(a.reply, c.reply) << c.command;
    EXPECT_FALSE(a.action.has_value()) << c.command;
  }
}

TEST(KenwoodEmulationAnswererTest, StatusCarriesFrequencyModeVfoAndTransmit) {
  EmulatedRadioState s = State();
  std::string reply = AnswerKenwoodCommand("IF;", s).reply;
  ASSERT_EQ(reply.size(), 38u);
  EXPECT_EQ(reply.substr(0, 13), "IF00014074000");
  EXPECT_EQ(reply.back(), ';');
  const std::string value = reply.substr(2, 35);
  EXPECT_EQ(value.substr(26, 3), "020");  // receiving, USB, VFO A
  EXPECT_EQ(value[30], '0');              // no split

  s.transmitting = true;
  s.mode = 3;
  s.receiveVfo = 1;
  const std::string b = EmulatedStatusText(s);
  ASSERT_EQ(b.size(), 35u);
  EXPECT_EQ(b.substr(0, 11), "00007074000");  // the receive VFO's frequency
  EXPECT_EQ(b.substr(26, 3), "131");
  EXPECT_EQ(b[30], '1');  // receive on B, transmit on A

  s.frequencyB = 0;  // VFO B not read yet: answer with A rather than zero
  EXPECT_EQ(AnswerKenwoodCommand("FB;", s).reply, "FB00014074000;");
}

TEST(KenwoodEmulationAnswererTest, SetCommandsAnswerNothingAndAct) {
  struct Case {
    std::string command;
    Kind kind;
    int vfo;
    uint32_t value;
  } cases[] = {
      {"FA00007074000;", Kind::kSetFrequency, 0, 7074000},
      {"FB00010136000;", Kind::kSetFrequency, 1, 10136000},
      {"MD3;", Kind::kSetMode, 0, 3},
      {"FR1;", Kind::kSetReceiveVfo, 0, 1},
      {"FT1;", Kind::kSetTransmitVfo, 0, 1},
      {"TX;", Kind::kTransmit, 0, 1},
      {"TX0;", Kind::kTransmit, 0, 1},
      {"RX;", Kind::kTransmit, 0, 0},
  };
  for (const Case& c : cases) {
    EmulationAnswer a = AnswerKenwoodCommand(c.command, State());
    EXPECT_EQ(a.reply, "") << c.command;
    ASSERT_TRUE(a.action.has_value()) << c.command;
    EXPECT_EQ(a.action->kind, c.kind) << c.command;
    EXPECT_EQ(a.action->vfo, c.vfo) << c.command;
    EXPECT_EQ(a.action->value, c.value) << c.command;
  }
}

TEST(EmulationModesTest, FamiliesTranslateBothWays) {
  struct Case {
    int family;
    int own;
    int kenwood;
  } cases[] = {
      // One row per family; the rest of each table is data.
      {kKenwood, 2, 2}, {kElecraft, 7, 7}, {kIcom, 5, 4}, {kYaesu, 3, 7}, {kYaesu, 8, 4},
      {kYaesuAscii, 9, 9},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ToKenwoodMode(c.family, c.own), c.kenwood) << c.family << "/" << c.own;
    EXPECT_EQ(FromKenwoodMode(c.family, c.kenwood), c.own) << c.family << "/" << c.kenwood;
  }
  EXPECT_EQ(ToKenwoodMode(kIcom, 6), 0);  // wide FM has no Kenwood digit
  EXPECT_EQ(FromKenwoodMode(kIcom, 8), -1);
  EXPECT_EQ(FromKenwoodMode(kKenwood, 0), -1);
  // A Yaesu in DATA-USB shows the other program USB; USB set from there is plain USB.
  EXPECT_EQ(ToKenwoodMode(kYaesuAscii, 12), 2);
  EXPECT_EQ(FromKenwoodMode(kYaesuAscii, 2), 2);
}

}  // namespace
}  // namespace tavlorin
