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

// The TS-890S and TS-990S number their modes past 9 with letters; the others keep one digit.
TEST(KenwoodCodecTest, ModeLettersOfTheNewerRadios) {
  const struct {
    const char* command;
    uint8_t mode;
    bool letters;
    const char* sent;
  } cases[] = {
      {"MD", 2, false, "MD2;"}, {"MD", 12, false, "MD2;"}, {"MD", 12, true, "MDC;"},
      {"MD0", 9, true, "MD09;"}, {"MD0", 15, true, "MD0F;"}, {"MD", 16, true, "MD6;"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sent);
    const std::string sent = ModeCommand(c.command, c.mode, c.letters);
    EXPECT_EQ(sent, c.sent);
    const uint8_t readBack = ParseMode(ReplyValue(sent, c.command), c.letters);
    EXPECT_EQ(readBack, c.letters && c.mode <= 15 ? c.mode : c.mode % 10);
  }
  EXPECT_EQ(ParseMode("A", false), 0) << "a radio without letters never sends one";
}

}  // namespace
}  // namespace tavlorin::kenwood
