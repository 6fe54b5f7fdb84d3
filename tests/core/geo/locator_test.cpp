#include "geo/locator.h"

#include <gtest/gtest.h>

namespace tavlorin {
namespace {

TEST(LocatorTest, CentresOfSquaresAndSubsquares) {
  struct Case {
    const char* locator;
    double longitude;  // west positive
    double latitude;
  };
  const Case cases[] = {
      {"JN46", -9.0, 46.5},                          // east longitude odd, latitude .5
      {"IO91", 1.0, 51.5},                           // west of Greenwich
      {"AA00", 179.0, -89.5},                        // the first square
      {"RR99", -179.0, 89.5},                        // the last square
      {"JN46PT", -(8 + 15.5 / 12), 46 + 19.5 / 24},  // "PT": P = 80, T = 84
      {"IO91WM", -(-180 + 8 * 20 + 18 + 22.5 / 12), 51 + 12.5 / 24},
      {"JN\xD8\x36", -1.0, 46.5},      // JNØ6: slashed O (code page 1252) is a zero
      {"JN4\xD8", -9.0, 40.5},         // JN4Ø
      {"JN\xC3\x98\x36", -1.0, 46.5},  // JNØ6 typed in UTF-8
      {"", 0, 0},                      // any other length gives 0, 0
      {"J", 0, 0},
      {"JN4", 0, 0},
      {"JN46P", 0, 0},
      {"JN46PTX", 0, 0},
      {"JN46PT12", 0, 0},
  };
  for (const Case& c : cases) {
    GeoPosition p = LocatorToPosition(c.locator);
    EXPECT_NEAR(p.longitude, c.longitude, 1e-9) << c.locator;
    EXPECT_NEAR(p.latitude, c.latitude, 1e-9) << c.locator;
  }
}

TEST(LocatorTest, PositionToLocatorRoundTripsSubsquareCentres) {
  for (const char* loc : {"JN46PT", "IO91WM", "AA00AA", "RR99XX", "FN31PR", "QF56OD", "JO62QM"}) {
    GeoPosition p = LocatorToPosition(loc);
    EXPECT_EQ(PositionToLocator(p.longitude, p.latitude), loc);
  }
  EXPECT_EQ(PositionToLocator(-13.4, 52.5), "JO62QM");  // Berlin: 13.4 east
}

TEST(LocatorTest, Validity) {
  for (const char* good : {"JN46", "jn46", "JN46PT", "jn46pt", "AA00AA", "RR99XX"}) {
    EXPECT_TRUE(IsValidLocator(good)) << good;
  }
  for (const char* bad : {"", "JN4", "JN46P", "SN46", "JS46", "JNA6", "JN4A", "JN46PY", "JN46YA",
                          "JN46PT1", "JN\xD8\x36"}) {
    EXPECT_FALSE(IsValidLocator(bad)) << bad;
  }
}

TEST(LocatorTest, BearingAndDistance) {
  struct Case {
    double lon1, lat1, lon2, lat2;
    double bearing, km;
  };
  const Case cases[] = {
      {0, 0, 0, 0, 0, 0},  // equal points
      {10, 20, 10, 20, 0, 0},
      {0, 0, 10, 0, 270, 10 * 6378 * 3.141592653589793 / 180},  // due west
      {0, 0, -10, 0, 90, 10 * 6378 * 3.141592653589793 / 180},  // due east
      {0, 0, 0, 10, 0, 10 * 6378 * 3.141592653589793 / 180},    // due north
      {0, 10, 0, 0, 180, 10 * 6378 * 3.141592653589793 / 180},  // due south
      {0, 0, 180, 0, 0, 6378 * 3.141592653589793},              // antipode along the equator
  };
  for (const Case& c : cases) {
    BearingDistance r = BearingAndDistance(c.lon1, c.lat1, c.lon2, c.lat2);
    EXPECT_NEAR(r.kilometres, c.km, 1e-6);
    EXPECT_NEAR(r.miles, c.km / 1.609, 1e-6);
    EXPECT_GE(r.bearing, 0);
    EXPECT_LT(r.bearing, 360);
    if (c.km > 0 && c.km < 20000) {
      EXPECT_NEAR(r.bearing, c.bearing, 1e-9) << c.lon2 << "," << c.lat2;
    }
  }
  // Berlin to London: about 930 km, a little south of due west.
  GeoPosition berlin = LocatorToPosition("JO62QM"), london = LocatorToPosition("IO91WM");
  BearingDistance r =
      BearingAndDistance(berlin.longitude, berlin.latitude, london.longitude, london.latitude);
  EXPECT_NEAR(r.kilometres, 930, 15);
  EXPECT_GT(r.bearing, 260);
  EXPECT_LT(r.bearing, 270);
}

}  // namespace
}  // namespace tavlorin
