#include "spots/spot_frequency.h"

#include <cctype>

namespace tavlorin {
namespace {

// The leading decimal digits of `text` as a number; nullopt when there are none.
std::optional<unsigned long> LeadingNumber(std::string_view text) {
  unsigned long value = 0;
  size_t digits = 0;
  while (digits < text.size() && std::isdigit(static_cast<unsigned char>(text[digits])) &&
         value <= 100000000000UL) {
    value = value * 10 + static_cast<unsigned long>(text[digits] - '0');
    ++digits;
  }
  if (digits == 0) {
    return std::nullopt;
  }
  return value;
}

}  // namespace

std::string CompleteFrequencyText(std::string_view khz) {
  std::string text(khz);
  if (text.empty()) {
    return text;
  }
  if (text.find('.') == std::string::npos) {
    text += ".0";
  } else if (text.back() == '.') {
    text += '0';
  }
  return text;
}

std::optional<unsigned long> WholeKilohertz(std::string_view khz) {
  size_t first = khz.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return std::nullopt;
  }
  khz.remove_prefix(first);
  return LeadingNumber(khz.substr(0, khz.find('.')));
}

std::optional<Frequency> SpotHertz(std::string_view khz) {
  std::optional<unsigned long> whole = WholeKilohertz(khz);
  if (!whole || *whole > kHighestSpotKhz) {
    return std::nullopt;
  }
  unsigned long hertz = *whole * 1000;
  if (size_t dot = khz.find('.'); dot != std::string_view::npos) {
    std::string fraction = std::string(khz.substr(dot + 1)) + "000";
    hertz += LeadingNumber(std::string_view(fraction).substr(0, 3)).value_or(0);
  }
  return static_cast<Frequency>(hertz);
}

}  // namespace tavlorin
