// Text helpers of the ADIF readers and writers: UTF-8 checks, counting characters, and turning
// Windows-1252 (Latin-1) bytes into UTF-8.
//
// Files written by other loggers come in UTF-8 (lengths counted in bytes or in characters) or
// in Windows-1252; the logbook stores UTF-8. Pure functions; any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavlorin {

// True when every byte is below 0x80.
bool IsAscii(std::string_view text);

// True when `text` is well-formed UTF-8 (no overlong forms, no surrogates).
bool IsValidUtf8(std::string_view text);

// The number of bytes that the first `characters` UTF-8 characters of `text` take, or
// std::string_view::npos when `text` ends first or is not UTF-8 on the way.
size_t Utf8PrefixBytes(std::string_view text, size_t characters);

// The number of UTF-8 characters in `text` (a byte that starts no sequence counts as one).
size_t Utf8Length(std::string_view text);

// Appends `text`, read as Windows-1252, to `out` as UTF-8. The five bytes that Windows-1252
// leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the C1 control of the same number, as
// Latin-1 has them, so no byte is lost.
void AppendWindows1252AsUtf8(std::string_view text, std::string* out);

// ASCII letters to small letters, in place.
void LowerAscii(std::string* text);
std::string LowerAscii(std::string_view text);
std::string UpperAscii(std::string_view text);

// Equal ignoring the case of ASCII letters.
bool EqualsIgnoreCase(std::string_view a, std::string_view b);

// `text` without blanks, tabs and line ends at either end.
std::string_view TrimBlanks(std::string_view text);

}  // namespace tavlorin
