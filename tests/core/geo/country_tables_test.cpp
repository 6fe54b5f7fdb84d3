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

std::vector<std::string> FixtureLines(const char* name) {
  std::vector<std::string> lines;
  Status s = ReadDefinitionFile(std::string(TAVLORIN_TEST_SOURCE_DIR) + "/fixtures/" + name,
                                [&lines](std::string_view line) { lines.emplace_back(line); });
  EXPECT_TRUE(s.ok()) << s.message();
  return lines;
}

class CountryTablesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    parsed_ = ParseCountryLines(FixtureLines("countries_small.txt"));
    tables_.Build(parsed_.rows, [this](const std::string& line) { clashes_.push_back(line); });
  }
  ParsedCountries parsed_;
  CountryTables tables_;
  std::vector<std::string> clashes_;
};

TEST_F(CountryTablesTest, CountsOnlyThirteenFieldLines) {
  EXPECT_EQ(parsed_.active, 14);
  EXPECT_EQ(parsed_.deleted, 2);
  EXPECT_EQ(tables_.CountryNames().size(), 16u);
  EXPECT_EQ(tables_.CountryNames().front(), "Belarus");
  EXPECT_EQ(tables_.CountryForDxcc(81), "Germany [deleted]");
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

TEST_F(CountryTablesTest, CountryForCallsignReturnsNameAndDxcc) {
  std::string dxcc;
  EXPECT_EQ(tables_.CountryForCallsign("UA3AB", &dxcc), "European Russia");
  EXPECT_EQ(dxcc, "54") << "\"054\" is stored as the number 54";
  EXPECT_EQ(tables_.CountryForCallsign("9S4A", &dxcc), "Saar [deleted]");
  EXPECT_EQ(tables_.CountryForCallsign("QQ1A", &dxcc), "");
  EXPECT_EQ(dxcc, "");
  EXPECT_EQ(tables_.DxccForCountry("Switzerland"), 287u);
  EXPECT_EQ(tables_.DxccForCountry("Atlantis"), 0u);
}

TEST_F(CountryTablesTest, PrefixLookUpCapitalisesAndPrefersActive) {
  EXPECT_EQ(tables_.DxccForPrefix("hb"), "287");
  EXPECT_EQ(tables_.DxccForPrefix("dl"), "230");
  EXPECT_EQ(tables_.DxccForPrefix("9s4"), "210");
  EXPECT_EQ(tables_.DxccForPrefix("HB9"), "") << "exact look-up, no leading match";
}

TEST_F(CountryTablesTest, ClashesKeepFirstAndAreLoggedForActiveOnly) {
  EXPECT_EQ(clashes_, (std::vector<std::string>{
                          "Country prefix EU allocated to DXCC 27 and 54",
                          "Country prefix EF6 allocated to DXCC 281 and 21",
                      }));
}

TEST(CountriesFileTest, LineSplittingAndPrefixNotation) {
  auto fields = SplitCountryLine("\"1\",\"A\"\"B\",\"x,y\"");
  EXPECT_EQ(fields, (std::vector<std::string>{"1", "AB", "x,y"}));
  EXPECT_EQ(KeptPrefixes("4J,4K,4K5 > 01-01-94,ER6D < 06-30-93, UF ,"), "4J,4K,4K5,UF");
  EXPECT_EQ(KeptPrefixes(""), "");
}

TEST(CountriesFileTest, TwelveFieldFileGivesNothing) {
  ParsedCountries parsed = ParseCountryLines(FixtureLines("countries_12fields.txt"));
  EXPECT_EQ(parsed.active, 0);
  EXPECT_EQ(parsed.deleted, 0);
  EXPECT_TRUE(parsed.rows.empty());
}

TEST(CountriesFileTest, BuiltInListMatchesItsDescription) {
  std::vector<std::string> lines;
  ASSERT_TRUE(
      ReadDefinitionBody(std::string(TAVLORIN_SOURCE_DATA_DIR) + "/TVR Countries.txt", &lines)
          .ok());
  ParsedCountries parsed = ParseCountryLines(lines);
  EXPECT_EQ(parsed.active, 340);
  EXPECT_EQ(parsed.deleted, 62);
  CountryTables tables;
  tables.Build(parsed.rows);
  const std::pair<const char*, const char*> cases[] = {
      {"DL1ABC", "230"}, {"HB9ABC/P", "287"}, {"JA1XYZ", "339"}, {"VK2ABC", "150"},
      {"W1AW", "291"},   {"G4ABC", "223"},    {"1M4A", "178"},   {"4K5A", "18"},
      {"VS9KA", "127"},  {"9S4AA", "414"},  // deleted Saar lost 9S to an active entity
  };
  for (const auto& [call, dxcc] : cases) {
    EXPECT_EQ(tables.DxccForCallsign(call), dxcc) << call;
  }
}

}  // namespace
}  // namespace tavlorin
