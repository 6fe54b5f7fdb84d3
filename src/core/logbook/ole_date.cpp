#include "logbook/ole_date.h"

#include <cmath>
#include <cstdio>

namespace tavlorin {
namespace {

// Days since 1970-01-01 of a proleptic Gregorian date (H. Hinnant's days_from_civil).
long long DaysFromCivil(long long y, unsigned m, unsigned d) {
  y -= m <= 2;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long long>(doe) - 719468;
}

void CivilFromDays(long long z, int* year, int* month, int* day) {
  z += 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long y = static_cast<long long>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  *day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  *month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  *year = static_cast<int>(y + (*month <= 2));
}

bool DigitsAt(std::string_view text, size_t pos, size_t count, int* value) {
  if (pos + count > text.size()) {
    return false;
  }
  int v = 0;
  for (size_t i = pos; i < pos + count; ++i) {
    if (text[i] < '0' || text[i] > '9') {
      return false;
    }
    v = v * 10 + (text[i] - '0');
  }
  *value = v;
  return true;
}

// Reads "HH:MM" or "HH:MM:SS" at `pos` up to the end (a trailing "Z" allowed).
bool ParseTime(std::string_view text, size_t pos, int* h, int* mi, int* s) {
  if (!text.empty() && text.back() == 'Z') {
    text.remove_suffix(1);
  }
  *s = 0;
  if (!DigitsAt(text, pos, 2, h) || pos + 2 >= text.size() || text[pos + 2] != ':' ||
      !DigitsAt(text, pos + 3, 2, mi)) {
    return false;
  }
  size_t end = pos + 5;
  if (end < text.size()) {
    if (text[end] != ':' || !DigitsAt(text, end + 1, 2, s)) {
      return false;
    }
    end += 3;
  }
  return end == text.size() && *h < 24 && *mi < 60 && *s < 61;
}

bool ValidDate(int y, int m, int d) {
  if (m < 1 || m > 12 || d < 1) {
    return false;
  }
  static constexpr int kDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
  int limit = m == 2 && !leap ? 28 : kDays[m - 1];
  return d <= limit;
}

}  // namespace

OleDate OleDateFromUnixSeconds(double seconds) { return seconds / 86400.0 + kOleDateUnixEpoch; }

double UnixSecondsFromOleDate(OleDate date) { return (date - kOleDateUnixEpoch) * 86400.0; }

OleDate OleDateNow() {
  using namespace std::chrono;
  auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
  return OleDateFromUnixSeconds(static_cast<double>(now) / 1000.0);
}

OleDate OleDateFromCivil(int year, int month, int day, int hour, int minute, double second) {
  long long days = DaysFromCivil(year, static_cast<unsigned>(month), static_cast<unsigned>(day));
  return static_cast<double>(days) + kOleDateUnixEpoch +
         (hour * 3600.0 + minute * 60.0 + second) / 86400.0;
}

std::optional<OleDate> ParseOleDate(std::string_view text) {
  int y = 0, m = 0, d = 0, h = 0, mi = 0, s = 0;
  size_t timeAt = std::string_view::npos;
  if (text.size() >= 10 && text[4] == '-' && text[7] == '-' && DigitsAt(text, 0, 4, &y) &&
      DigitsAt(text, 5, 2, &m) && DigitsAt(text, 8, 2, &d)) {
    timeAt = 10;
  } else if (text.size() >= 10 && text[2] == '/' && text[5] == '/' && DigitsAt(text, 0, 2, &m) &&
             DigitsAt(text, 3, 2, &d) && DigitsAt(text, 6, 4, &y)) {
    timeAt = 10;
  } else if (text.size() == 8 && DigitsAt(text, 0, 4, &y) && DigitsAt(text, 4, 2, &m) &&
             DigitsAt(text, 6, 2, &d)) {
    timeAt = 8;
  } else {
    return std::nullopt;
  }
  if (!ValidDate(y, m, d)) {
    return std::nullopt;
  }
  if (timeAt < text.size()) {
    if ((text[timeAt] != ' ' && text[timeAt] != 'T') || !ParseTime(text, timeAt + 1, &h, &mi, &s)) {
      return std::nullopt;
    }
  }
  return OleDateFromCivil(y, m, d, h, mi, s);
}

OleDateParts SplitOleDate(OleDate date) {
  double seconds = std::round((date - kOleDateUnixEpoch) * 86400.0);
  long long total = static_cast<long long>(seconds);
  long long days = total >= 0 ? total / 86400 : -((-total + 86399) / 86400);
  long long rest = total - days * 86400;
  OleDateParts p{};
  CivilFromDays(days, &p.year, &p.month, &p.day);
  p.hour = static_cast<int>(rest / 3600);
  p.minute = static_cast<int>(rest / 60 % 60);
  p.second = static_cast<int>(rest % 60);
  return p;
}

std::string FormatOleDate(OleDate date) {
  const OleDateParts p = SplitOleDate(date);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", p.year, p.month, p.day,
                p.hour, p.minute, p.second);
  return text;
}

}  // namespace tavlorin
