// The text helpers under the ADIF readers (UTF-8 checks, character counts, Windows-1252) and
// the ExtraFields text, which the user may also edit by hand.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "logbook/adif_extra_fields.h"
#include "logbook/adif_text.h"

namespace tavlorin {
namespace {

TEST(AdifTextTest, Utf8Checks) {
  const std::pair<std::string, bool> cases[] = {
      {"plain", true},
      {"J\xC3\xB6rg", true},
      {"\xE2\x82\xAC", true},          // the euro sign
      {"\xF0\x9F\x93\xBB", true},      // four bytes
      {"\xC3", false},                 // cut short
      {"\xC0\xAF", false},             // overlong "/"
      {"\xE0\x80\xAF", false},         // overlong in three bytes
      {"\xED\xA0\x80", false},         // a surrogate
      {"\xF4\x90\x80\x80", false},     // beyond U+10FFFF
      {"Fr\xE9" "d\xE9ric", false},    // Latin-1
      {"\x80", false},
  };
  for (const auto& [text, valid] : cases) {
    EXPECT_EQ(IsValidUtf8(text), valid) << text;
  }
  EXPECT_EQ(Utf8PrefixBytes("J\xC3\xB6rg!", 4), 5u);
  EXPECT_EQ(Utf8PrefixBytes("J\xC3\xB6rg", 5), std::string::npos);  // runs out
  EXPECT_EQ(Utf8PrefixBytes("J\xF6rg", 3), std::string::npos);      // not UTF-8
  EXPECT_EQ(Utf8Length("J\xC3\xB6rg \xE2\x82\xAC"), 6u);
}

TEST(AdifTextTest, Windows1252BecomesUtf8) {
  std::string out;
  AppendWindows1252AsUtf8("a\xE9\x80\x9F\x81\xFF", &out);
  EXPECT_EQ(out, "a\xC3\xA9\xE2\x82\xAC\xC5\xB8\xC2\x81\xC3\xBF");
  EXPECT_TRUE(IsValidUtf8(out));
}

TEST(AdifExtraFieldsTest, AppendAndReadBack) {
  std::string extras;
  AppendExtraField(&extras, "SUBMODE", "", "USB");
  AppendExtraField(&extras, "App_X_Note", "S", "a <b> c");
  AppendExtraField(&extras, "empty", "", "");
  EXPECT_EQ(extras, "<submode:3>USB <app_x_note:7:s>a <b> c");
  std::vector<std::string> seen;
  ForEachExtraField(extras, [&](std::string_view n, std::string_view t, std::string_view v) {
    seen.push_back(std::string(n) + "|" + std::string(t) + "|" + std::string(v));
  });
  EXPECT_EQ(seen, (std::vector<std::string>{"submode||USB", "app_x_note|s|a <b> c"}));
  EXPECT_EQ(FindExtraField(extras, "app_x_note"), "a <b> c");
  EXPECT_EQ(FindExtraField(extras, "mode"), "");
}

TEST(AdifExtraFieldsTest, HandEditedTextKeepsWhatCanBeRead) {
  std::vector<std::string> names;
  ForEachExtraField("junk <a:1>x <b:99>short <c:x>y <:1>z <d:2>ok",
                    [&](std::string_view n, std::string_view, std::string_view v) {
                      names.push_back(std::string(n) + "=" + std::string(v));
                    });
  EXPECT_EQ(names, (std::vector<std::string>{"a=x", "d=ok"}));
}

}  // namespace
}  // namespace tavlorin
