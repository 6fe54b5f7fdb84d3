#include "radio/civ/civ_codec.h"

#include <gtest/gtest.h>

#include "radio/civ/civ_frame_assembler.h"
#include "support/hex_bytes.h"

namespace tavlorin {
namespace {

using testing::HexVector;
using testing::ToHex;

struct FrequencyCase {
  Frequency hz;
  int bytes;
  const char* wire;
};

TEST(CivCodecTest, FrequenciesTravelLeastSignificantPairFirst) {
  const FrequencyCase cases[] = {
      {14070000, 5, "00 00 07 14 00"},   {7060430, 5, "30 04 06 07 00"},
      {0, 5, "00 00 00 00 00"},          {1296123456, 5, "56 34 12 96 12"},
      {3999999999, 5, "99 99 99 99 39"}, {14070000, 4, "00 00 07 14"},
      {99999999, 4, "99 99 99 99"},
  };
  for (const FrequencyCase& c : cases) {
    SCOPED_TRACE(c.hz);
    EXPECT_EQ(ToHex(EncodeCivFrequency(c.hz, c.bytes)), c.wire);
    std::vector<uint8_t> wire = HexVector(c.wire);
    EXPECT_EQ(DecodeCivFrequency(wire.data(), c.bytes), c.hz);
  }
  // The IC-905 sends six bytes; its 10 GHz band is beyond what a frequency of the program
  // holds, so that reading decodes as hertz but not as a Frequency.
  EXPECT_EQ(ToHex(EncodeCivFrequency(2400100000u, 6)), "00 00 10 00 24 00");
  std::vector<uint8_t> ten = HexVector("00 00 00 68 03 01");
  EXPECT_EQ(DecodeCivHertz(ten.data(), 6), 10368000000ull);
  EXPECT_FALSE(DecodeCivFrequency(ten.data(), 6));
  std::vector<uint8_t> band24 = HexVector("00 00 10 00 24 00");
  EXPECT_EQ(DecodeCivFrequency(band24.data(), 6), 2400100000u);
  // The IC-735 has no 10^8 digit: 144.390.000 goes out as 44.390.000.
  EXPECT_EQ(ToHex(EncodeCivFrequency(144390000, 4)), "00 00 39 44");
  // Non-decimal nibbles are not a frequency.
  for (const char* wire : {"0A 00 07 14 00", "00 00 07 14 F0", "FF FF FF FF FF"}) {
    std::vector<uint8_t> v = HexVector(wire);
    EXPECT_FALSE(DecodeCivFrequency(v.data(), 5)) << wire;
  }
}

TEST(CivCodecTest, ValuesAreBcdMostSignificantFirst) {
  struct Case {
    const char* wire;
    std::optional<uint32_t> value;
    bool encodes;  // the value also encodes to exactly these bytes
  } cases[] = {
      {"00", 0u, true},
      {"99", 99u, true},
      {"01 00", 100u, true},
      {"01 28", 128u, true},
      {"02 55", 255u, true},
      {"99 99", 9999u, true},
      {"00 00", 0u, false},
      {"47", 47u, true},
      {"01 02 03", 10203u, false},
      {"1A", std::nullopt, false},
      {"", 0u, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DecodeCivValue(HexVector(c.wire)), c.value) << c.wire;
    if (c.encodes) {
      EXPECT_EQ(ToHex(EncodeCivValue(*c.value)), c.wire);
    }
  }
  EXPECT_EQ(ToHex(EncodeCivValue(kCivNoValue)), "");
}

struct CommandTextCase {
  const char* text;
  const char* read;
  const char* write;
  const char* key;
};

TEST(CivCodecTest, CommandTextThreeAndFourTokenRules) {
  const CommandTextCase cases[] = {
      // four tokens keep every byte, zero or not
      {"1A-05-00-01", "1A 05 00 01", "1A 05 00 01", "1A-05-00-01"},
      {"1A-05-00-40", "1A 05 00 40", "1A 05 00 40", "1A-05-00-40"},
      // three tokens: writes drop zero bytes; reads stop at the first zero
      {"16-02-00", "16 02", "16 02", "16-02-00"},
      {"14-01-00", "14 01", "14 01", "14-01-00"},
      {"14-00-05", "14", "14 05", "14-00-05"},
      {"16-45-01", "16 45 01", "16 45 01", "16-45-01"},
      // fewer tokens are padded with zeros, more are cut to three
      {"1A-05", "1A 05", "1A 05", "1A-05-00"},
      {"15", "15", "15", "15-00-00"},
      {"1A-05-00-40-01", "1A 05", "1A 05", "1A-05-00"},
      {"zz-02", "00 02", "00 02", "00-02-00"},
  };
  for (const CommandTextCase& c : cases) {
    SCOPED_TRACE(c.text);
    CivCommandText t = ParseCivCommandText(c.text);
    EXPECT_EQ(ToHex(t.ReadPayload()), c.read);
    EXPECT_EQ(ToHex(t.WritePayload()), c.write);
    EXPECT_EQ(t.Key(), c.key);
  }
  // A written value goes after the command bytes.
  EXPECT_EQ(ToHex(ParseCivCommandText("14-02").WritePayload(128)), "14 02 01 28");
}

TEST(CivCodecTest, SMeterReplyShapes) {
  struct Case {
    const char* frame;
    std::optional<uint32_t> level;
  } cases[] = {
      {"FE FE E0 5C 15 02 01 20 FD", 120u},
      {"FE FE E0 5C 15 02 02 55 FD", 255u},
      {"FE FE E0 5C 15 02 00 07 FD", 7u},
      {"FE FE E0 5C 15 02 47 FD", 47u},
      {"FE FE E0 5C 15 02 FD", std::nullopt},
      {"FE FE E0 5C 15 02 01 2A FD", std::nullopt},
      {"FE FE E0 5C 15 02 00 01 20 FD", std::nullopt},
  };
  for (const Case& c : cases) {
    CivFrame f{HexVector(c.frame)};
    EXPECT_EQ(DecodeCivSMeter(f), c.level) << c.frame;
  }
}

TEST(CivCodecTest, ReadValueTakesTheDataAfterTheSentBytes) {
  CivFrame f{HexVector("FE FE E0 5C 1A 05 00 40 01 28 FD")};
  EXPECT_EQ(DecodeCivReadValue(f, 4), 128u);
  EXPECT_EQ(DecodeCivReadValue(f, 2), 400128u);  // 00 40 01 28 read as data
  CivFrame empty{HexVector("FE FE E0 5C 14 01 FD")};
  EXPECT_EQ(DecodeCivReadValue(empty, 2), 0u);
  EXPECT_FALSE(DecodeCivReadValue(empty, 3));
}

// Feeds `stream` to an assembler and lists the frames it completes.
std::vector<std::string> Assemble(const char* stream) {
  CivFrameAssembler assembler;
  std::vector<std::string> frames;
  for (uint8_t b : HexVector(stream)) {
    if (assembler.Add(b)) {
      frames.push_back(assembler.frame().Hex());
    }
  }
  return frames;
}

TEST(CivFrameAssemblerTest, StreamsOfBytesBecomeFrames) {
  struct Case {
    const char* stream;
    std::vector<std::string> frames;
  } cases[] = {
      {"FE FE E0 5C FB FD", {"FE FE E0 5C FB FD"}},
      // noise before the preamble is dropped
      {"00 13 FD 7F FE FE E0 5C FB FD", {"FE FE E0 5C FB FD"}},
      // a frame cut short by a new preamble is abandoned
      {"FE FE E0 5C 03 00 FE FE E0 5C FB FD", {"FE FE E0 5C FB FD"}},
      // extra preamble bytes
      {"FE FE FE FE E0 5C FB FD", {"FE FE E0 5C FB FD"}},
      // two frames back to back
      {"FE FE E0 5C FB FD FE FE 00 5C 01 03 02 FD",
       {"FE FE E0 5C FB FD", "FE FE 00 5C 01 03 02 FD"}},
      // too short to be a frame
      {"FE FE E0 FD FE FE FD", {}},
      // a lone FE is not a preamble
      {"FE E0 5C FB FD", {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Assemble(c.stream), c.frames) << c.stream;
  }
}

TEST(CivFrameAssemblerTest, RunawayFrameIsDroppedAndTheNextOneStillComes) {
  std::string stream = "FE FE E0 5C";
  for (int i = 0; i < 300; ++i) {
    stream += " 11";
  }
  stream += " FD FE FE E0 5C FB FD";
  EXPECT_EQ(Assemble(stream.c_str()), std::vector<std::string>{"FE FE E0 5C FB FD"});
}

}  // namespace
}  // namespace tavlorin
