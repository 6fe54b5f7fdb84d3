// Logbook dates: a date and time as a double counting days since 30 December 1899 (the
// fraction is the time of day), the form every Date field of the logbook file stores.
//
// Pure functions; any thread. Times are UTC throughout the logbook.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace tavlorin {

using OleDate = double;

// Days from 30 December 1899 to 1 January 1970.
inline constexpr double kOleDateUnixEpoch = 25569.0;

OleDate OleDateFromUnixSeconds(double seconds);
double UnixSecondsFromOleDate(OleDate date);
OleDate OleDateNow();

// A civil UTC date and time to the day count. REQUIRES: month 1-12, day 1-31.
OleDate OleDateFromCivil(int year, int month, int day, int hour = 0, int minute = 0,
                         double second = 0);

// Reads "YYYY-MM-DD", "YYYY-MM-DD HH:MM", "YYYY-MM-DD HH:MM:SS" (also with "T" and a trailing
// "Z"), "YYYYMMDD" and "MM/DD/YYYY" with an optional time. nullopt for anything else.
std::optional<OleDate> ParseOleDate(std::string_view text);

// "YYYY-MM-DD HH:MM:SS", rounded to the second.
std::string FormatOleDate(OleDate date);

// The civil date and time of `date`, rounded to the second (the parts FormatOleDate writes).
struct OleDateParts {
  int year, month, day, hour, minute, second;
};
OleDateParts SplitOleDate(OleDate date);

}  // namespace tavlorin
