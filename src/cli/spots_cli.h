// Pieces shared by the DX spot commands of tavlorin-cli (spots, spot, webpage).
#pragma once

#include <cstdint>
#include <string>

#include "spots/spot.h"

namespace tavlorin::cli {

// One spot as a tab-separated line (frequency, callsign, spotter or time, comment, country),
// or with --json as one JSON object with every field.
void PrintSpot(const Spot& spot, bool json);

// "host" or "host:port" (port 1..65535); *port keeps its value when none is given.
bool SplitHostPort(const std::string& text, std::string* host, uint16_t* port);

// The first line of a file (a password file), without its line end; false when unreadable.
bool ReadFirstLine(const std::string& path, std::string* line);

}  // namespace tavlorin::cli
