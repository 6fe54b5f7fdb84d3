// The Kenwood text rules that the read and driver tests do not reach: commands as sent and
// numbers as read.
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
  std::string sent = TerminatedCommand(std::string(300, 'A'));
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

TEST(KenwoodCodecTest, FrequencyAndModeCommandsKeepTheirWidth) {
  EXPECT_EQ(FrequencyCommand("FA", 0), "FA00000000000;");
  EXPECT_EQ(FrequencyCommand("FB", 4294967295u), "FB04294967295;");
  EXPECT_EQ(ModeCommand(12), "MD2;");
}

TEST(KenwoodCodecTest, ACandidateWithAnErrorMarkIsNoAnswer) {
  EXPECT_FALSE(IsKenwoodAnswer("MDE;", "MD"));
  EXPECT_FALSE(IsKenwoodAnswer("MDO;", "MD"));
  EXPECT_TRUE(IsKenwoodAnswer("MD2;", "MD"));
}

}  // namespace
}  // namespace tavlorin::kenwood
