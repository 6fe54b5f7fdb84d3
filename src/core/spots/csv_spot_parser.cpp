// Source 1: a web cluster's top-50 file.
//
//   # DX Spots / Top 50 HF #
//   VK9XX^14025.0^DL1ABC^1234Z^CW up 2
//
// The first line is the header ("#" removed; when it holds "/", the text after the first "/"
// is the title). Each other line has five "^"-separated fields: the spotted callsign, the
// frequency in kHz, the spotter, the time and the comment; a line with fewer is padded, one
// with more is cut, so no line is lost.
#include "spots/spot_frequency.h"
#include "spots/spot_parsers.h"

namespace tavlorin {
namespace {

constexpr size_t kCsvFields = 5;

}  // namespace

SpotTable ParseCsvSpots(const std::vector<std::string>& lines) {
  SpotTable table;
  if (lines.empty()) {
    return table;
  }
  std::string header;
  for (char c : lines.front()) {
    if (c != '#') {
      header += c;
    }
  }
  header = TrimText(header);
  if (size_t slash = header.find('/'); slash != std::string::npos) {
    header = TrimText(header.substr(slash + 1));
  }
  table.title = header;
  for (size_t i = 1; i < lines.size(); ++i) {
    if (TrimText(lines[i]).empty()) {
      continue;
    }
    std::vector<std::string> f = SplitSpotFields(lines[i], '^', kCsvFields);
    Spot spot;
    spot.frequency = CompleteFrequencyText(f[1]);
    spot.callsign = f[0];
    spot.spotter = f[2];
    spot.time = f[3];
    spot.comment = f[4];
    table.spots.push_back(std::move(spot));
  }
  return table;
}

}  // namespace tavlorin
