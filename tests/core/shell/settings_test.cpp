#include "shell/settings.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "shell/paths.h"

namespace tavlorin {
namespace {

namespace fs = std::filesystem;

constexpr IntSetting kInterval{"m_nRefreshRadioInterval", 300};
constexpr FlagSetting kAutoConnect{"CConnectDlg::m_bAutoConnect", false};
constexpr TextSetting kDatabase{"LogbookDatabase", ""};
constexpr TextSetting kPort{"CConnectDlg::m_strPort", "/dev/ttyUSB0"};

class SettingsTest : public ::testing::Test {
 protected:
  fs::path file_ = ConfigDir() / ::testing::UnitTest::GetInstance()->current_test_info()->name();

  std::string FileText() const {
    std::ifstream in(file_);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  }
};

TEST_F(SettingsTest, AbsentKeysGiveTheirDefaults) {
  Settings s(file_);
  EXPECT_TRUE(s.loadStatus().ok());
  EXPECT_EQ(s.Get(kInterval), 300);
  EXPECT_FALSE(s.Get(kAutoConnect));
  EXPECT_EQ(s.Get(kPort), "/dev/ttyUSB0");
  EXPECT_TRUE(s.GetList("CConnectDlg::m_astrPresets").empty());
  EXPECT_FALSE(fs::exists(file_)) << "reading writes nothing";
}

TEST_F(SettingsTest, EveryChangeIsOnDiskAtOnce) {
  {
    Settings s(file_);
    ASSERT_TRUE(s.Set(kInterval, 150).ok());
    ASSERT_TRUE(s.Set(kAutoConnect, true).ok());
    ASSERT_TRUE(s.Set(kDatabase, "/home/op/My Log=1; \"best\"\nsecond line").ok());
    ASSERT_TRUE(s.SetList("CConnectDlg::m_astrPresets", {"IC-7300; USB", "K2\\4800", ""}).ok());
  }
  Settings again(file_);
  EXPECT_EQ(again.Get(kInterval), 150);
  EXPECT_TRUE(again.Get(kAutoConnect));
  EXPECT_EQ(again.Get(kDatabase), "/home/op/My Log=1; \"best\"\nsecond line");
  EXPECT_EQ(again.GetList("CConnectDlg::m_astrPresets"),
            (std::vector<std::string>{"IC-7300; USB", "K2\\4800", ""}));
  EXPECT_FALSE(fs::exists(file_.string() + ".tmp")) << "no temporary file is left behind";
  EXPECT_NE(FileText().find("m_nRefreshRadioInterval=150\n"), std::string::npos);
}

TEST_F(SettingsTest, ValuesThatDoNotParseFallBackToTheDefault) {
  std::ofstream(file_) << "m_nRefreshRadioInterval=fast\n"
                       << "CConnectDlg::m_bAutoConnect=perhaps\n"
                       << "garbage line without equals\n"
                       << "[Section headers are ignored]\n"
                       << "LogbookDatabase=/tmp/a.sqlite\r\n";
  Settings s(file_);
  EXPECT_FALSE(s.loadStatus().ok()) << "the bad line is reported";
  EXPECT_EQ(s.Get(kInterval), 300);
  EXPECT_FALSE(s.Get(kAutoConnect));
  EXPECT_EQ(s.Get(kDatabase), "/tmp/a.sqlite") << "CR LF files read too";
}

TEST_F(SettingsTest, RemoveBringsTheDefaultBack) {
  Settings s(file_);
  ASSERT_TRUE(s.Set(kInterval, 1000).ok());
  ASSERT_TRUE(s.Remove(kInterval.key).ok());
  EXPECT_EQ(Settings(file_).Get(kInterval), 300);
}

TEST_F(SettingsTest, AnUnwritableFolderGivesAMessageAndKeepsTheValueInMemory) {
  Settings s("/proc/tavlorin-cannot-write-here/settings.ini");
  Status st = s.Set(kInterval, 50);
  EXPECT_FALSE(st.ok());
  EXPECT_NE(st.message().find("Cannot write settings file"), std::string::npos) << st.message();
  EXPECT_EQ(s.Get(kInterval), 50);
}

TEST_F(SettingsTest, KeysWithEqualsOrNewLinesAreRefused) {
  Settings s(file_);
  EXPECT_FALSE(s.Set(TextSetting{"a=b", ""}, "x").ok());
  EXPECT_FALSE(s.Set(TextSetting{"a\nb", ""}, "x").ok());
}

}  // namespace
}  // namespace tavlorin
