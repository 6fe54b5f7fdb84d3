// Source 0: a web cluster's spot page. The spots stand in a <PRE> block, one a line in fixed
// columns:
//
//   0                17 18          30                            60
//   |spotter freq    | |dx call     |comment                       |
//   "DL1ABC  14025.0   VK9XX       CW up 2                         "
//
// The first 17 characters split at their first blank into the spotter and the frequency (at
// position 9 when there is no blank). Pages link the callsigns ("<A HREF=...>VK9XX</A>") and
// escape "<", ">" and "&", so tags are dropped and entities decoded before the columns are cut:
// the columns are those of the page as a browser shows it.
#include <algorithm>
#include <cctype>

#include "spots/spot_frequency.h"
#include "spots/spot_parsers.h"

namespace tavlorin {
namespace {

// Position of `tag` in `line`, ignoring case; npos when absent.
size_t FindTag(std::string_view line, std::string_view tag) {
  auto it = std::search(line.begin(), line.end(), tag.begin(), tag.end(), [](char a, char b) {
    return std::toupper(static_cast<unsigned char>(a)) == std::toupper(static_cast<unsigned char>(b));
  });
  return it == line.end() ? std::string_view::npos : size_t(it - line.begin());
}

// The text a browser shows: tags dropped, the common entities decoded.
std::string VisibleText(std::string_view line) {
  static constexpr std::pair<std::string_view, char> kEntities[] = {
      {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&nbsp;", ' '}, {"&#39;", '\''}};
  std::string out;
  for (size_t i = 0; i < line.size(); ++i) {
    char c = line[i];
    if (c == '<') {
      size_t close = line.find('>', i);
      if (close != std::string_view::npos) {
        i = close;
        continue;
      }
    } else if (c == '&') {
      bool decoded = false;
      for (const auto& [name, value] : kEntities) {
        if (line.substr(i, name.size()) == name) {
          out += value;
          i += name.size() - 1;
          decoded = true;
          break;
        }
      }
      if (decoded) {
        continue;
      }
    }
    out += c;
  }
  return out;
}

std::string_view Column(std::string_view line, size_t start, size_t width) {
  return start < line.size() ? line.substr(start, width) : std::string_view();
}

}  // namespace

Spot ParseWebPageSpotLine(std::string_view line) {
  Spot spot;
  std::string_view head = Column(line, 0, 17);
  size_t blank = head.find(' ');
  size_t split = blank != std::string_view::npos ? blank : std::min<size_t>(9, head.size());
  spot.spotter = TrimText(head.substr(0, split));
  spot.frequency = CompleteFrequencyText(TrimText(head.substr(split)));
  spot.callsign = TrimText(Column(line, 18, 12));
  spot.comment = TrimText(Column(line, 30, 30));
  return spot;
}

SpotTable ParseWebPage(const std::vector<std::string>& lines) {
  SpotTable table;
  bool inBlock = false;
  auto addSpotLine = [&table](std::string_view text) {
    std::string visible = VisibleText(text);
    if (!TrimText(visible).empty()) {
      table.spots.push_back(ParseWebPageSpotLine(visible));
    }
  };
  for (const std::string& line : lines) {
    if (size_t h4 = FindTag(line, "<H4>"); h4 != std::string::npos) {
      std::string_view rest = std::string_view(line).substr(h4 + 4);
      table.title = std::string(rest.substr(0, rest.find('<')));
    }
    std::string_view text = line;
    if (!inBlock) {
      size_t pre = FindTag(text, "<PRE>");
      if (pre == std::string_view::npos) {
        continue;
      }
      inBlock = true;
      text.remove_prefix(pre + 5);  // text after <PRE> on its line is the first spot line
    }
    if (size_t end = FindTag(text, "</PRE>"); end != std::string_view::npos) {
      addSpotLine(text.substr(0, end));
      inBlock = false;
      continue;
    }
    addSpotLine(text);
  }
  if (size_t colon = table.title.find(':'); colon != std::string::npos) {
    table.title = table.title.substr(colon + 1);
  }
  table.title = TrimText(table.title);
  return table;
}

}  // namespace tavlorin
