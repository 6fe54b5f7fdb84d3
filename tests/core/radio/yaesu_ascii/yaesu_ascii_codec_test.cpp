// The text rules of Yaesu's ASCII command set: frequencies of eight and nine digits, the mode
// characters and their place among the program's 21 modes, the "IF" status and the identity.
#include "radio/yaesu_ascii/yaesu_ascii_codec.h"

#include <gtest/gtest.h>

#include <set>

#include "radio/mode_table.h"

namespace tavlorin::yaesu_ascii {
namespace {

TEST(YaesuAsciiCodecTest, FrequenciesRoundTripInTheModelsWidth) {
  const struct {
    Frequency hz;
    int digits;
    const char* command;  // "" = does not fit
  } cases[] = {
      {14074000, 9, "FA014074000;"}, {432100000, 9, "FA432100000;"}, {1800000, 9, "FA001800000;"},
      {14074000, 8, "FA14074000;"},  {50313000, 8, "FA50313000;"},   {144000000, 8, ""},
      {999999999, 9, "FA999999999;"}, {1000000000, 9, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.command);
    const std::string command = FrequencyCommand("FA", c.hz, c.digits);
    EXPECT_EQ(command, c.command);
    if (!command.empty()) {
      const std::string value = ReplyValue(command, "FA");
      EXPECT_EQ(ParseFrequency(value, c.digits), c.hz);
      // A reply of the other width is another radio's: never a frequency.
      EXPECT_FALSE(ParseFrequency(value, c.digits == 9 ? 8 : 9));
    }
  }
  for (const char* bad : {"", "01407400", "0140740000", "01407400A", " 14074000", "-14074000"}) {
    EXPECT_FALSE(ParseFrequency(bad, 9)) << bad;
  }
}

TEST(YaesuAsciiCodecTest, ModeCharactersRoundTripAndMapOntoTheProgramsModes) {
  for (uint8_t code = 1; code <= 15; ++code) {
    SCOPED_TRACE(int(code));
    const char letter = ModeLetter(code);
    ASSERT_NE(letter, 0);
    EXPECT_EQ(ModeCode(letter), code);
    EXPECT_EQ(ModeCommand(0, code), std::string("MD0") + letter + ";");
  }
  EXPECT_EQ(ModeCode('c'), 12);
  for (uint8_t code : {uint8_t{0}, uint8_t{16}, uint8_t{255}}) {
    EXPECT_EQ(ModeLetter(code), 0);
    EXPECT_EQ(ModeCommand(0, code), "");
  }
  for (char bad : {'0', 'G', ' ', ';'}) {
    EXPECT_FALSE(ModeCode(bad)) << bad;
  }
  EXPECT_EQ(ModeCommand(1, 2), "MD12;");
  EXPECT_EQ(ModeCommand(2, 2), "");

  // The radio's characters as the program's modes: each mode number has at most one
  // character, and reading the character back gives the same number.
  const struct {
    const char* mode;
    char letter;
  } names[] = {{"LSB", '1'},  {"USB", '2'},    {"CW", '3'},   {"FM", '4'},   {"AM", '5'},
               {"RTTY", '6'}, {"CW-R", '7'},   {"PKT", '8'},  {"RTTY-R", '9'}, {"FM-N", 'B'},
               {"USB-D", 'C'}, {"AM-N", 'D'},  {"DV", 'E'}};
  std::set<uint8_t> codes;
  for (const auto& n : names) {
    SCOPED_TRACE(n.mode);
    const std::optional<int> number = ModeNumber(n.mode);
    ASSERT_TRUE(number);
    const std::optional<uint8_t> code = FamilyModeCode(ModeCodeSet::kYaesuAscii, *number);
    ASSERT_TRUE(code);
    EXPECT_EQ(ModeLetter(*code), n.letter);
    EXPECT_EQ(ModeFromFamilyCode(ModeCodeSet::kYaesuAscii, *code), number);
    EXPECT_TRUE(codes.insert(*code).second) << "two modes share a character";
  }
  EXPECT_FALSE(FamilyModeCode(ModeCodeSet::kYaesuAscii, *ModeNumber("WFM")));
}

TEST(YaesuAsciiCodecTest, StatusRepliesOfBothWidths) {
  const struct {
    const char* value;
    int digits;
    bool ok;
    Frequency hz;
    uint8_t mode;
    bool memory;
  } cases[] = {
      // As an FT-991A sends it: VFO A, USB, no clarifier.
      {"001014074000+000000200000", 9, true, 14074000, 2, false},
      {"012145500000-012000B10000", 9, true, 145500000, 11, true},
      {"00114074000+000000C00000", 8, true, 14074000, 12, false},
      // A reply of the other width puts a digit where the clarifier's sign belongs.
      {"00114074000+000000C00000", 9, false, 0, 0, false},
      {"001014074000+000000200000", 8, false, 0, 0, false},
      {"001014074000+000000000000", 9, false, 0, 0, false},  // mode "0" does not exist
      {"001014074000+0000002", 9, false, 0, 0, false},       // cut short
      {"", 9, false, 0, 0, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    const std::optional<Status> status = ParseStatus(c.value, c.digits);
    ASSERT_EQ(status.has_value(), c.ok);
    if (c.ok) {
      EXPECT_EQ(status->hz, c.hz);
      EXPECT_EQ(status->mode, c.mode);
      EXPECT_EQ(status->memory, c.memory);
    }
  }
}

TEST(YaesuAsciiCodecTest, RepliesIdentitiesAndRefusals) {
  const struct {
    const char* reply;
    const char* letters;
    bool answer;
    const char* value;
  } cases[] = {
      {"FA014074000;", "FA", true, "014074000"}, {"MD02;", "MD0", true, "2"},
      {"SM0123;", "SM0", true, "123"},           {"ID0570;", "ID", true, "0570"},
      {"?;", "FA", false, ""},                   {"FB007074000;", "FA", false, ""},
      {"FA014074000", "FA", false, ""},          {"FA;", "FA", false, ""},
      {"MD12;", "MD0", false, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.reply);
    EXPECT_EQ(IsAnswer(c.reply, c.letters), c.answer);
    if (c.answer) {
      EXPECT_EQ(ReplyValue(c.reply, c.letters), c.value);
    }
  }
  EXPECT_EQ(ParseIdentity("0570"), "0570");
  for (const char* bad : {"", "570", "05700", "05A0", "020"}) {
    EXPECT_FALSE(ParseIdentity(bad)) << bad;
  }
  EXPECT_EQ(TerminatedCommand("FA"), "FA;");
  EXPECT_EQ(TerminatedCommand("FA;"), "FA;");
  EXPECT_EQ(CommandLetters("MD0;"), "MD0");
}

}  // namespace
}  // namespace tavlorin::yaesu_ascii
