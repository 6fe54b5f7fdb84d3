// Spot and SpotTable: one DX spot as the DX cluster window lists it, and a parsed spot list.
//
// Every text is as the source gave it, trimmed; the frequency is kHz text completed to carry a
// decimal ("14025" and "14025." become "14025.0"). Plain values; any thread.
#pragma once

#include <string>
#include <vector>

namespace tavlorin {

struct Spot {
  std::string frequency;  // kHz, as shown: "14025.0"
  std::string callsign;   // the spotted station
  std::string spotter;    // who spotted it, when the source says
  std::string time;       // "HH:MM", "1234Z" or the source's own form
  std::string comment;
  std::string locator;    // the spotter's locator, when the source gives one
  std::string country;    // filled by the list when country look-up is on

  bool operator==(const Spot&) const = default;
};

// The comment column: "country: comment" when the country is known, else the comment.
std::string DisplayComment(const Spot& spot);

struct SpotTable {
  std::string title;  // the page heading or the file's header line
  std::vector<Spot> spots;
  // Lines the source could not place (a log file line without a readable frequency); they are
  // counted so the user hears of them, never silently lost.
  int unreadable = 0;
};

}  // namespace tavlorin
