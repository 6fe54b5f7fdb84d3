// Source 3: the spot lines of a telnet DX cluster node, as every node software sends them:
//
//   DX de W3LPL:     14025.0  VK9XX        CW up 2                       1234Z FN20
//   DX de KM3T-#:    7003.5   DL1ABC       CW    24 dB  22 WPM  CQ      1234Z
//
// The spotter ends at the first ":"; then the frequency in kHz and the spotted callsign; the
// time is the last word of four digits and "Z", optionally followed by the spotter's locator;
// what lies between the callsign and the time is the comment. Nodes ring the terminal bell on
// spot lines, so control characters are dropped first; a spot line glued to the node's prompt
// is read from its "DX de".
#include <cctype>
#include <vector>

#include "spots/spot_frequency.h"
#include "spots/spot_parsers.h"

namespace tavlorin {
namespace {

bool IsTimeWord(std::string_view word) {
  if (word.size() != 5 || (word[4] != 'Z' && word[4] != 'z')) {
    return false;
  }
  for (size_t i = 0; i < 4; ++i) {
    if (!std::isdigit(static_cast<unsigned char>(word[i]))) {
      return false;
    }
  }
  return true;
}

// Takes the next blank-separated word off the front of `text`.
std::string_view NextWord(std::string_view& text) {
  size_t start = text.find_first_not_of(' ');
  if (start == std::string_view::npos) {
    text = {};
    return {};
  }
  text.remove_prefix(start);
  size_t end = text.find(' ');
  std::string_view word = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end);
  return word;
}

}  // namespace

std::optional<Spot> ParseDxLine(std::string_view raw) {
  std::string line;
  for (char c : raw) {
    if (c == '\t') {
      line += ' ';
    } else if (static_cast<unsigned char>(c) >= 0x20) {
      line += c;
    }
  }
  std::string_view text = line;
  size_t start = text.find_first_not_of(' ');
  if (start == std::string_view::npos) {
    return std::nullopt;
  }
  if (text.substr(start, 6) != "DX de ") {
    // A node's prompt ("DL9TST de GB7XX 22-Nov-2026 1742Z >") ends without a line end, so the
    // next spot line arrives glued to it.
    size_t prompt = text.find("> DX de ");
    prompt = prompt != std::string_view::npos ? prompt + 1 : text.find(">DX de ");
    if (prompt == std::string_view::npos) {
      return std::nullopt;
    }
    start = text.find("DX de ", prompt);
  }
  text.remove_prefix(start + 6);
  size_t colon = text.find(':');
  if (colon == std::string_view::npos) {
    return std::nullopt;
  }
  Spot spot;
  spot.spotter = TrimText(text.substr(0, colon));
  text.remove_prefix(colon + 1);
  std::string_view frequency = NextWord(text);
  spot.callsign = std::string(NextWord(text));
  if (!WholeKilohertz(frequency) || spot.callsign.empty() || spot.spotter.empty()) {
    return std::nullopt;
  }
  spot.frequency = CompleteFrequencyText(frequency);
  // The time is the last word, or the one before the locator; the comment lies before it.
  std::vector<size_t> wordStarts;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != ' ' && (i == 0 || text[i - 1] == ' ')) {
      wordStarts.push_back(i);
    }
  }
  auto wordAt = [&](size_t n) {
    std::string_view word = text.substr(wordStarts[n]);
    return word.substr(0, word.find(' '));
  };
  std::string_view rest = text;
  const size_t words = wordStarts.size();
  for (size_t back = 1; back <= 2 && back <= words; ++back) {
    if (IsTimeWord(wordAt(words - back))) {
      spot.time = std::string(wordAt(words - back));
      if (back == 2) {
        spot.locator = std::string(wordAt(words - 1));
      }
      rest = text.substr(0, wordStarts[words - back]);
      break;
    }
  }
  spot.comment = TrimText(rest);
  return spot;
}

SpotTable ParseClusterLines(const std::vector<std::string>& lines, const BandRange& range) {
  SpotTable table;
  for (const std::string& line : lines) {
    std::optional<Spot> spot = ParseDxLine(line);
    if (!spot) {
      continue;
    }
    unsigned long khz = WholeKilohertz(spot->frequency).value_or(0);
    if (khz < range.lowKhz || khz > range.highKhz) {
      continue;
    }
    table.spots.push_back(std::move(*spot));
    if (table.spots.size() >= range.count) {
      break;
    }
  }
  return table;
}

}  // namespace tavlorin
