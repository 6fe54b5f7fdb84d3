// Text forms shared by the tavlorin-cli commands that print tables: JSON strings and
// tab-separated columns. Pure functions.
#pragma once

#include <string>

namespace tavlorin::cli {

// The text as a JSON string, quotes included.
std::string JsonText(const std::string& text);
// Tabs and line ends inside a value would break the columns: they become blanks.
std::string TabSafe(std::string text);

}  // namespace tavlorin::cli
