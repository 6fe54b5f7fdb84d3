// The Kenwood text rules: commands as sent, numbers as read, and which replies count.
#include "radio/kenwood/kenwood_codec.h"

#include <gtest/gtest.h>

namespace tavlorin::kenwood {
namespace {

TEST(KenwoodCodecTest, TerminatorIsAddedOnceAndLengthIsCapped) {
  struct Case {
    std::string command;
    std::string sent;
  } cases[] = {
      {"FA", "FA;"},      {"FA;", "FA;"}, {"AI0;K22", "AI0;K22;"}, {"AI0;K22;", "AI0;K22;"},
      {";;;;;", ";;;;;"}, {"", ";"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TerminatedCommand(c.command), c.sent) << c.command;
  }
  std::string longCommand(300, 'A');
  std::string sent = TerminatedCommand(longCommand);
  EXPECT_EQ(sent.size(), kMaxCommandLength);
  EXPECT_EQ(sent.back(), ';');
}

TEST(KenwoodCodecTest, ValuesReadAsTheRadiosNumbers) {
  struct Case {
    std::string text;
    uint32_t value;
  } cases[] = {
      {"00014070000", 14070000u},
      {"0000", 0u},
      {"", 0u},
      {"1", 1u},
      {" 0600", 600u},
      {"-500", 0u - 500u},
      {"0021;", 21u},
      {"12AB", 12u},
      {"SPCH@04", 0u},
      {"04294967295", 4294967295u},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ParseValue(c.text), c.value) << '"' << c.text << '"';
  }
}

TEST(KenwoodCodecTest, FrequencyDigitsRoundTrip) {
  for (Frequency hz : {0u, 1u, 1800000u, 14070000u, 144300000u, 2999999999u, 4294967295u}) {
    std::string digits = FrequencyDigits(hz);
    EXPECT_EQ(digits.size(), 11u) << hz;
    EXPECT_EQ(ParseValue(digits), hz);
    std::string reply = FrequencyCommand("FA", hz);
    EXPECT_TRUE(IsFrequencyReplyShape(reply)) << reply;
    EXPECT_EQ(ParseValue(ReplyValue(reply, "FA")), hz);
  }
  EXPECT_EQ(ModeCommand(3), "MD3;");
  EXPECT_EQ(ModeCommand(12), "MD2;");
}

TEST(KenwoodCodecTest, JudgesRepliesWhileSearchingForTheAnswer) {
  using V = KenwoodReplyVerdict;
  struct Case {
    std::string letters;
    std::string reply;
    V verdict;
  } cases[] = {
      {"FA", "FA00014070000;", V::kEndSearch},
      {"FA", "FA0001407000;", V::kSkip},  // ten digits
      {"FA", "FA0001407000X;", V::kSkip},
      {"FA", "IF00014070000     +00000000002000000 ;", V::kSkip},
      {"FA", "?;", V::kSkip},  // a frequency read keeps looking
      {"FB", "FB?;", V::kSkip},
      {"MD", "?;", V::kEndSearch},  // other commands are refused at once
      {"MD", "MD?;", V::kEndSearch},
      {"MD", "E;", V::kSkip},
      {"MD", "MDO;", V::kSkip},
      {"MD", "O;", V::kSkip},
      {"MD", "MD2;", V::kEndSearch},
      {"SM0", "SM00005;", V::kEndSearch},
      {"SM0", "SM10005;", V::kSkip},  // the sub receiver's meter
  };
  for (const Case& c : cases) {
    EXPECT_EQ(JudgeKenwoodReply(c.reply, c.letters), c.verdict) << c.letters << " " << c.reply;
  }
}

TEST(KenwoodCodecTest, CandidatesAndElecraftReplies) {
  EXPECT_TRUE(IsRefusal("?;", "MD"));
  EXPECT_TRUE(IsRefusal("MD?;", "MD"));
  EXPECT_FALSE(IsRefusal("", "MD"));
  EXPECT_TRUE(IsKenwoodAnswer("MD2;", "MD"));
  EXPECT_FALSE(IsKenwoodAnswer("MDE;", "MD"));
  EXPECT_FALSE(IsKenwoodAnswer("", "MD"));
  EXPECT_TRUE(IsElecraftAnswer("BG07;", "BG"));
  EXPECT_FALSE(IsElecraftAnswer("BG?;", "BG"));
  EXPECT_FALSE(IsElecraftAnswer("?;", "BG"));
  EXPECT_FALSE(IsElecraftAnswer("FA00014070000;", "BG"));
  EXPECT_EQ(ReplyValue("MR0001000100028450000;", "MR0001"), "000100028450000");
  EXPECT_EQ(ReplyValue("AI;", "AI"), "");
}

TEST(KenwoodCodecTest, MeterRulesPerModel) {
  struct Case {
    std::string model;
    std::string command;
  } cases[] = {
      {"TS-2000", "SM0"}, {"TS-480", "SM0"}, {"TS-2000: Demo", "SM0"}, {"TS-570", "SM"},
      {"TS-870", "SM"},   {"TS-440S", ""},   {"TS-4800", "SM"},        {"TS-480SAT: Demo", "SM"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(KenwoodMeterCommand(c.model), c.command) << c.model;
  }
  EXPECT_EQ(ElecraftMeterValue(15), 3);
  EXPECT_EQ(ElecraftMeterValue(12), 0);
  EXPECT_EQ(ElecraftMeterValue(11), 11);
  EXPECT_EQ(ElecraftMeterValue(7), 7);
}

}  // namespace
}  // namespace tavlorin::kenwood
