// The four spot parsers and the frequency texts, on the fixture files the test web cluster
// serves and on single lines.
#include "spots/spot_parsers.h"

#include <gtest/gtest.h>

#include "spots/spot_frequency.h"
#include "support/python_server.h"
#include "support/temp_dir.h"

namespace tavlorin {
namespace {

std::vector<std::string> FixtureLines(const std::string& name) {
  return SplitBodyLines(testing::TempDir::Read(testing::FixturePath("spots/" + name)));
}

struct Expected {
  const char* frequency;
  const char* callsign;
  const char* spotter;
  const char* time;
  const char* comment;
};

void ExpectSpots(const std::vector<Spot>& spots, const std::vector<Expected>& expected) {
  ASSERT_EQ(spots.size(), expected.size());
  for (size_t i = 0; i < spots.size(); ++i) {
    EXPECT_EQ(spots[i].frequency, expected[i].frequency) << i;
    EXPECT_EQ(spots[i].callsign, expected[i].callsign) << i;
    EXPECT_EQ(spots[i].spotter, expected[i].spotter) << i;
    EXPECT_EQ(spots[i].time, expected[i].time) << i;
    EXPECT_EQ(spots[i].comment, expected[i].comment) << i;
  }
}

TEST(WebPageParser, ReadsTheHeadingAndEveryLineOfThePreBlock) {
  SpotTable table = ParseWebPage(FixtureLines("dxs/dx25.html"));
  EXPECT_EQ(table.title, "Last 25 DX spots");  // the text after the heading's first ":"
  ExpectSpots(table.spots, {
                               // The <PRE> line itself carries the first spot.
                               {"14025.5", "VK9XX", "DL1ABC", "", "CW up 2"},
                               // A linked callsign and "&amp;" keep their columns.
                               {"7003.0", "JA1ZZZ", "W3LPL", "", "QSX 5/10 & up"},
                               // Shorter than 30 characters: no comment; "21074." completed.
                               {"21074.0", "Z21X", "G4ABC", "", ""},
                               // No blank in the first 17 characters: split at 9.
                               {"14074.00", "3B8ABC", "ON4XYZ-14", "", "FT8"},
                           });
}

TEST(WebPageParser, BlockAndHeadingForms) {
  struct Case {
    std::vector<std::string> lines;
    const char* title;
    size_t spots;
  } cases[] = {
      {{"<h4>Spots</h4>", "<pre>", "DL1ABC 14025.0    VK9XX", "</pre>"}, "Spots", 1},
      {{"<PRE>DL1ABC 14025.0    VK9XX</PRE>", "K1ABC 7000.0      G4X"}, "", 1},
      {{"<PRE>", "", "   ", "</PRE>"}, "", 0},
      {{"<H4>no spots today</H4>", "DL1ABC 14025.0    VK9XX"}, "no spots today", 0},
      {{"<PRE>", "DL1ABC 14025.0    VK9XX"}, "", 1},  // a page cut short keeps what came
      {{}, "", 0},
  };
  for (const Case& c : cases) {
    SpotTable table = ParseWebPage(c.lines);
    EXPECT_EQ(table.title, c.title);
    EXPECT_EQ(table.spots.size(), c.spots) << (c.lines.empty() ? "" : c.lines[0]);
  }
}

TEST(CsvSpotParser, ReadsTheHeaderAndFiveFieldsALine) {
  SpotTable table = ParseCsvSpots(FixtureLines("dxc/top_50_HF.csv"));
  EXPECT_EQ(table.title, "Top 50 HF");
  ExpectSpots(table.spots, {
                               {"14025.5", "VK9XX", "DL1ABC", "1234Z", "CW up 2"},
                               {"7003.0", "JA1ZZZ", "W3LPL", "1240Z", "QSX 5/10 & up"},
                               {"21074.0", "Z21X", "G4ABC", "", ""},  // padded
                               {"", "", "", "", ""},                  // kept, not lost
                               {"1234567.0", "3B8ABC", "ON4XYZ", "1250Z", "FT8"},  // cut
                           });
  EXPECT_EQ(ParseCsvSpots({"## Spots of today ##"}).title, "Spots of today");
}

TEST(LogFileParser, KeepsTheNewestSpotsWithinTheRange) {
  const std::vector<std::string> lines = FixtureLines("spot_log.txt");
  SpotTable hf = ParseLogFileSpots(lines, BandRange{0, 30000, 250});
  ExpectSpots(hf.spots, {
                            {"14025.5", "VK9XX", "DL1ABC", "12:34", "CW up 2"},
                            {"7003.0", "JA1ZZZ", "W3LPL", "12:40", "QSX 5/10 & up"},
                            {"21074.0", "Z21X", "G4ABC", "", ""},
                            {"14070.0", "DL2XX", "DK1AA", "13:10", "PSK"},
                        });
  EXPECT_EQ(hf.spots[0].locator, "JO62");
  EXPECT_EQ(hf.unreadable, 1);  // "abc" is no frequency

  SpotTable twenty = ParseLogFileSpots(lines, BandRange{14000, 14500, 1});
  ExpectSpots(twenty.spots, {{"14070.0", "DL2XX", "DK1AA", "13:10", "PSK"}});

  SpotTable edges = ParseLogFileSpots(lines, BandRange{7003, 14025, 250});
  EXPECT_EQ(edges.spots.size(), 2u);  // both bounds belong to the range

  SpotTable headed = ParseLogFileSpots({"# Spots / Local skimmer", "K1ABC\t1820\tX\t\t\t0001"},
                                       BandRange{1800, 2000, 250});
  EXPECT_EQ(headed.title, "Local skimmer");
  ExpectSpots(headed.spots, {{"1820.0", "K1ABC", "X", "00:01", ""}});
}

TEST(DxLineParser, ReadsTheLinesOfEveryKindOfNode) {
  struct Case {
    const char* line;
    Expected spot;
    const char* locator;
  } cases[] = {
      {"DX de W3LPL:     14025.0  VK9XX        CW up 2                       1234Z FN20",
       {"14025.0", "VK9XX", "W3LPL", "1234Z", "CW up 2"},
       "FN20"},
      {"DX de KM3T-#:    7003.5   DL1ABC       CW    24 dB  22 WPM  CQ      1234Z",
       {"7003.5", "DL1ABC", "KM3T-#", "1234Z", "CW    24 dB  22 WPM  CQ"},
       ""},
      {"DX de G4ABC:     1836     EA8XX        \a\a", {"1836.0", "EA8XX", "G4ABC", "", ""}, ""},
      {"DL9TST de GB7XX 22-Nov-2026 1742Z dxspider >DX de G4A: 3501.0 K1A  0001Z",
       {"3501.0", "K1A", "G4A", "0001Z", ""},
       ""},
      {"DX de K1ABC: 50313.0 JA1XYZ FT8 0500Z up 1159Z",
       {"50313.0", "JA1XYZ", "K1ABC", "1159Z", "FT8 0500Z up"},
       ""},
  };
  for (const Case& c : cases) {
    std::optional<Spot> spot = ParseDxLine(c.line);
    ASSERT_TRUE(spot) << c.line;
    ExpectSpots({*spot}, {c.spot});
    EXPECT_EQ(spot->locator, c.locator);
  }
  for (const char* other : {"To ALL de G4ABC: anyone on 160?", "WWV de VE7CC <18>:   SFI=150",
                            "To ALL de G4ABC: heard DX de K1A: 3501.0 K2B",
                            "DX de W3LPL 14025.0 VK9XX", "DX de W3LPL: abc VK9XX",
                            "DX de W3LPL:  14025.0", "", "login: "}) {
    EXPECT_FALSE(ParseDxLine(other)) << other;
  }
}

TEST(DxLineParser, ClusterLinesAreFilteredByBandAndCount) {
  const std::vector<std::string> lines = {
      "DX de A1A:  14025.0  K1AA  one  0001Z", "To ALL de X: hello",
      "DX de B1B:  7003.0   K2BB  two  0002Z", "DX de C1C:  14070.0  K3CC  three 0003Z",
  };
  EXPECT_EQ(ParseClusterLines(lines, BandRange{0, 999999, 250}).spots.size(), 3u);
  SpotTable twenty = ParseClusterLines(lines, BandRange{14000, 14500, 1});
  ASSERT_EQ(twenty.spots.size(), 1u);
  EXPECT_EQ(twenty.spots[0].callsign, "K1AA");  // newest first: the first line wins
}

TEST(SpotFrequency, TextCompletionAndHertz) {
  struct Case {
    const char* text;
    const char* completed;
    std::optional<Frequency> hertz;
  } cases[] = {
      {"14025", "14025.0", 14025000},     {"14025.", "14025.0", 14025000},
      {"14025.5", "14025.5", 14025500},   {"7003.25", "7003.25", 7003250},
      {"7003.2567", "7003.2567", 7003256}, {"137.8", "137.8", 137800},
      {"4000000", "4000000.0", 4000000000u}, {"4000001.0", "4000001.0", std::nullopt},
      {"", "", std::nullopt},             {"abc", "abc.0", std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CompleteFrequencyText(c.text), c.completed) << c.text;
    EXPECT_EQ(SpotHertz(c.text), c.hertz) << c.text;
  }
}

}  // namespace
}  // namespace tavlorin
