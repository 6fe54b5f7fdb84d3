#include "radio/yaesu/yaesu_codec.h"

#include <gtest/gtest.h>

#include "support/hex_bytes.h"

namespace tavlorin {
namespace {

using testing::HexVector;
using testing::ToHex;

std::string Hex(const std::array<uint8_t, 4>& b) {
  return ToHex(std::vector<uint8_t>(b.begin(), b.end()));
}

TEST(YaesuCodecTest, SetFrequencyDigitsInBothOrders) {
  struct Case {
    Frequency hz;
    const char* lsbFirst;
    const char* msbFirst;
  } cases[] = {
      {14070000, "00 70 40 01", "01 40 70 00"},
      {7060430, "43 60 70 00", "00 70 60 43"},  // the 1 Hz digit is dropped
      {145990000, "00 90 59 14", "14 59 90 00"},
      {0, "00 00 00 00", "00 00 00 00"},
      // ten digits of f / 10: the top two (above 1 GHz) are dropped
      {1296000000, "00 00 60 29", "29 60 00 00"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.hz);
    EXPECT_EQ(Hex(EncodeYaesuFrequency(c.hz, YaesuDigitOrder::kLeastSignificantFirst)), c.lsbFirst);
    EXPECT_EQ(Hex(EncodeYaesuFrequency(c.hz, YaesuDigitOrder::kMostSignificantFirst)), c.msbFirst);
  }
}

TEST(YaesuCodecTest, FrequencyAndModeReplyRoundTrip) {
  for (Frequency hz : {14070000u, 430000000u, 1800000u, 10u, 999999990u}) {
    auto digits = EncodeYaesuFrequency(hz, YaesuDigitOrder::kMostSignificantFirst);
    std::vector<uint8_t> reply(digits.begin(), digits.end());
    reply.push_back(0x01);
    EXPECT_EQ(DecodeYaesuBcdFrequency(reply), hz);
  }
  EXPECT_FALSE(DecodeYaesuBcdFrequency(HexVector("0A 40 70 00 01")));
  EXPECT_FALSE(DecodeYaesuBcdFrequency(HexVector("01 40 70")));
}

TEST(YaesuCodecTest, BigEndianReads) {
  std::vector<uint8_t> b = HexVector("FF 00 D6 B3 F0 11");
  EXPECT_EQ(BigEndian(b, 1, 4), 0x00D6B3F0u);
  EXPECT_EQ(BigEndian(b, 2, 3), 0xD6B3F0u);
  EXPECT_EQ(BigEndian(b, 4, 4), 0xF011u);  // cut at the end of the data
}

TEST(YaesuCodecTest, CommandTexts) {
  struct Case {
    const char* text;
    const char* bytes;  // "" = refused
  } cases[] = {
      {"00-00-00-00-88", "00 00 00 00 88"},
      {"1-2-3-4-F7", "01 02 03 04 F7"},
      {"00-00-00-88", ""},
      {"00-00-00-00-00-00", ""},
      {"00-00-00-00-100", ""},
      {"00-00-zz-00-07", ""},
      {"00--00-00-07", ""},
  };
  for (const Case& c : cases) {
    std::optional<YaesuCommand> cmd = ParseYaesuCommandText(c.text);
    EXPECT_EQ(cmd ? ToHex(std::vector<uint8_t>(cmd->begin(), cmd->end())) : "", c.bytes) << c.text;
  }
}

TEST(YaesuCodecTest, EepromTexts) {
  // (The narrow filter texts are checked byte by byte on the wire by the driver tests.)
  auto one = ParseYaesuEepromText("I-C-0x0057-80-40");
  ASSERT_EQ(one.size(), 1u);
  EXPECT_TRUE(one[0].currentVfo);
  EXPECT_EQ(one[0].address, 0x0057);
  EXPECT_EQ(one[0].mask, 0x80);
  EXPECT_EQ(one[0].value, 0x40);
  EXPECT_FALSE(ParseYaesuEepromText("I-A-0057-80-80").at(0).currentVfo);
  for (const char* bad : {"I-C-0x0001-08", "I-C-0x10000-08-08", "I-Narrow-Maybe", "X-C-1-1-1"}) {
    EXPECT_TRUE(ParseYaesuEepromText(bad).empty()) << bad;
  }
}

}  // namespace
}  // namespace tavlorin
