// Building the web page of the web page update: a copy of the user's template with the five
// tokens replaced by the radio window's current values, written as "TVR Web Page Update.htm".
//
//   "###-frequency-###"  the frequency in MHz as displayed ("14.070.000")
//   "###-mode-###"       the mode
//   "###-radio-###"      the radio model
//   "###-image-###"      the image value the caller hands in
//   "###-timestamp-###"  local date and time, "%d-%b-%Y %H:%M:%S" ("22-Nov-2026 10:00:00")
//
// Each token is replaced everywhere in every line, in that order; the line ends of the
// template are kept, so a template without tokens is copied byte for byte.
// Pure functions apart from BuildWebPage's file reading and writing; any thread (not a window's:
// it touches files).
#pragma once

#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>

#include "shell/status.h"

namespace tavlorin {

inline constexpr const char* kBuiltPageName = "TVR Web Page Update.htm";
inline constexpr const char* kCheckSuffix = "_check";

struct WebPageValues {
  std::string frequency;
  std::string mode;
  std::string radio;
  std::string image;
};

std::string WebPageTimestamp(std::time_t when);
std::string ReplaceTokens(std::string_view line, const WebPageValues& values,
                          const std::string& timestamp);

// Reads the template, replaces the tokens with one time stamp taken from `now`, and writes the
// page into `folder` as kBuiltPageName. Errors read "Error creating webpage: REASON".
Status BuildWebPage(const std::filesystem::path& templatePath, const WebPageValues& values,
                    std::time_t now, const std::filesystem::path& folder,
                    std::filesystem::path* built);

}  // namespace tavlorin
