// The spot sources' choice tables and the requests a refresh builds from them.
#include "spots/spot_choices.h"

#include <gtest/gtest.h>

namespace tavlorin {
namespace {

TEST(SpotChoices, EachSourceHasItsTableWithUniqueNames) {
  struct Case {
    SpotSource source;
    size_t rows;
    const char* first;
    const char* last;
  } cases[] = {
      {SpotSource::kWebPages, 29, "25 DX", "Satellite"},
      {SpotSource::kCsvFiles, 24, "ALL", "47 GHz"},
      {SpotSource::kLogFile, 25, "ALL", "47 GHz"},
      {SpotSource::kTelnet, 25, "ALL", "47 GHz"},
  };
  for (const Case& c : cases) {
    std::vector<std::string> names = ChoiceNames(c.source);
    ASSERT_EQ(names.size(), c.rows) << SpotSourceName(c.source);
    EXPECT_EQ(names.front(), c.first);
    EXPECT_EQ(names.back(), c.last);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
  }
}

TEST(SpotChoices, RowsSplitAtTheirFirstComma) {
  struct Case {
    const char* row;
    const char* name;
    const char* value;
  } cases[] = {
      {"25 DX,   dxs/dx25.html?  ", "25 DX", "dxs/dx25.html?"},
      {"A, b, c", "A", "b, c"},
      {"no comma", "no comma", ""},
      {",value", "", "value"},
  };
  for (const Case& c : cases) {
    ChoiceRow row = SplitChoiceRow(c.row);
    EXPECT_EQ(row.name, c.name) << c.row;
    EXPECT_EQ(row.value, c.value) << c.row;
  }
}

TEST(SpotChoices, RequestsForEachSource) {
  SpotServers servers{"cluster-a.example:8080", "https://cluster-b.example/", "/var/log/spots.txt",
                      ""};
  struct Case {
    SpotSource source;
    const char* choice;
    const char* target;
  } cases[] = {
      {SpotSource::kWebPages, "25 DX", "http://cluster-a.example:8080/dxs/dx25.html?"},
      // The deliberate irregularities: 25-spot pages and no "?" on two rows.
      {SpotSource::kWebPages, "50 HF", "http://cluster-a.example:8080/dxs/hfdx25.html?"},
      {SpotSource::kWebPages, "50 VHF", "http://cluster-a.example:8080/dxs/vhfdx25.html?"},
      {SpotSource::kWebPages, "137 kHz", "http://cluster-a.example:8080/dxs/137.html"},
      {SpotSource::kWebPages, "1.8 MHz", "http://cluster-a.example:8080/dxs/1.html"},
      {SpotSource::kWebPages, "1.2 GHz", "http://cluster-a.example:8080/dxs/1g2.html?"},
      {SpotSource::kCsvFiles, "1.8 MHz", "https://cluster-b.example/dxc/top_50_1.8_MHz.csv"},
      {SpotSource::kCsvFiles, "ALL", "https://cluster-b.example/dxc/top_50_ALL.csv"},
      {SpotSource::kLogFile, "14 MHz", "/var/log/spots.txt\t14000\t14500\t250"},
      {SpotSource::kLogFile, "VHF", "/var/log/spots.txt\t30001\t999999\t250"},
      {SpotSource::kTelnet, "47 GHz", "47000000\t47200000\t250"},
  };
  for (const Case& c : cases) {
    SpotRequest request = MakeSpotRequest(c.source, c.choice, servers);
    EXPECT_EQ(request.target, c.target) << c.choice;
    EXPECT_EQ(request.error, "") << c.choice;
  }
}

TEST(SpotChoices, UnmatchedChoicesAndUnsetServersGiveAnEmptyRequestThatSaysWhy) {
  SpotServers none;
  struct Case {
    SpotSource source;
    const char* choice;
    const char* says;
  } cases[] = {
      {SpotSource::kCsvFiles, "25 DX", "no spot list named \"25 DX\""},
      {SpotSource::kWebPages, "25 dx", "no spot list named"},
      {SpotSource::kWebPages, "25 DX", "No server is set"},
      {SpotSource::kLogFile, "HF", "No spot log file is set"},
  };
  for (const Case& c : cases) {
    SpotRequest request = MakeSpotRequest(c.source, c.choice, none);
    EXPECT_EQ(request.target, "");
    EXPECT_NE(request.error.find(c.says), std::string::npos) << request.error;
  }
}

TEST(SpotChoices, BandRangesReadBackAndRejectWhatIsNotThreeNumbers) {
  std::optional<BandRange> range = ParseBandRange("1240000\t1325000\t250");
  ASSERT_TRUE(range);
  EXPECT_EQ(range->lowKhz, 1240000u);
  EXPECT_EQ(range->highKhz, 1325000u);
  EXPECT_EQ(range->count, 250u);
  for (const char* bad : {"", "1\t2", "1\t2\t3\t4", "a\t2\t3", "1\t\t3", "-1\t2\t3"}) {
    EXPECT_FALSE(ParseBandRange(bad)) << bad;
  }
}

TEST(SpotChoices, HomePageAndLookupAddresses) {
  SpotServers servers{"a.example", "b.example", "", "lookup.example"};
  EXPECT_EQ(HomePageAddress(SpotSource::kWebPages, servers), "http://a.example/");
  EXPECT_EQ(HomePageAddress(SpotSource::kCsvFiles, servers), "http://b.example/");
  EXPECT_EQ(HomePageAddress(SpotSource::kLogFile, servers), "http://b.example/");
  EXPECT_EQ(CallsignLookupAddress(servers, "VK9XX"), "http://lookup.example/detail/VK9XX");
  EXPECT_EQ(CallsignLookupAddress(SpotServers{}, "VK9XX"), "");
}

}  // namespace
}  // namespace tavlorin
