#include "radio/frequency.h"

#include <cstdio>

namespace tavlorin {
namespace {

std::string InsertDots(std::string text) {
  if (text.size() > 3) {
    text.insert(text.size() - 3, ".");
  }
  if (text.size() >= 8) {
    text.insert(text.size() - 7, ".");
  }
  return text;
}

}  // namespace

std::string FormatFrequency(Frequency hz) { return InsertDots(std::to_string(hz)); }

std::string FormatFrequency(double hz) {
  char text[64];
  std::snprintf(text, sizeof text, "%f", hz);
  std::string s = text;
  if (size_t dot = s.find('.'); dot != std::string::npos) {
    s.erase(dot);
  }
  return InsertDots(s);
}

}  // namespace tavlorin
