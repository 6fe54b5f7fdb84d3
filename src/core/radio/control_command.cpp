// The value of a control put into its command text. The text comes from a file the user may
// edit, so it is never handed to printf as a format: the one number is substituted here, and a
// "%" that is not a place for it ("AG%s;", "AG0%n", "100%") refuses the whole text.
#include <cstdio>

#include "radio/radio_controls.h"

namespace tavlorin {
namespace {

constexpr int kMaxWidth = 11;  // the widest field a CAT command has (Kenwood frequencies)

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::optional<std::string> FormatControlCommand(std::string_view text, uint32_t value) {
  std::string out;
  out.reserve(text.size() + kMaxWidth);
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      out += text[i];
      continue;
    }
    // %[0][width](u|d|x|X), or %c
    size_t j = i + 1;
    const bool zeros = j < text.size() && text[j] == '0';
    if (zeros) {
      ++j;
    }
    int width = 0;
    while (j < text.size() && IsDigit(text[j])) {
      width = width * 10 + (text[j] - '0');
      if (width > kMaxWidth) {
        return std::nullopt;
      }
      ++j;
    }
    if (j >= text.size()) {
      return std::nullopt;
    }
    char digits[16];
    const int v = static_cast<int32_t>(value);
    switch (text[j]) {
      case 'u':
        std::snprintf(digits, sizeof digits, zeros ? "%0*u" : "%*u", width, value);
        break;
      case 'd':
        std::snprintf(digits, sizeof digits, zeros ? "%0*d" : "%*d", width, v);
        break;
      case 'x':
        std::snprintf(digits, sizeof digits, zeros ? "%0*x" : "%*x", width, value);
        break;
      case 'X':
        std::snprintf(digits, sizeof digits, zeros ? "%0*X" : "%*X", width, value);
        break;
      case 'c':
        // One printable character (the Orion's AGC letters): nothing that could end a command.
        if (zeros || width != 0 || value < 0x21 || value > 0x7E) {
          return std::nullopt;
        }
        digits[0] = static_cast<char>(value);
        digits[1] = '\0';
        break;
      default:
        return std::nullopt;
    }
    out += digits;
    i = j;
  }
  return out;
}

}  // namespace tavlorin
