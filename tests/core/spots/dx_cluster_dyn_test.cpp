// The DX cluster window's logic against a real web cluster (the test HTTP server), a log file
// and a telnet node: refresh timer, interval, display updates, status pane, tuning.
#include "spots/dx_cluster_dyn.h"

#include <gtest/gtest.h>

#include <map>

#include "spots/spot_settings.h"
#include "support/python_server.h"
#include "support/run_until.h"
#include "support/temp_dir.h"

namespace tavlorin {
namespace {

using std::chrono::seconds;

// Timers are recorded, not run: the test ticks them itself, so no test waits for real seconds.
class RecordingHost final : public DxClusterHost {
 public:
  void SetTimer(int id, std::chrono::milliseconds interval) override { timers[id] = interval; }
  void KillTimer(int id) override { timers.erase(id); }
  void PostToWindow(std::function<void()> call) override { loop.Post(std::move(call)); }
  void ShowStatusPane(const std::string& text) override { panes.push_back(text); }
  void ShowMessage(const std::string& text) override { messages.push_back(text); }
  void ShowProgress(int elapsed, int range) override { progress = {elapsed, range}; }
  void ShowTitle(const std::string& text) override { title = text; }
  void ShowList(const SpotListModel&, const SpotListModel::Update&) override { ++draws; }

  EventLoop loop;
  std::map<int, std::chrono::milliseconds> timers;
  std::vector<std::string> panes;
  std::vector<std::string> messages;
  std::pair<int, int> progress;
  std::string title;
  int draws = 0;
};

class DxClusterTest : public ::testing::Test {
 protected:
  DxClusterTest()
      : web_("spot_http_server.py",
             {testing::FixturePath("spots"), (dir_ / "posts.txt").string()}),
        settings_(dir_ / "settings.ini") {
    config_.servers.webPagesHost = web_.address();
    config_.servers.csvFilesHost = web_.address();
  }
  void Make() {
    window_ = std::make_unique<CDXClusterDyn>(host_, config_, nullptr, &settings_);
  }
  // Runs the window's thread until the fetches under way have finished.
  bool Settle() {
    return testing::RunLoopUntil(
        host_.loop, [this] { return !window_->fetching(); }, seconds(30));
  }
  size_t Finished() const {
    return std::count(host_.panes.begin(), host_.panes.end(), kStatusShowing);
  }

  testing::TempDir dir_;
  testing::PythonServer web_;
  Settings settings_;
  DxClusterConfig config_;
  RecordingHost host_;
  std::unique_ptr<CDXClusterDyn> window_;
};

TEST_F(DxClusterTest, ARefreshShowsTheStatusPaneAndThePageOfTheChoice) {
  ASSERT_NE(web_.port(), 0);
  config_.choice = "50 HF";  // fetches the 25-spot page dxs/hfdx25.html?
  Make();
  window_->Refresh();
  ASSERT_TRUE(Settle());
  EXPECT_EQ(host_.panes, (std::vector<std::string>{"<->", "DX "}));
  EXPECT_EQ(host_.title, "HF spots");
  ASSERT_EQ(window_->list().rows().size(), 1u);
  EXPECT_EQ(window_->list().rows()[0].callsign, "ZS6ABC");

  // A choice whose page the server lacks: the message says so and the list stays.
  DxClusterConfig other = config_;
  other.choice = "7 MHz";
  window_->Configure(other);
  window_->Refresh();
  ASSERT_TRUE(Settle());
  ASSERT_FALSE(host_.messages.empty());
  EXPECT_NE(host_.messages.back().find("HTTP status 404"), std::string::npos);
  EXPECT_EQ(window_->list().rows().size(), 1u);
  // The configuration was stored under the window's keys.
  EXPECT_EQ(settings_.Get(spot_settings::kChoice), "7 MHz");
}

TEST_F(DxClusterTest, TheRefreshTimerCountsTheIntervalOfAtLeastTenSeconds) {
  Make();
  EXPECT_EQ(window_->SetRefreshInterval(5), 10);
  EXPECT_EQ(settings_.Get(spot_settings::kRefreshSeconds), 10);
  EXPECT_EQ(host_.progress, (std::pair<int, int>{0, 10}));

  window_->SetDisplayUpdates(true);  // a refresh at once, and the timer
  EXPECT_TRUE(settings_.Get(spot_settings::kStart));
  ASSERT_EQ(host_.timers.count(CDXClusterDyn::kRefreshTimer), 1u);
  EXPECT_EQ(host_.timers[CDXClusterDyn::kRefreshTimer], std::chrono::milliseconds(1000));
  ASSERT_TRUE(Settle());
  EXPECT_EQ(Finished(), 1u);

  for (int i = 0; i < 9; ++i) {
    window_->OnTimer(CDXClusterDyn::kRefreshTimer);
  }
  EXPECT_EQ(window_->elapsedSeconds(), 9);
  EXPECT_FALSE(window_->fetching());
  window_->OnTimer(CDXClusterDyn::kRefreshTimer);  // the tenth second: a refresh
  EXPECT_TRUE(window_->fetching());
  EXPECT_EQ(host_.timers.count(CDXClusterDyn::kRefreshTimer), 0u);  // no ticks while fetching
  ASSERT_TRUE(Settle());
  EXPECT_EQ(Finished(), 2u);
  EXPECT_EQ(window_->elapsedSeconds(), 0);
  EXPECT_EQ(host_.timers.count(CDXClusterDyn::kRefreshTimer), 1u);
  // The same page again was not drawn again.
  EXPECT_EQ(host_.draws, 1);

  window_->SetDisplayUpdates(false);
  EXPECT_EQ(host_.timers.count(CDXClusterDyn::kRefreshTimer), 0u);
  EXPECT_FALSE(settings_.Get(spot_settings::kStart));
  window_->OnTimer(CDXClusterDyn::kRefreshTimer);  // a tick still queued does nothing
  EXPECT_EQ(window_->elapsedSeconds(), 0);
}

TEST_F(DxClusterTest, DisplayUpdatesResumeAtTheNextOpeningAndStartWithAFreshDraw) {
  Make();
  window_->SetDisplayUpdates(true);
  ASSERT_TRUE(Settle());
  window_->Close();
  EXPECT_EQ(host_.timers.count(CDXClusterDyn::kRefreshTimer), 0u);
  EXPECT_TRUE(settings_.Get(spot_settings::kStart));  // the user's choice outlives the window

  Make();
  window_->Open();
  EXPECT_TRUE(window_->displayUpdates());
  ASSERT_TRUE(Settle());
  // The second window drew the unchanged page although the first had drawn it too.
  EXPECT_EQ(host_.draws, 2);
}

TEST_F(DxClusterTest, ChoosingASpotTunesToItsHertz) {
  Make();
  window_->Refresh();
  ASSERT_TRUE(Settle());
  ASSERT_EQ(window_->list().rows().size(), 4u);
  EXPECT_FALSE(window_->ChooseSpot(0));  // no radio window: nothing is sent
  std::vector<Frequency> tuned;
  window_->SetTuneToHertz([&tuned](Frequency hz) { tuned.push_back(hz); });
  EXPECT_TRUE(window_->ChooseSpot(0));
  EXPECT_TRUE(window_->ChooseSpot(1));
  EXPECT_FALSE(window_->ChooseSpot(4));
  EXPECT_EQ(tuned, (std::vector<Frequency>{14025500, 7003000}));
}

TEST_F(DxClusterTest, TheLogFileSourceReadsTheFileOfTheSettings) {
  config_.source = SpotSource::kLogFile;
  config_.choice = "14 MHz";
  config_.servers.logFile = testing::FixturePath("spots/spot_log.txt");
  Make();
  window_->Refresh();
  ASSERT_TRUE(Settle());
  ASSERT_EQ(window_->list().rows().size(), 2u);
  EXPECT_EQ(window_->list().rows()[1].callsign, "DL2XX");

  config_.servers.logFile = (dir_ / "gone.txt").string();
  window_->Configure(config_);
  window_->Refresh();
  ASSERT_TRUE(Settle());
  ASSERT_FALSE(host_.messages.empty());
  EXPECT_NE(host_.messages.back().find("gone.txt: No such file"), std::string::npos);
}

TEST_F(DxClusterTest, ATelnetClusterRefreshesTheListAsSpotsArrive) {
  testing::PythonServer node("telnet_cluster.py",
                             {testing::FixturePath("spots/cluster_spots.txt")});
  ASSERT_NE(node.port(), 0);
  config_.source = SpotSource::kTelnet;
  config_.choice = "HF";
  config_.telnet.host = "127.0.0.1";
  config_.telnet.port = static_cast<uint16_t>(node.port());
  config_.telnet.callsign = "DL9TST";
  Make();
  window_->Open();
  window_->SetDisplayUpdates(true, false);
  ASSERT_TRUE(testing::RunLoopUntil(
      host_.loop, [this] { return window_->list().rows().size() == 2; }, seconds(30)));
  EXPECT_EQ(window_->list().rows()[0].callsign, "JA1ZZZ");  // newest first
  EXPECT_NE(std::find(host_.messages.begin(), host_.messages.end(), "Logged in as DL9TST"),
            host_.messages.end());
}

}  // namespace
}  // namespace tavlorin
