// Source 2: the spot log file another program on this computer writes, one spot a line in six
// tab-separated fields:
//
//   VK9XX <TAB> 14025.0 <TAB> DL1ABC <TAB> CW up 2 <TAB> JO62 <TAB> 1234
//   callsign    frequency    spotter      comment       locator   time (HHMM)
//
// A first line that starts with "#" is a header, read as the CSV files' header. Lines outside
// the chosen band range are not shown; a line whose frequency cannot be read is counted as
// unreadable. The file grows at its end, so the newest spots of the range are the last ones.
#include <cctype>

#include "spots/spot_frequency.h"
#include "spots/spot_parsers.h"

namespace tavlorin {
namespace {

constexpr size_t kLogFields = 6;

// "1234" -> "12:34"; any other form is shown as it stands.
std::string ShowTime(const std::string& time) {
  bool fourDigits = time.size() == 4;
  for (char c : time) {
    fourDigits = fourDigits && std::isdigit(static_cast<unsigned char>(c));
  }
  return fourDigits ? time.substr(0, 2) + ":" + time.substr(2) : time;
}

}  // namespace

SpotTable ParseLogFileSpots(const std::vector<std::string>& lines, const BandRange& range) {
  SpotTable table;
  size_t first = 0;
  if (!lines.empty() && !lines.front().empty() && lines.front()[0] == '#') {
    table.title = ParseCsvSpots({lines.front()}).title;
    first = 1;
  }
  for (size_t i = first; i < lines.size(); ++i) {
    if (TrimText(lines[i]).empty()) {
      continue;
    }
    std::vector<std::string> f = SplitSpotFields(lines[i], '\t', kLogFields);
    std::optional<unsigned long> khz = WholeKilohertz(f[1]);
    if (!khz) {
      ++table.unreadable;
      continue;
    }
    if (*khz < range.lowKhz || *khz > range.highKhz) {
      continue;
    }
    Spot spot;
    spot.frequency = CompleteFrequencyText(f[1]);
    spot.callsign = f[0];
    spot.spotter = f[2];
    spot.comment = f[3];
    spot.locator = f[4];
    spot.time = ShowTime(f[5]);
    table.spots.push_back(std::move(spot));
  }
  if (table.spots.size() > range.count) {
    table.spots.erase(table.spots.begin(), table.spots.end() - range.count);
  }
  return table;
}

}  // namespace tavlorin
