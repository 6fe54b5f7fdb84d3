// FetchResult: what the background fetcher hands back to the DX cluster window, and the two
// progress codes of that hand-over.
//
// Code 10 says a fetch is under way (the window's status pane shows "<->"); code 11 says it has
// finished (the pane shows "DX " and the result goes to the parser of its source). A plain
// value, moved from the fetch thread to the window's thread.
#pragma once

#include <optional>
#include <string>

#include "spots/spot_choices.h"

namespace tavlorin {

inline constexpr int kFetchUnderWay = 10;
inline constexpr int kFetchFinished = 11;
inline constexpr const char* kStatusFetching = "<->";
inline constexpr const char* kStatusShowing = "DX ";

struct FetchResult {
  SpotSource source = SpotSource::kWebPages;
  bool ok = false;
  std::string error;  // for the window's message line when !ok
  std::string body;
  // The band range asked for (log file and telnet sources).
  std::optional<BandRange> range;
};

}  // namespace tavlorin
