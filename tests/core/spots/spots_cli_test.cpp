// tavlorin-cli spots, spot and webpage, run as a user runs them against the local servers.
#include <gtest/gtest.h>
#include <signal.h>

#include "support/child_process.h"
#include "support/python_server.h"
#include "support/temp_dir.h"

namespace tavlorin {
namespace {

using std::chrono::seconds;
using testing::FixturePath;
using testing::PythonServer;
using testing::RunProcess;

testing::ProcessResult Cli(std::vector<std::string> args) {
  args.insert(args.begin(), TAVLORIN_CLI_PATH);
  return RunProcess(args, seconds(60));
}

TEST(SpotsCli, CommandLineMistakesExitWithTwoAndSayWhat) {
  struct Case {
    std::vector<std::string> args;
    const char* says;
  } cases[] = {
      {{"spots", "--source", "ftp"}, "--source takes web, csv, log or telnet"},
      {{"spots", "--source", "csv", "--choice", "25 DX"}, "no list \"25 DX\" for the csv source"},
      {{"spots", "--file", "x.txt", "--host", "a"}, "--host does not apply to the log source"},
      {{"spots", "--source", "telnet", "--host", "node:99999"}, "--host takes HOST or HOST:PORT"},
      {{"spots", "--source", "telnet", "--host", "node"}, "needs --host and --call"},
      {{"spot", "submit", "--mycall", "DL9TST", "--freq", "7.0"}, "--dxcall and --freq are"},
      {{"spot", "submit", "--mycall", "A", "--dxcall", "B", "--freq", "14.02555"},
       "--freq takes MHz"},
      {{"spot", "post"}, "expected \"submit\" or \"status\""},
      {{"webpage", "build"}, "build takes one TEMPLATE"},
      {{"webpage", "upload", "t.htm", "--password-file", "/nonexistent/pw"},
       "cannot read the password file"},
      {{"webpage"}, "expected \"build\" or \"upload\""},
  };
  for (const Case& c : cases) {
    testing::ProcessResult r = Cli(c.args);
    EXPECT_EQ(r.exitCode, 2) << c.says;
    EXPECT_NE(r.err.find(c.says), std::string::npos) << r.err;
  }
}

TEST(SpotsCli, PrintsTheListOfEachSource) {
  testing::TempDir dir;
  PythonServer web("spot_http_server.py", {FixturePath("spots"), (dir / "posts").string()});
  ASSERT_NE(web.port(), 0);
  testing::ProcessResult r = Cli({"spots", "--host", web.address()});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out.find("14025.5\tVK9XX\tDL1ABC\tCW up 2\tCHRISTMAS I.\n"), 0u) << r.out;
  EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 4);

  r = Cli({"spots", "--source", "csv", "--host", web.address(), "--choice", "HF", "--json",
           "--no-country"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("{\"frequency\": \"7003.0\", \"hertz\": 7003000, \"callsign\": "
                       "\"JA1ZZZ\", \"spotter\": \"W3LPL\", \"time\": \"1240Z\", \"comment\": "
                       "\"QSX 5/10 & up\", \"locator\": \"\", \"country\": \"\"}\n"),
            std::string::npos)
      << r.out;

  r = Cli({"spots", "--file", FixturePath("spots/spot_log.txt"), "--choice", "14 MHz"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 2) << r.out;
  EXPECT_NE(r.out.find("14070.0\tDL2XX\tDK1AA\tPSK\t"), std::string::npos) << r.out;

  r = Cli({"spots", "--host", web.address(), "--choice", "7 MHz"});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_NE(r.err.find("HTTP status 404 from http://" + web.address() + "/dxs/7.html?"),
            std::string::npos)
      << r.err;
}

TEST(SpotsCli, WatchPrintsEachNewSpotOfATelnetClusterThroughADrop) {
  PythonServer node("telnet_cluster.py", {FixturePath("spots/cluster_spots.txt"), "--drops", "1"});
  ASSERT_NE(node.port(), 0);
  testing::ChildProcess cli({TAVLORIN_CLI_PATH, "spots", "--source", "telnet", "--host",
                             node.address(), "--call", "DL9TST", "--watch"});
  std::string out = cli.WaitForLines(3, seconds(60));
  EXPECT_EQ(cli.Stop(SIGINT, seconds(10)), 0);
  EXPECT_NE(out.find("7003.0\tJA1ZZZ\tW3LPL\tQSX 5/10 & up\tJAPAN\n"), std::string::npos) << out;
  EXPECT_NE(out.find("14025.5\tVK9XX\t"), std::string::npos) << out;
  EXPECT_NE(out.find("21074.0\tZ21X\tKM3T-#\tFT8   -12 dB\t"), std::string::npos) << out;
}

TEST(SpotsCli, SubmitsASpotToAWebClusterAndToATelnetNode) {
  testing::TempDir dir;
  PythonServer web("spot_http_server.py", {dir.path().string(), (dir / "posts").string()});
  ASSERT_NE(web.port(), 0);
  testing::ProcessResult r = Cli({"spot", "submit", "--mycall", "DL9TST", "--dxcall", "VK9XX",
                                  "--freq", "7.0001", "--info", "QSX 5/10 & up", "--host",
                                  web.address()});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "Submitted OK\n");
  EXPECT_NE(testing::TempDir::Read(dir / "posts").find("freq=7000.1&info=QSX+5%2F10+%26+up"),
            std::string::npos);

  PythonServer node("telnet_cluster.py", {FixturePath("spots/cluster_spots.txt")});
  ASSERT_NE(node.port(), 0);
  r = Cli({"spot", "submit", "--mycall", "DL9TST", "--dxcall", "VK9XX", "--freq", "14.0255",
           "--info", "CW up 2", "--telnet", "--host", node.address()});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "Submitted OK\n");
  std::vector<std::string> events = node.WaitForEvents(3, seconds(10));
  EXPECT_EQ(events.back(), "COMMAND DX 14025.5 VK9XX CW up 2");

  r = Cli({"spot", "status", "--freq", "14070000", "--mode", "CW", "--radio", "IC-7300",
           "--call", "DL9TST", "--name", "Hans: op", "--send", "--host", web.address()});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "TVRCluster:DL9TST:Hans; op:::14070000:CW:IC-7300::::::\n");
  EXPECT_NE(testing::TempDir::Read(dir / "posts").find("/\ttext/plain; charset=utf-8\t" +
                                                       r.out),
            std::string::npos);
}

TEST(SpotsCli, BuildsAndUploadsTheWebPage) {
  testing::TempDir dir;
  std::filesystem::create_directories(dir / "ftp" / "www");
  std::filesystem::create_directories(dir / "site");
  PythonServer ftp("ftp_server.py", {(dir / "ftp").string(), "op", "s3cret"});
  ASSERT_NE(ftp.port(), 0);
  const std::string page = dir.Write("page.htm", "<p>###-frequency-### ###-mode-###</p>\n");
  const std::string password = dir.Write("pw", "s3cret\n");

  testing::ProcessResult r = Cli({"webpage", "build", page, "--freq", "14070000", "--mode", "CW"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  ASSERT_EQ(r.out.rfind("TVR Web Page Update.htm\n"), r.out.size() - 24) << r.out;
  EXPECT_EQ(testing::TempDir::Read(r.out.substr(0, r.out.size() - 1)), "<p>14.070.000 CW</p>\n");

  r = Cli({"webpage", "upload", page, "--host", ftp.address(), "--dir", "www", "--user", "op",
           "--password-file", password, "--freq", "7003000", "--mode", "CW"});
  EXPECT_EQ(r.exitCode, 0) << r.out << r.err;
  EXPECT_NE(r.out.find(">> Changing directory to www\n>> Copying to page.htm\n"),
            std::string::npos)
      << r.out;
  EXPECT_EQ(testing::TempDir::Read(dir / "ftp" / "www" / "page.htm"), "<p>7.003.000 CW</p>\n");

  r = Cli({"webpage", "upload", page, "--host", "local", "--dir", (dir / "site").string()});
  EXPECT_EQ(r.exitCode, 0) << r.out << r.err;
  EXPECT_EQ(testing::TempDir::Read(dir / "site" / "page.htm"), "<p> </p>\n");

  r = Cli({"webpage", "upload", page, "--host", ftp.address()});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_EQ(r.err, "Error: A value is required for all fields.\n");
}

}  // namespace
}  // namespace tavlorin
