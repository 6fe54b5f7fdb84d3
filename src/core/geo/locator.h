// Maidenhead locators, bearing and distance: pure functions without state (any thread).
//
// Longitudes are positive to the WEST and negative to the east throughout (19.1 degrees east
// is -19.1); every caller shares this convention. Latitudes are positive to the north.
#pragma once

#include <string>
#include <string_view>

namespace tavlorin {

struct GeoPosition {
  double longitude = 0;  // degrees, west positive
  double latitude = 0;   // degrees, north positive
};

struct BearingDistance {
  double bearing = 0;  // degrees clockwise from north, 0 up to but excluding 360
  double kilometres = 0;
  double miles = 0;
};

// The centre of a 4-character square or a 6-character subsquare. Letters are taken as they
// stand (capitals expected); a slashed O (the byte 0xD8, or "Ø" in UTF-8) in the digit places
// counts as "0". Any other length gives 0, 0.
GeoPosition LocatorToPosition(std::string_view locator);

// The 6-character locator of a position.
std::string PositionToLocator(double longitude, double latitude);

// Initial great-circle bearing and distance from point 1 to point 2 (earth radius 6378 km).
BearingDistance BearingAndDistance(double longitude1, double latitude1, double longitude2,
                                   double latitude2);

// The check callers make before they warn: length 4 or 6, field letters A-R, digits, subsquare
// letters A-X, either case.
bool IsValidLocator(std::string_view locator);

}  // namespace tavlorin
