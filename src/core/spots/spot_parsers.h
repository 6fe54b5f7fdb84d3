// The parsers of the spot sources: a body fetched from one source becomes a SpotTable.
//
//  - ParseWebPage: an HTML page whose spots stand in a <PRE> block, cut by columns; the <H4>
//    heading is the title.
//  - ParseCsvSpots: "^"-separated lines under a "#" header line.
//  - ParseLogFileSpots: tab-separated lines of a log file another program writes, kept within a
//    band range.
//  - ParseClusterLines: "DX de SPOTTER: FREQ CALL COMMENT TIME" lines of a telnet cluster, kept
//    within a band range.
// Every frequency is completed to carry a decimal. Pure functions; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "spots/spot.h"
#include "spots/spot_choices.h"

namespace tavlorin {

// Splits at "\n"; a "\r" before it is dropped. An empty body gives no lines.
std::vector<std::string> SplitBodyLines(std::string_view body);
// Blanks, tabs and line ends removed at both ends.
std::string TrimText(std::string_view text);
// Splits at `separator` into exactly `count` trimmed fields: missing ones are empty, and text
// after the last field's own separator is cut.
std::vector<std::string> SplitSpotFields(std::string_view line, char separator, size_t count);

SpotTable ParseWebPage(const std::vector<std::string>& lines);
// One line of the <PRE> block, cut by its columns.
Spot ParseWebPageSpotLine(std::string_view line);

SpotTable ParseCsvSpots(const std::vector<std::string>& lines);

// The log file's lines in file order; the newest `range.count` spots within the range are kept,
// in file order.
SpotTable ParseLogFileSpots(const std::vector<std::string>& lines, const BandRange& range);

// One "DX de" line; nullopt for any other line (announcements, prompts, talk).
std::optional<Spot> ParseDxLine(std::string_view line);
// Lines newest first; the first `range.count` spots within the range are kept.
SpotTable ParseClusterLines(const std::vector<std::string>& lines, const BandRange& range);

}  // namespace tavlorin
