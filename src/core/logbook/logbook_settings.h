// The settings keys of the logbook, with their defaults, in one place.
#pragma once

#include "shell/settings.h"

namespace tavlorin {

// Full path of the logbook file; empty means the default "TVR Logbook.sqlite" in DataDir().
inline constexpr TextSetting kLogbookDatabase{"LogbookDatabase", ""};
// Version of the built-in country data that TBL_COUNTRIES holds.
inline constexpr IntSetting kCountryLevel{"CDefineDatabase::COUNTRY_LEVEL", 0};
inline constexpr int kCurrentCountryLevel = 3;
// Whether database errors are shown to the user.
inline constexpr FlagSetting kLogbookShowErrors{"LogbookShowErrors", true};
// The logbook's time-zone choice, read by the entry dialog.
inline constexpr FlagSetting kLogbookTimeZone{"LogbookTimeZone", false};

inline constexpr const char* kDefaultLogbookFileName = "TVR Logbook.sqlite";
inline constexpr const char* kCountriesFileName = "TVR Countries.txt";

}  // namespace tavlorin
