#include "geo/locator.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace tavlorin {
namespace {

constexpr double kPi = 3.141592653589793;
constexpr unsigned char kSlashedO = 0xD8;  // code page 1252

double Radians(double degrees) { return degrees * kPi / 180; }

// A UTF-8 "Ø" (C3 98) becomes the one byte the arithmetic treats as a zero.
std::string NormaliseSlashedO(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (static_cast<unsigned char>(text[i]) == 0xC3 && i + 1 < text.size() &&
        static_cast<unsigned char>(text[i + 1]) == 0x98) {
      out += static_cast<char>(kSlashedO);
      ++i;
    } else {
      out += text[i];
    }
  }
  return out;
}

bool InRange(char c, char low, char high) {
  char u = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return u >= low && u <= high;
}

}  // namespace

GeoPosition LocatorToPosition(std::string_view locator) {
  std::string text = NormaliseSlashedO(locator);
  if (text.size() != 4 && text.size() != 6) {
    return {};
  }
  for (size_t i : {2u, 3u}) {
    if (static_cast<unsigned char>(text[i]) == kSlashedO) {
      text[i] = '0';
    }
  }
  auto code = [&text](size_t i) {
    return static_cast<double>(static_cast<unsigned char>(text[i]));
  };
  double east = (code(0) - 65) * 20 - 180 + (code(2) - 48) * 2;
  double latitude = (code(1) - 65) * 10 - 90 + (code(3) - 48);
  if (text.size() == 4) {
    east += 1;
    latitude += 0.5;
  } else {
    east += (code(4) - 64.5) / 12;
    latitude += (code(5) - 64.5) / 24;
  }
  return {-east, latitude};
}

std::string PositionToLocator(double longitude, double latitude) {
  double x = (180 - longitude) / 20;
  double y = (latitude + 90) / 10;
  int i1 = static_cast<int>(x);
  int j1 = static_cast<int>(y);
  x = (x - i1) * 10;
  y = (y - j1) * 10;
  int i2 = static_cast<int>(x);
  int j2 = static_cast<int>(y);
  int i3 = static_cast<int>((x - i2) * 24);
  int j3 = static_cast<int>((y - j2) * 24);
  std::string out;
  out += static_cast<char>('A' + i1);
  out += static_cast<char>('A' + j1);
  out += static_cast<char>('0' + i2);
  out += static_cast<char>('0' + j2);
  out += static_cast<char>('A' + i3);
  out += static_cast<char>('A' + j3);
  return out;
}

BearingDistance BearingAndDistance(double longitude1, double latitude1, double longitude2,
                                   double latitude2) {
  const double l1 = Radians(longitude1), p1 = Radians(latitude1);
  const double l2 = Radians(longitude2), p2 = Radians(latitude2);
  // Rounding can push k a hair past 1 for equal points; acos would then give NaN.
  double k = std::sin(p1) * std::sin(p2) + std::cos(p1) * std::cos(p2) * std::cos(l1 - l2);
  k = std::clamp(k, -1.0, 1.0);
  BearingDistance out;
  out.kilometres = std::acos(k) * 6.378 * 1000;
  out.miles = out.kilometres / 1.609;
  double x = std::cos(p1) * std::sin(p2) - std::sin(p1) * std::cos(p2) * std::cos(l1 - l2);
  double y = std::cos(p2) * std::sin(l1 - l2);
  out.bearing = std::atan2(y, x) * 180 / kPi;
  if (out.bearing < 0) {
    out.bearing += 360;
  }
  if (out.bearing >= 360) {  // a tiny negative angle plus 360 rounds to 360
    out.bearing -= 360;
  }
  return out;
}

bool IsValidLocator(std::string_view locator) {
  if (locator.size() != 4 && locator.size() != 6) {
    return false;
  }
  if (!InRange(locator[0], 'A', 'R') || !InRange(locator[1], 'A', 'R') ||
      !std::isdigit(static_cast<unsigned char>(locator[2])) ||
      !std::isdigit(static_cast<unsigned char>(locator[3]))) {
    return false;
  }
  return locator.size() == 4 || (InRange(locator[4], 'A', 'X') && InRange(locator[5], 'A', 'X'));
}

}  // namespace tavlorin
