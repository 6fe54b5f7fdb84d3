// tavlorin-cli locator: Maidenhead locators, positions, bearing and distance.
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "args.h"
#include "commands.h"
#include "geo/locator.h"

namespace tavlorin::cli {
namespace {

constexpr const char* kUsage =
    "Usage: tavlorin-cli locator LOCATOR                 latitude and longitude of its centre\n"
    "       tavlorin-cli locator --position LAT LON      the 6-character locator\n"
    "       tavlorin-cli locator --bearing LOC1 LOC2     bearing (degrees), km, miles\n"
    "Longitudes are positive to the WEST (19.1 degrees east is -19.1), as everywhere in the\n"
    "program. Output is tab-separated.\n";

int BadLine(const std::string& message) {
  std::fprintf(stderr, "tavlorin-cli locator: %s\n\n%s", message.c_str(), kUsage);
  return 2;
}

bool ParseDegrees(const std::string& text, double low, double high, double* value) {
  char* end = nullptr;
  *value = std::strtod(text.c_str(), &end);
  return !text.empty() && end != nullptr && *end == '\0' && *value >= low && *value <= high;
}

// Capitals first: the conversion takes character codes as they stand.
bool CheckedLocator(const std::string& text, std::string* upper) {
  *upper = text;
  for (char& c : *upper) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  if (!IsValidLocator(*upper)) {
    std::fprintf(stderr, "Invalid locator. (\"%s\"; example: JN46pt)\n", text.c_str());
    return false;
  }
  return true;
}

}  // namespace

int RunLocatorCommand(const Globals&, const Args& args) {
  ArgReader reader(args);
  if (reader.Flag("--help")) {
    std::printf("%s", kUsage);
    return 0;
  }
  const bool position = reader.Flag("--position");
  const bool bearing = reader.Flag("--bearing");
  std::vector<std::string> words = reader.Positionals();
  if (std::string error = reader.Finish(); !error.empty()) {
    return BadLine(error);
  }
  if (position && !bearing) {
    double lat = 0, lon = 0;
    if (words.size() != 2 || !ParseDegrees(words[0], -90, 90, &lat) ||
        !ParseDegrees(words[1], -180, 180, &lon)) {
      return BadLine("--position needs LAT (-90..90) and LON (-180..180, west positive)");
    }
    std::printf("%s\n", PositionToLocator(lon, lat).c_str());
    return 0;
  }
  if (bearing && !position) {
    std::string a, b;
    if (words.size() != 2) {
      return BadLine("--bearing needs two locators");
    }
    if (!CheckedLocator(words[0], &a) || !CheckedLocator(words[1], &b)) {
      return 1;
    }
    GeoPosition p1 = LocatorToPosition(a), p2 = LocatorToPosition(b);
    BearingDistance r = BearingAndDistance(p1.longitude, p1.latitude, p2.longitude, p2.latitude);
    std::printf("%.1f\t%.2f\t%.2f\n", r.bearing, r.kilometres, r.miles);
    return 0;
  }
  if (position || bearing || words.size() != 1) {
    return BadLine("give one locator, or --position LAT LON, or --bearing LOC1 LOC2");
  }
  std::string loc;
  if (!CheckedLocator(words[0], &loc)) {
    return 1;
  }
  GeoPosition p = LocatorToPosition(loc);
  std::printf("%s\t%.6f\t%.6f\n", loc.c_str(), p.latitude, p.longitude);
  return 0;
}

}  // namespace tavlorin::cli
