// Uploading the activity web page: into a local directory, and by FTP to a real server
// (Debian's pyftpdlib) that can change what it received so that the check fails.
#include "interfaces/webpage_upload.h"

#include <gtest/gtest.h>

#include <future>
#include <mutex>
#include <thread>

#include "interfaces/webpage_update.h"
#include "support/fake_clock.h"
#include "support/log_capture.h"
#include "support/python_server.h"
#include "support/temp_dir.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* kPassword = "pw-Xq7s3cret";

class WebPageUploadTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(root_ / "www");
    page_ = dir_.Write("TVR Web Page Update.htm", "<p>14.070.000</p>\r\n<p>CW</p>\r\n");
    options_.clock = &clock_;
  }

  testing::PythonServer Ftp(int alterUploads) {
    return testing::PythonServer("ftp_server.py", {root_.string(), "op", kPassword,
                                                   "--alter-uploads", std::to_string(alterUploads)});
  }
  WebPageConfig FtpConfig(const testing::PythonServer& server) const {
    WebPageConfig config;
    config.host = server.address();
    config.directory = "www";
    config.user = "op";
    config.password = kPassword;
    return config;
  }
  Status Upload(const WebPageConfig& config) {
    return UploadWebPage(page_, "index.htm", config, "22-Nov-2026 10:00:00",
                         [this](const std::string& line) { log_.push_back(line); }, options_);
  }
  size_t Logged(const std::string& line) const {
    return std::count(log_.begin(), log_.end(), line);
  }

  testing::TempDir dir_;
  std::filesystem::path root_ = dir_ / "ftp-root";
  std::filesystem::path page_;
  testing::FakeClock clock_;
  UploadOptions options_;
  std::vector<std::string> log_;
  testing::LogCapture debugLog_;
};

TEST_F(WebPageUploadTest, FtpPutsTheFileInTheDirectoryAndChecksIt) {
  testing::PythonServer server = Ftp(0);
  ASSERT_NE(server.port(), 0);
  ASSERT_TRUE(Upload(FtpConfig(server)).ok()) << ::testing::PrintToString(log_);
  EXPECT_EQ(log_, (std::vector<std::string>{
                      ">> Time now is 22-Nov-2026 10:00:00", ">> Connecting to " + server.address(),
                      ">> Changing directory to www", ">> Copying to index.htm",
                      ">> Checking upload", ">> OK"}));
  EXPECT_TRUE(SameText(page_, root_ / "www" / "index.htm"));
  EXPECT_TRUE(SameText(page_, dir_ / "TVR Web Page Update.htm_check"));
  EXPECT_TRUE(clock_.sleeps().empty());
}

TEST_F(WebPageUploadTest, AChangedCopyIsUploadedExactlyOnceMoreAfterHalfASecond) {
  testing::PythonServer server = Ftp(1);
  ASSERT_NE(server.port(), 0);
  ASSERT_TRUE(Upload(FtpConfig(server)).ok()) << ::testing::PrintToString(log_);
  EXPECT_EQ(Logged(">> Error, retrying"), 1u);
  EXPECT_EQ(Logged(">> Copying to index.htm"), 2u);
  EXPECT_EQ(log_.back(), ">> OK");
  EXPECT_EQ(clock_.sleeps(), (std::vector<milliseconds>{milliseconds(500)}));
  EXPECT_EQ(server.WaitForEvents(2, seconds(10)),
            (std::vector<std::string>{"STORED index.htm", "STORED index.htm"}));
  EXPECT_TRUE(SameText(page_, root_ / "www" / "index.htm"));
}

TEST_F(WebPageUploadTest, ACopyThatStaysDifferentFailsAfterTheSecondAttempt) {
  testing::PythonServer server = Ftp(5);
  ASSERT_NE(server.port(), 0);
  EXPECT_FALSE(Upload(FtpConfig(server)).ok());
  EXPECT_EQ(Logged(">> Copying to index.htm"), 2u);
  EXPECT_EQ(Logged(">> Error, retrying"), 1u);
  EXPECT_EQ(log_.back(), ">> Error, upload failed");
  EXPECT_EQ(clock_.sleeps(), (std::vector<milliseconds>{milliseconds(500)}));
}

TEST_F(WebPageUploadTest, LoginAndDirectoryFailuresAreLoggedWithoutThePassword) {
  testing::PythonServer server = Ftp(0);
  ASSERT_NE(server.port(), 0);
  WebPageConfig wrong = FtpConfig(server);
  wrong.password = std::string(kPassword) + "-wrong";
  EXPECT_FALSE(Upload(wrong).ok());
  EXPECT_EQ(log_.back().rfind("Error opening " + server.address() + " - ", 0), 0u) << log_.back();

  WebPageConfig missingDir = FtpConfig(server);
  missingDir.directory = "no/such/dir";
  EXPECT_FALSE(Upload(missingDir).ok());
  EXPECT_EQ(Logged(">> Changing directory to no/such/dir"), 1u);
  EXPECT_EQ(Logged(">> Copying to index.htm"), 0u);

  std::string everything;
  for (const std::string& line : debugLog_.lines()) {
    everything += line;
  }
  for (const std::string& line : log_) {
    everything += line;
  }
  EXPECT_EQ(everything.find(kPassword), std::string::npos);
}

TEST_F(WebPageUploadTest, HostLocalCopiesIntoTheDirectoryWithoutFtp) {
  WebPageConfig config;
  config.host = "local";
  config.directory = (dir_ / "site").string();
  std::filesystem::create_directories(config.directory);
  config.templatePath = dir_.Write("index.htm", "template").string();
  // The template's own folder would be overwritten by the copy: refused, template kept.
  WebPageConfig ontoTemplate = config;
  ontoTemplate.directory = dir_.path().string();
  EXPECT_FALSE(Upload(ontoTemplate).ok());
  EXPECT_EQ(testing::TempDir::Read(dir_ / "index.htm"), "template");

  log_.clear();
  ASSERT_TRUE(Upload(config).ok());
  EXPECT_EQ(log_, (std::vector<std::string>{
                      ">> Time now is 22-Nov-2026 10:00:00", ">> Connecting to local",
                      ">> Copying " + page_.string(),
                      ">>      to " + (dir_ / "site" / "index.htm").string(), ">> OK"}));
  EXPECT_EQ(testing::TempDir::Read(dir_ / "site" / "index.htm"), testing::TempDir::Read(page_));

  config.directory = (dir_ / "missing").string();
  EXPECT_FALSE(Upload(config).ok());
  EXPECT_EQ(log_.back().rfind(">> Copy failed: ", 0), 0u);
}

TEST_F(WebPageUploadTest, AutomaticUpdatesUseTheLatestValuesOfTheRadio) {
  WebPageConfig config;
  config.host = "local";
  config.directory = (dir_ / "site").string();
  std::filesystem::create_directories(config.directory);
  config.templatePath = dir_.Write("now.htm", "on ###-frequency-### in ###-mode-###\n").string();
  config.autoOn = true;
  config.updateMinutes = 2;
  std::mutex mutex;
  int done = 0;
  {
    CWebPageUpdate updater(
        {nullptr,
         [&](const Status& s) {
           std::lock_guard lock(mutex);
           done += s.ok() ? 1 : 0;
         }},
        dir_ / "build", {}, milliseconds(10));  // a "minute" of 10 ms
    std::filesystem::create_directories(dir_ / "build");
    updater.SetValues({"7.003.000", "CW", "K3", ""});
    updater.Configure(config);
    std::promise<std::filesystem::path> previewed;
    updater.Preview([&previewed](const Status& s, const std::filesystem::path& page) {
      previewed.set_value(s.ok() ? page : std::filesystem::path());
    });
    std::future<std::filesystem::path> preview = previewed.get_future();
    ASSERT_EQ(preview.wait_for(seconds(30)), std::future_status::ready);
    EXPECT_EQ(testing::TempDir::Read(preview.get()), "on 7.003.000 in CW\n");
    for (int i = 0; i < 3000; ++i) {
      std::this_thread::sleep_for(milliseconds(10));
      std::lock_guard lock(mutex);
      if (done >= 2) {
        break;
      }
    }
  }
  EXPECT_GE(done, 2);
  EXPECT_EQ(testing::TempDir::Read(dir_ / "site" / "now.htm"), "on 7.003.000 in CW\n");
}

}  // namespace
}  // namespace tavlorin
