#include "spots_cli.h"

#include <cstdio>
#include <fstream>
#include <optional>

#include "args.h"
#include "logbook_cli.h"
#include "spots/spot_frequency.h"

namespace tavlorin::cli {

void PrintSpot(const Spot& spot, bool json) {
  if (json) {
    std::optional<Frequency> hz = SpotHertz(spot.frequency);
    std::printf(
        "{\"frequency\": %s, \"hertz\": %s, \"callsign\": %s, \"spotter\": %s, \"time\": %s, "
        "\"comment\": %s, \"locator\": %s, \"country\": %s}\n",
        JsonText(spot.frequency).c_str(), hz ? std::to_string(*hz).c_str() : "null",
        JsonText(spot.callsign).c_str(), JsonText(spot.spotter).c_str(),
        JsonText(spot.time).c_str(), JsonText(spot.comment).c_str(),
        JsonText(spot.locator).c_str(), JsonText(spot.country).c_str());
    return;
  }
  std::printf("%s\t%s\t%s\t%s\t%s\n", TabSafe(spot.frequency).c_str(),
              TabSafe(spot.callsign).c_str(),
              TabSafe(spot.spotter.empty() ? spot.time : spot.spotter).c_str(),
              TabSafe(spot.comment).c_str(), TabSafe(spot.country).c_str());
}

bool SplitHostPort(const std::string& text, std::string* host, uint16_t* port) {
  size_t colon = text.rfind(':');
  if (colon == std::string::npos) {
    *host = text;
    return !text.empty();
  }
  std::optional<long long> number = ParseNumber(text.substr(colon + 1), 1, 65535);
  if (!number || colon == 0) {
    return false;
  }
  *host = text.substr(0, colon);
  *port = static_cast<uint16_t>(*number);
  return true;
}

bool ReadFirstLine(const std::string& path, std::string* line) {
  std::ifstream in(path);
  if (!in) {
    return false;
  }
  std::getline(in, *line);
  if (!line->empty() && line->back() == '\r') {
    line->pop_back();
  }
  return true;
}

}  // namespace tavlorin::cli
