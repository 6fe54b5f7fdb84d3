// The telnet layer and the cluster connection, against a local node script that negotiates,
// asks for the login, sends spots, drops the line and takes the client back.
#include "spots/telnet_cluster.h"

#include <gtest/gtest.h>

#include <condition_variable>

#include "spots/telnet_codec.h"
#include "support/python_server.h"
#include "support/refusing_port.h"

namespace tavlorin {
namespace {

using std::chrono::seconds;

TEST(TelnetDecoder, RefusesEveryOptionAndPassesTheText) {
  using namespace telnet;
  auto bytes = [](std::initializer_list<int> values) {
    std::string out;
    for (int v : values) {
      out += static_cast<char>(v);
    }
    return out;
  };
  struct Case {
    std::string in;
    std::string text;
    std::string reply;
  } cases[] = {
      {"login: ", "login: ", ""},
      {bytes({kIac, kDo, 31}) + "a", "a", bytes({kIac, kWont, 31})},
      {bytes({kIac, kWill, 1, kIac, kWill, 3}), "", bytes({kIac, kDont, 1, kIac, kDont, 3})},
      {bytes({kIac, kWont, 1, kIac, kDont, 3}), "", ""},  // already off: no answer, no loop
      {"x" + bytes({kIac, kIac}) + "y", "x" + bytes({kIac}) + "y", ""},
      {"a" + bytes({kIac, kSb, 24, 1, kIac, kSe}) + "b", "ab", ""},
      {bytes({kIac, 241}) + "nop", "nop", ""},
  };
  for (const Case& c : cases) {
    TelnetDecoder decoder;
    std::string text;
    std::string reply;
    decoder.Feed(c.in, &text, &reply);
    EXPECT_EQ(text, c.text);
    EXPECT_EQ(reply, c.reply);
  }
  // A sequence cut between two reads is finished by the next one.
  TelnetDecoder decoder;
  std::string text;
  std::string reply;
  decoder.Feed(bytes({'a', kIac}), &text, &reply);
  decoder.Feed(bytes({kDo}), &text, &reply);
  decoder.Feed(bytes({24, 'b'}), &text, &reply);
  EXPECT_EQ(text, "ab");
  EXPECT_EQ(reply, bytes({kIac, kWont, 24}));
  EXPECT_EQ(TelnetEscape(bytes({'a', kIac})), bytes({'a', kIac, kIac}));
}

// Collects what the connection reports.
struct Collector {
  void Add(std::vector<std::string>& into, const std::string& line) {
    std::lock_guard lock(mutex);
    into.push_back(line);
    changed.notify_all();
  }
  bool WaitFor(const std::function<bool()>& done) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, seconds(30), done);
  }
  TelnetCluster::Callbacks Callbacks() {
    return {[this](const std::string& l) { Add(spots, l); },
            [this](const std::string& l) { Add(others, l); },
            [this](const std::string& l) { Add(statuses, l); }};
  }
  size_t Count(const std::vector<std::string>& lines, const std::string& start) {
    return std::count_if(lines.begin(), lines.end(),
                         [&](const std::string& l) { return l.rfind(start, 0) == 0; });
  }

  std::mutex mutex;
  std::condition_variable changed;
  std::vector<std::string> spots;
  std::vector<std::string> others;
  std::vector<std::string> statuses;
};

TelnetClusterConfig NodeConfig(int port) {
  TelnetClusterConfig config;
  config.host = "127.0.0.1";
  config.port = static_cast<uint16_t>(port);
  config.callsign = "DL9TST";
  config.firstRetry = std::chrono::milliseconds(50);
  config.longestRetry = std::chrono::milliseconds(200);
  return config;
}

TEST(TelnetCluster, LogsInCollectsSpotsAndComesBackAfterADrop) {
  testing::PythonServer node("telnet_cluster.py",
                             {testing::FixturePath("spots/cluster_spots.txt"), "--drops", "1"});
  ASSERT_NE(node.port(), 0);
  Collector seen;
  TelnetCluster cluster(NodeConfig(node.port()), seen.Callbacks());
  ASSERT_TRUE(seen.WaitFor([&] { return seen.spots.size() == 3; }));
  // The second connection's spot came after the drop; the bells are gone from the kept lines.
  std::string body = cluster.SpotBody();
  EXPECT_LT(body.find("Z21X"), body.find("JA1ZZZ"));  // newest first
  EXPECT_LT(body.find("JA1ZZZ"), body.find("VK9XX"));
  EXPECT_EQ(body.find('\a'), std::string::npos);
  {
    std::lock_guard lock(seen.mutex);
    EXPECT_EQ(seen.Count(seen.statuses, "Logged in as DL9TST"), 2u);
    EXPECT_EQ(seen.Count(seen.statuses, "Connection to 127.0.0.1:"), 1u);
    EXPECT_EQ(seen.Count(seen.others, "To ALL de G4ABC"), 1u);
  }
  std::vector<std::string> events = node.WaitForEvents(4, seconds(10));
  EXPECT_EQ(events, (std::vector<std::string>{"LOGIN DL9TST", "ANSWER fffc1ffffe01",
                                              "LOGIN DL9TST", "ANSWER fffc1ffffe01"}));

  ASSERT_TRUE(cluster.Send("DX 14025.5 VK9XX CW up 2").ok());
  ASSERT_TRUE(seen.WaitFor([&] { return seen.spots.size() == 4; }));
  EXPECT_NE(seen.spots.back().find("DX de DL9TST:"), std::string::npos);
}

TEST(TelnetCluster, AnswersThePasswordPromptAndGivesUpWithoutOne) {
  testing::PythonServer node("telnet_cluster.py",
                             {testing::FixturePath("spots/cluster_spots.txt"), "--password",
                              "s3cret"});
  ASSERT_NE(node.port(), 0);
  {
    TelnetClusterConfig config = NodeConfig(node.port());
    config.password = "s3cret";
    Collector seen;
    TelnetCluster cluster(config, seen.Callbacks());
    ASSERT_TRUE(seen.WaitFor([&] { return seen.spots.size() == 2; }));
  }
  Collector seen;
  TelnetCluster cluster(NodeConfig(node.port()), seen.Callbacks());
  ASSERT_TRUE(seen.WaitFor(
      [&] { return seen.Count(seen.statuses, "Connection to 127.0.0.1:") > 0; }));
  std::lock_guard lock(seen.mutex);
  EXPECT_NE(std::find_if(seen.statuses.begin(), seen.statuses.end(),
                         [](const std::string& s) {
                           return s.find("asks for a password, and none is set") !=
                                  std::string::npos;
                         }),
            seen.statuses.end());
  EXPECT_TRUE(seen.spots.empty());
}

TEST(TelnetCluster, ARefusedConnectionIsRetriedWithGrowingWaits) {
  testing::RefusingPort refusing;
  ASSERT_NE(refusing.port(), 0);
  Collector seen;
  TelnetCluster cluster(NodeConfig(refusing.port()), seen.Callbacks());
  ASSERT_TRUE(seen.WaitFor([&] { return seen.Count(seen.statuses, "Next attempt") >= 4; }));
  std::lock_guard lock(seen.mutex);
  std::vector<std::string> waits;
  for (const std::string& status : seen.statuses) {
    if (status.rfind("Next attempt", 0) == 0) {
      waits.push_back(status);
    }
  }
  EXPECT_EQ(waits[0], "Next attempt in 50 ms");
  EXPECT_EQ(waits[1], "Next attempt in 100 ms");
  EXPECT_EQ(waits[3], "Next attempt in 200 ms");  // the longest wait
  EXPECT_NE(seen.statuses[1].find("Connection refused"), std::string::npos) << seen.statuses[1];
  EXPECT_FALSE(cluster.Send("DX 7000.0 K1AA").ok());
}

}  // namespace
}  // namespace tavlorin
