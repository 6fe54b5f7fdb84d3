// Building the activity web page from a template, and the dialog's validation.
#include "interfaces/webpage_builder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "interfaces/webpage_settings.h"
#include "support/temp_dir.h"

namespace tavlorin {
namespace {

const WebPageValues kValues{"14.070.000", "PSK", "IC-7300", "band.png"};

TEST(WebPageBuilder, TokensAreReplacedEverywhereInEveryLine) {
  const std::string stamp = "22-Nov-2026 10:00:00";
  struct Case {
    const char* line;
    const char* built;
  } cases[] = {
      {"<b>###-frequency-###</b> and ###-frequency-###", "<b>14.070.000</b> and 14.070.000"},
      {"###-mode-######-radio-###", "PSKIC-7300"},
      {"<img src=\"###-image-###\"> at ###-timestamp-###",
       "<img src=\"band.png\"> at 22-Nov-2026 10:00:00"},
      {"no tokens, ###-unknown-### ##-mode-##", "no tokens, ###-unknown-### ##-mode-##"},
      {"###-MODE-###", "###-MODE-###"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ReplaceTokens(c.line, kValues, stamp), c.built);
  }
  // A value that looks like a token is not taken for one.
  WebPageValues odd{"###-mode-###", "###-mode-###", "", ""};
  EXPECT_EQ(ReplaceTokens("###-frequency-### ###-mode-###", odd, stamp),
            "###-mode-### ###-mode-###");
}

TEST(WebPageBuilder, TheTimestampIsLocalTimeInTheDialogsForm) {
  const char* saved = std::getenv("TZ");
  std::string before = saved != nullptr ? saved : "";
  setenv("TZ", "UTC", 1);
  tzset();
  EXPECT_EQ(WebPageTimestamp(1795341600), "22-Nov-2026 10:00:00");
  EXPECT_EQ(WebPageTimestamp(0), "01-Jan-1970 00:00:00");
  setenv("TZ", "CET-1", 1);  // POSIX form: needs no time-zone files
  tzset();
  EXPECT_EQ(WebPageTimestamp(1795341600), "22-Nov-2026 11:00:00");
  if (saved != nullptr) {
    setenv("TZ", before.c_str(), 1);
  } else {
    unsetenv("TZ");
  }
  tzset();
}

TEST(WebPageBuilder, BuildKeepsTheTemplatesBytesAndSaysWhatWentWrong) {
  testing::TempDir dir;
  std::filesystem::path built;
  const std::string plain = "<html>\r\n<p>no tokens</p>\r\n</html>";  // no final line end
  ASSERT_TRUE(BuildWebPage(dir.Write("plain.htm", plain), kValues, 0, dir.path(), &built).ok());
  EXPECT_EQ(built, dir / "TVR Web Page Update.htm");
  EXPECT_EQ(testing::TempDir::Read(built), plain);

  ASSERT_TRUE(BuildWebPage(dir.Write("t.htm", "a ###-radio-###\r\n###-mode-###\n"), kValues, 0,
                           dir.path(), &built)
                  .ok());
  EXPECT_EQ(testing::TempDir::Read(built), "a IC-7300\r\nPSK\n");

  Status missing = BuildWebPage(dir / "gone.htm", kValues, 0, dir.path(), &built);
  EXPECT_EQ(missing.message(),
            "Error creating webpage: cannot read " + (dir / "gone.htm").string() +
                ": No such file or directory");
  Status unwritable = BuildWebPage(dir / "t.htm", kValues, 0, dir / "no-such-folder", &built);
  EXPECT_EQ(unwritable.message().rfind("Error creating webpage: cannot write ", 0), 0u);
}

TEST(WebPageSettings, ValidationNamesWhatIsMissing) {
  struct Case {
    const char* host;
    const char* user;
    const char* password;
    const char* message;
  } cases[] = {
      {"", "u", "p", "The host name is required."},
      {"ftp.example", "", "p", "A value is required for all fields."},
      {"ftp.example", "u", "", "A value is required for all fields."},
      {"ftp.example", "u", "p", ""},
      {"local", "", "", ""},
  };
  for (const Case& c : cases) {
    WebPageConfig config;
    config.host = c.host;
    config.user = c.user;
    config.password = c.password;
    EXPECT_EQ(ValidateWebPageConfig(config), c.message) << c.host << "/" << c.user;
  }
}

TEST(WebPageSettings, EveryValueComesBackFromTheSettingsFile) {
  testing::TempDir dir;
  WebPageConfig config{"/home/op/page.htm", "ftp.example:2121", "www", "op", "pa:ss;word", true, 7};
  {
    Settings settings(dir / "tavlorin.ini");
    ASSERT_TRUE(config.Save(settings).ok());
  }
  Settings reread(dir / "tavlorin.ini");
  WebPageConfig back = WebPageConfig::Load(reread);
  EXPECT_EQ(back.templatePath, config.templatePath);
  EXPECT_EQ(back.host, config.host);
  EXPECT_EQ(back.directory, config.directory);
  EXPECT_EQ(back.user, config.user);
  EXPECT_EQ(back.password, config.password);
  EXPECT_TRUE(back.autoOn);
  EXPECT_EQ(back.updateMinutes, 7);
  // The file holding the password is its owner's alone, like every setting.
  auto perms = std::filesystem::status(dir / "tavlorin.ini").permissions();
  EXPECT_EQ(perms & (std::filesystem::perms::group_all | std::filesystem::perms::others_all),
            std::filesystem::perms::none);
}

}  // namespace
}  // namespace tavlorin
