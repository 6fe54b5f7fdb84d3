#include "radio/mode_table.h"

#include <gtest/gtest.h>

#include <set>

namespace tavlorin {
namespace {

constexpr ModeCodeSet kSets[] = {ModeCodeSet::kIcom,         ModeCodeSet::kKenwood,
                                 ModeCodeSet::kElecraft,     ModeCodeSet::kYaesu,
                                 ModeCodeSet::kYaesuClassic, ModeCodeSet::kTenTec,
                                 ModeCodeSet::kPcr1000,      ModeCodeSet::kNrd535};

TEST(ModeTableTest, TwentyOneNumberedUniqueNames) {
  ASSERT_EQ(ModeTable().size(), static_cast<size_t>(kModeCount));
  std::set<std::string_view> names;
  for (int i = 0; i < kModeCount; ++i) {
    EXPECT_EQ(ModeTable()[static_cast<size_t>(i)].number, i);  // rows stay in number order
    EXPECT_TRUE(names.insert(ModeName(i)).second) << ModeName(i);
    EXPECT_EQ(ModeNumber(ModeName(i)), i);
  }
  EXPECT_EQ(ModeName(21), "");
  EXPECT_EQ(ModeName(-1), "");
  EXPECT_FALSE(ModeNumber("lsb"));  // exact names only
}

TEST(ModeTableTest, NumbersTheLogbookRelies) {
  const std::pair<int, std::string_view> fixed[] = {{1, "LSB"},  {2, "USB"},   {3, "CW"},
                                                    {5, "AM"},   {9, "PKT"},   {10, "RTTY"},
                                                    {13, "FSK"}, {19, "PSK31"}};
  for (auto [number, name] : fixed) {
    EXPECT_EQ(ModeName(number), name);
  }
}

TEST(ModeTableTest, FamilyCodesRoundTrip) {
  for (ModeCodeSet set : kSets) {
    for (int n = 0; n < kModeCount; ++n) {
      std::optional<uint8_t> code = FamilyModeCode(set, n);
      if (!code) {
        continue;
      }
      // A code reads back as a mode of the same name, or as the first row sharing the code.
      std::optional<int> back = ModeFromFamilyCode(set, *code);
      ASSERT_TRUE(back);
      EXPECT_LE(*back, n);
      EXPECT_EQ(FamilyModeCode(set, *back), code);
    }
  }
}

TEST(ModeTableTest, KnownFamilyCodes) {
  struct Case {
    ModeCodeSet set;
    const char* mode;
    uint8_t code;
  } cases[] = {
      {ModeCodeSet::kIcom, "USB", 0x01}, {ModeCodeSet::kIcom, "CW-R", 0x07},
      {ModeCodeSet::kIcom, "FM", 0x05},  {ModeCodeSet::kKenwood, "FM", 4},
      {ModeCodeSet::kKenwood, "AM", 5},  {ModeCodeSet::kYaesu, "FM-N", 0x88},
      {ModeCodeSet::kYaesu, "CW", 0x02}, {ModeCodeSet::kYaesuClassic, "FM", 0x06},
      {ModeCodeSet::kTenTec, "USB", 0},  {ModeCodeSet::kTenTec, "LSB", 1},
      {ModeCodeSet::kPcr1000, "WFM", 6}, {ModeCodeSet::kNrd535, "LSB", 3},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FamilyModeCode(c.set, *ModeNumber(c.mode)), c.code) << c.mode;
  }
  EXPECT_FALSE(FamilyModeCode(ModeCodeSet::kPcr1000, *ModeNumber("RTTY")));
  EXPECT_FALSE(ModeFromFamilyCode(ModeCodeSet::kIcom, 0x55));
}

}  // namespace
}  // namespace tavlorin
