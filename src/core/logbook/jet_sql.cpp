#include "logbook/jet_sql.h"

#include <cctype>
#include <cstdio>

#include "logbook/ole_date.h"

namespace tavlorin {
namespace {

bool IsWordChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// True when `word` (capitals) stands at `pos` as a whole word, case-insensitively.
bool WordAt(std::string_view text, size_t pos, std::string_view word) {
  if (pos + word.size() > text.size() || (pos > 0 && IsWordChar(text[pos - 1]))) {
    return false;
  }
  for (size_t i = 0; i < word.size(); ++i) {
    if (std::toupper(static_cast<unsigned char>(text[pos + i])) != word[i]) {
      return false;
    }
  }
  size_t end = pos + word.size();
  return end == text.size() || !IsWordChar(text[end]);
}

size_t SkipSpace(std::string_view text, size_t pos) {
  while (pos < text.size() && std::isspace(static_cast<unsigned char>(text[pos]))) {
    ++pos;
  }
  return pos;
}

// At `pos`, "TOP n": the digits and the position after them.
bool ReadTop(std::string_view text, size_t pos, std::string* digits, size_t* after) {
  if (!WordAt(text, pos, "TOP")) {
    return false;
  }
  size_t p = SkipSpace(text, pos + 3);
  size_t start = p;
  while (p < text.size() && std::isdigit(static_cast<unsigned char>(text[p]))) {
    ++p;
  }
  if (p == start) {
    return false;
  }
  *digits = std::string(text.substr(start, p - start));
  *after = p;
  return true;
}

// The closing quote of the text literal opening at `open` ('' is a quote inside it), or npos.
size_t QuoteEnd(std::string_view text, size_t open) {
  for (size_t end = open + 1; end < text.size(); ++end) {
    if (text[end] == '\'') {
      if (end + 1 < text.size() && text[end + 1] == '\'') {
        ++end;
        continue;
      }
      return end;
    }
  }
  return std::string_view::npos;
}

}  // namespace

Status TranslateJetSql(std::string_view jet, std::string* sqlite) {
  std::string out;
  out.reserve(jet.size() + 16);
  std::string limit;
  for (size_t i = 0; i < jet.size();) {
    char c = jet[i];
    if (c == '\'') {
      size_t end = QuoteEnd(jet, i);
      if (end == std::string_view::npos) {
        return Status::Error("Unterminated text in SQL: " + std::string(jet));
      }
      out.append(jet.substr(i, end + 1 - i));
      i = end + 1;
    } else if (c == '[') {
      size_t end = jet.find(']', i);
      if (end == std::string_view::npos) {
        return Status::Error("Unterminated name in SQL: " + std::string(jet));
      }
      out += '"';
      out.append(jet.substr(i + 1, end - i - 1));
      out += '"';
      i = end + 1;
    } else if (c == '#') {
      size_t end = jet.find('#', i + 1);
      auto date = end == std::string_view::npos ? std::nullopt
                                                : ParseOleDate(jet.substr(i + 1, end - i - 1));
      if (!date) {
        return Status::Error("Unreadable date in SQL: " + std::string(jet));
      }
      char number[48];
      std::snprintf(number, sizeof number, "%.10f", *date);
      out += number;
      i = end + 1;
    } else if (WordAt(jet, i, "SELECT")) {
      out.append(jet.substr(i, 6));
      i += 6;
      size_t p = SkipSpace(jet, i);
      const bool distinct = WordAt(jet, p, "DISTINCT");
      size_t topAt = distinct ? SkipSpace(jet, p + 8) : p;
      std::string digits;
      size_t after = 0;
      if (limit.empty() && ReadTop(jet, topAt, &digits, &after)) {
        out += distinct ? " DISTINCT" : "";
        limit = digits;
        i = after;
      }
    } else {
      out += c;
      ++i;
    }
  }
  if (!limit.empty()) {
    while (!out.empty() &&
           (out.back() == ';' || std::isspace(static_cast<unsigned char>(out.back())))) {
      out.pop_back();
    }
    out += " LIMIT " + limit;
  }
  *sqlite = std::move(out);
  return Status::Ok();
}

}  // namespace tavlorin
