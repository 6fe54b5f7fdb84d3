#include "logbook/adif_text.h"

#include <cstdint>

namespace tavlorin {
namespace {

// Unicode code points of Windows-1252's bytes 0x80 to 0x9F.
constexpr uint16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// Length of the well-formed UTF-8 sequence at `text[i]`, or 0 when there is none.
size_t SequenceAt(std::string_view text, size_t i) {
  const auto byte = [&](size_t k) { return static_cast<unsigned char>(text[k]); };
  const unsigned char lead = byte(i);
  if (lead < 0x80) {
    return 1;
  }
  size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;  // the allowed range of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    low = lead == 0xE0 ? 0xA0 : 0x80;   // no overlong forms
    high = lead == 0xED ? 0x9F : 0xBF;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    low = lead == 0xF0 ? 0x90 : 0x80;
    high = lead == 0xF4 ? 0x8F : 0xBF;
  } else {
    return 0;
  }
  if (i + length > text.size() || byte(i + 1) < low || byte(i + 1) > high) {
    return 0;
  }
  for (size_t k = 2; k < length; ++k) {
    if ((byte(i + k) & 0xC0) != 0x80) {
      return 0;
    }
  }
  return length;
}

void AppendCodePoint(uint32_t cp, std::string* out) {
  if (cp < 0x80) {
    out->push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out->push_back(static_cast<char>(0xC0 | (cp >> 6)));
    out->push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out->push_back(static_cast<char>(0xE0 | (cp >> 12)));
    out->push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

}  // namespace

bool IsAscii(std::string_view text) {
  for (char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) {
      return false;
    }
  }
  return true;
}

bool IsValidUtf8(std::string_view text) {
  for (size_t i = 0; i < text.size();) {
    const size_t n = SequenceAt(text, i);
    if (n == 0) {
      return false;
    }
    i += n;
  }
  return true;
}

size_t Utf8PrefixBytes(std::string_view text, size_t characters) {
  size_t i = 0;
  for (size_t n = 0; n < characters; ++n) {
    if (i >= text.size()) {
      return std::string_view::npos;
    }
    const size_t length = SequenceAt(text, i);
    if (length == 0) {
      return std::string_view::npos;
    }
    i += length;
  }
  return i;
}

size_t Utf8Length(std::string_view text) {
  size_t count = 0;
  for (char c : text) {
    count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
  }
  return count;
}

void AppendWindows1252AsUtf8(std::string_view text, std::string* out) {
  for (char c : text) {
    const auto b = static_cast<unsigned char>(c);
    if (b < 0x80) {
      out->push_back(c);
    } else {
      AppendCodePoint(b < 0xA0 ? kCp1252High[b - 0x80] : b, out);
    }
  }
}

void LowerAscii(std::string* text) {
  for (char& c : *text) {
    c = Lower(c);
  }
}

std::string LowerAscii(std::string_view text) {
  std::string out(text);
  LowerAscii(&out);
  return out;
}

std::string UpperAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    c = Upper(c);
  }
  return out;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) {
    return false;
  }
  for (size_t i = 0; i < a.size(); ++i) {
    if (Lower(a[i]) != Lower(b[i])) {
      return false;
    }
  }
  return true;
}

std::string_view TrimBlanks(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && blank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && blank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace tavlorin
