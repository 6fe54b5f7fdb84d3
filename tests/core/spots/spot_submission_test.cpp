// Spot submission and the cluster status record, posted to the test web cluster.
#include "spots/spot_submission.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "spots/cluster_status.h"
#include "spots/spot_settings.h"
#include "support/log_capture.h"
#include "support/python_server.h"
#include "support/refusing_port.h"
#include "support/temp_dir.h"

namespace tavlorin {
namespace {

using std::chrono::seconds;

TEST(SpotSubmission, FormEncodingEscapesExactlyFiveCharacters) {
  struct Case {
    const char* text;
    const char* encoded;
  } cases[] = {
      {"QSX 5/10 & up", "QSX+5%2F10+%26+up"},
      {"?#%", "%3F%23%25"},
      {"a=b;c+d", "a=b;c+d"},
      {"K\xC3\xBChn", "K\xC3\xBChn"},
      {"", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FormEncode(c.text), c.encoded) << c.text;
  }
}

TEST(SpotSubmission, FrequencyFromMegahertzToKilohertzText) {
  struct Case {
    const char* mhz;
    std::optional<uint32_t> units;
    const char* khz;
  } cases[] = {
      {"7.0001", 70001, "7000.1"},      {"14.0255", 140255, "14025.5"},
      {"14", 140000, "14000.0"},        {"0.1375", 1375, "137.5"},
      {"1296.2", 12962000, "1296200.0"}, {"9999.9999", 99999999, "9999999.9"},
      {"14.02555", std::nullopt, ""},   {"12345.0", std::nullopt, ""},
      {".5", std::nullopt, ""},         {"14.0x", std::nullopt, ""},
      {"", std::nullopt, ""},           {"-7.0", std::nullopt, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ParseSpotMegahertz(c.mhz), c.units) << c.mhz;
    if (c.units) {
      EXPECT_EQ(FormatSpotKilohertz(*c.units), c.khz);
    }
  }
}

TEST(SpotSubmission, BodyAndClusterCommand) {
  SpotSubmission spot{"DL9TST/P", "VK9XX", 140255, "CW up 2"};
  EXPECT_EQ(SpotFormBody(spot), "mycall=DL9TST%2FP&dxcall=VK9XX&freq=14025.5&info=CW+up+2");
  EXPECT_EQ(SpotDxCommand(spot), "DX 14025.5 VK9XX CW up 2");
  spot.info.clear();
  EXPECT_EQ(SpotDxCommand(spot), "DX 14025.5 VK9XX");
}

class PostTest : public ::testing::Test {
 protected:
  testing::PythonServer Server(std::vector<std::string> extra = {}) {
    std::vector<std::string> args = {dir_.path().string(), record_.string()};
    args.insert(args.end(), extra.begin(), extra.end());
    return testing::PythonServer("spot_http_server.py", args);
  }
  std::vector<std::string> Posts() const {
    std::istringstream in(testing::TempDir::Read(record_));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
      lines.push_back(line);
    }
    return lines;
  }

  testing::TempDir dir_;
  std::filesystem::path record_ = dir_ / "posts.txt";
  Settings settings_{dir_ / "settings.ini"};
  testing::LogCapture log_;
};

TEST_F(PostTest, ASubmittedSpotReachesTheSpotEntryScript) {
  testing::PythonServer server = Server();
  ASSERT_NE(server.port(), 0);
  SubmitOutcome outcome = SubmitSpot(server.address(), {"DL9TST", "VK9XX", 70001, "QSX 5/10 & up"},
                                     &settings_);
  EXPECT_TRUE(outcome.ok);
  EXPECT_EQ(outcome.status, "Submitted OK");
  EXPECT_EQ(Posts(), (std::vector<std::string>{
                         "/cgi-bin/spotin2.sh\tapplication/x-www-form-urlencoded\t"
                         "mycall=DL9TST&dxcall=VK9XX&freq=7000.1&info=QSX+5%2F10+%26+up"}));
  EXPECT_EQ(settings_.Get(spot_settings::kMyCall), "DL9TST");

  // The reply came in pieces of at most 1024 bytes, each logged, all kept. (The log drops a
  // piece's closing line end, so the texts are compared without them.)
  auto withoutLineEnds = [](std::string text) {
    std::erase(text, '\n');
    std::erase(text, '\r');
    return text;
  };
  std::string logged;
  for (const std::string& line : log_.lines()) {
    if (line.rfind("Reply: ", 0) == 0) {
      EXPECT_LE(line.size() - 7, 1024u);
      logged += line.substr(7);
    }
  }
  EXPECT_GT(outcome.reply.size(), 1024u);
  EXPECT_EQ(withoutLineEnds(logged), withoutLineEnds(outcome.reply));

  std::filesystem::path saved;
  ASSERT_TRUE(SaveSubmitReply(outcome.reply, dir_.path(), &saved).ok());
  EXPECT_EQ(saved.filename(), "DXClusterReply.html");
  EXPECT_EQ(testing::TempDir::Read(saved), outcome.reply);
}

TEST_F(PostTest, RefusedAndFailedSubmissionsSayWhy) {
  testing::PythonServer refusing = Server({"--post-status", "503"});
  ASSERT_NE(refusing.port(), 0);
  // Through the dialog's worker, whose answer comes back on its own thread.
  std::promise<SubmitOutcome> answered;
  SpotSubmitter submitter;
  submitter.Submit(refusing.address(), {"DL9TST", "VK9XX", 70001, ""}, nullptr,
                   [&answered](SubmitOutcome o) { answered.set_value(std::move(o)); });
  std::future<SubmitOutcome> future = answered.get_future();
  ASSERT_EQ(future.wait_for(seconds(60)), std::future_status::ready);
  SubmitOutcome outcome = future.get();
  EXPECT_FALSE(outcome.ok);
  EXPECT_EQ(outcome.status, "Failed: status = 503");
  EXPECT_NE(outcome.reply.find("Spot mycall=DL9TST"), std::string::npos);  // kept for viewing

  testing::RefusingPort nobody;
  ASSERT_NE(nobody.port(), 0);
  outcome = SubmitSpot("127.0.0.1:" + std::to_string(nobody.port()),
                       {"DL9TST", "VK9XX", 70001, ""}, nullptr);
  EXPECT_FALSE(outcome.ok);
  EXPECT_NE(outcome.status.find("Couldn't connect"), std::string::npos) << outcome.status;

  EXPECT_EQ(SubmitSpot("", {"DL9TST", "VK9XX", 70001, ""}, nullptr).status,
            "No spot-entry server is set");
}

TEST(ClusterStatus, TheRecordHasThirteenFieldsWithoutStrayColons) {
  ClusterStation station;
  station.callsign = "DL9TST";
  station.name = "Hans: the op";
  station.dxcc = "230";
  station.locator = "JO62QM";
  station.comment = "QRV 20:00-22:00";
  std::string record = BuildStatusRecord(station, {"14070000", "PSK", "IC-7300"});
  EXPECT_EQ(record,
            "TVRCluster:DL9TST:Hans; the op:230:JO62QM:14070000:PSK:IC-7300::::::"
            "QRV 20;00-22;00");
  EXPECT_EQ(std::count(record.begin(), record.end(), ':'), kStatusRecordFields);
}

TEST_F(PostTest, TheStatusRecordIsPostedNowAndEveryInterval) {
  testing::PythonServer server = Server();
  ASSERT_NE(server.port(), 0);
  ClusterStation station;
  station.callsign = "DL9TST";
  station.host = "127.0.0.1";
  station.port = std::to_string(server.port());
  std::string answer;
  ASSERT_TRUE(SendStatusRecord(station, "TVRCluster:DL9TST", &answer).ok());
  EXPECT_NE(answer.find("Spot TVRCluster:DL9TST"), std::string::npos);
  EXPECT_EQ(Posts(), (std::vector<std::string>{"/\ttext/plain; charset=utf-8\tTVRCluster:DL9TST"}));

  // Every "minute" (here 20 ms) with the radio's latest values, without being asked.
  std::atomic<int> sent{0};
  {
    ClusterStatusUpdater updater(
        [&sent](const Status& s, const std::string&) { sent += s.ok() ? 1 : 0; },
        std::chrono::milliseconds(20));
    updater.SetRadioValues({"7003000", "CW", "K3"});
    station.autoOn = true;
    station.updateMinutes = 1;
    updater.Configure(station);
    for (int i = 0; i < 3000 && sent < 2; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    station.autoOn = false;
    updater.Configure(station);
  }
  ASSERT_GE(sent.load(), 2);
  std::vector<std::string> posts = Posts();
  EXPECT_EQ(posts.back(), "/\ttext/plain; charset=utf-8\tTVRCluster:DL9TST::::7003000:CW:K3::::::");
}

}  // namespace
}  // namespace tavlorin
