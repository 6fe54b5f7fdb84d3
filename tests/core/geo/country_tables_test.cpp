// Prefix look-ups on a small countries file whose entries mirror the awkward real cases:
// dated entries, clashes, deleted entities, whole callsigns, slashes.
#include "geo/country_tables.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "geo/countries_file.h"
#include "shell/definition_file.h"

namespace tavlorin {
namespace {

class CountryTablesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::vector<std::string> lines;  // comment lines included: the parser skips them
    ASSERT_TRUE(ReadDefinitionFile(TAVLORIN_TEST_SOURCE_DIR "/fixtures/countries_small.txt",
                                   [&lines](std::string_view line) { lines.emplace_back(line); })
                    .ok());
    parsed_ = ParseCountryLines(lines);
    tables_.Build(parsed_.rows, [this](const std::string& line) { clashes_.push_back(line); });
  }
  ParsedCountries parsed_;
  CountryTables tables_;
  std::vector<std::string> clashes_;
};

TEST_F(CountryTablesTest, CountsAndClashes) {
  EXPECT_EQ(parsed_.active, 14);
  EXPECT_EQ(parsed_.deleted, 2);
  EXPECT_EQ(tables_.CountryNames().size(), 16u);
  EXPECT_EQ(tables_.CountryNames().front(), "Belarus");
  EXPECT_EQ(tables_.CountryForDxcc(81), "Germany [deleted]");
  // The first row keeps a clashing prefix; clashes with deleted entities are not logged.
  EXPECT_EQ(clashes_, (std::vector<std::string>{
                          "Country prefix EU allocated to DXCC 27 and 54",
                          "Country prefix EF6 allocated to DXCC 281 and 21",
                      }));
}

TEST_F(CountryTablesTest, CallsignLookUps) {
  struct Case {
    const char* callsign;
    const char* dxcc;
    const char* why;
  };
  const Case cases[] = {
      {"4K5ABC", "18", "4K5 > date is kept as 4K5"},
      {"ER6DX", "179", "ER6D < date was dropped; ER matches"},
      {"UF6XYZ", "54", "Georgia's UF < date was dropped; U of Russia matches"},
      {"DL/HB9ABC", "230", "a foreign prefix before the slash decides"},
      {"HB9ABC/P", "287", "a suffix after the slash changes nothing"},
      {"4U5AB", "117", "4U5 is not listed; 4U is"},
      {"4U1UN", "289", "a whole callsign beats the shorter 4U"},
      {"4U1UNX", "289", "a whole-callsign entry is a leading match too"},
      {"9M6TCR", "46", "whole callsign listed under another entity"},
      {"9M6ABC", "47", "the same start without the whole callsign"},
      {"EU1AA", "27", "clash: the first row keeps EU"},
      {"DL1ABC", "230", "active wins over the deleted Germany"},
      {"9S4XY", "210", "only a deleted entity holds 9S4"},
      {"dl1abc", "", "small letters do not match capital entries"},
      {"", "", "empty callsign"},
      {"QQ1A", "", "no entity"},
      {"XX1A", "", "the 12-field line was skipped"},
      {"EF6AB", "281", "EF6 > date kept; the clash keeps Spain"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(tables_.DxccForCallsign(c.callsign), c.dxcc) << c.callsign << ": " << c.why;
  }
}

TEST_F(CountryTablesTest, NameAndPrefixLookUps) {
  std::string dxcc;
  EXPECT_EQ(tables_.CountryForCallsign("UA3AB", &dxcc), "European Russia");
  EXPECT_EQ(dxcc, "54") << "\"054\" is stored as the number 54";
  EXPECT_EQ(tables_.CountryForCallsign("9S4A", &dxcc), "Saar [deleted]");
  EXPECT_EQ(tables_.CountryForCallsign("QQ1A", &dxcc), "");
  EXPECT_EQ(dxcc, "");
  EXPECT_EQ(tables_.DxccForCountry("Switzerland"), 287u);
  EXPECT_EQ(tables_.DxccForCountry("Atlantis"), 0u);
  EXPECT_EQ(tables_.DxccForPrefix("hb"), "287") << "capitalised";
  EXPECT_EQ(tables_.DxccForPrefix("dl"), "230") << "active before deleted";
  EXPECT_EQ(tables_.DxccForPrefix("9s4"), "210");
  EXPECT_EQ(tables_.DxccForPrefix("HB9"), "") << "exact look-up, no leading match";
}

TEST(CountriesFileTest, LineSplittingAndPrefixNotation) {
  auto fields = SplitCountryLine("\"1\",\"A\"\"B\",\"x,y\"");
  EXPECT_EQ(fields, (std::vector<std::string>{"1", "AB", "x,y"}));
  EXPECT_EQ(KeptPrefixes("4J,4K,4K5 > 01-01-94,ER6D < 06-30-93, UF ,"), "4J,4K,4K5,UF");
  EXPECT_EQ(KeptPrefixes(""), "");
}

}  // namespace
}  // namespace tavlorin
