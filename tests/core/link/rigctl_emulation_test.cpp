// An outside program drives the emulated port: Hamlib's rigctl, as a TS-2000, reads and sets
// the frequency and mode of a demonstration radio served by `tavlorin-cli emulate --pty`.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/child_process.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using testing::ChildProcess;
using testing::RunProcess;

constexpr milliseconds kProgramLimit{30000};

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    out.push_back(line);
  }
  return out;
}

TEST(RigctlEmulationTest, ReadsAndSetsADemonstrationRadio) {
  const testing::ProcessResult list = RunProcess({"rigctl", "-l"}, kProgramLimit);
  if (list.exitCode != 0) {
    GTEST_SKIP() << "rigctl is not installed (Debian package libhamlib-utils): "
                    "the outside-client test of the emulated port cannot run here";
  }
  // The model number rigctl gives the TS-2000.
  std::smatch row;
  ASSERT_TRUE(
      std::regex_search(list.out, row, std::regex(R"((^|\n)\s*(\d+)\s+Kenwood\s+TS-2000\s)")))
      << "rigctl -l lists no TS-2000";
  const std::string model = row[2];
  const std::string link =
      (std::filesystem::temp_directory_path() / ("tavlorin-rigctl-" + std::to_string(::getpid())))
          .string();
  ChildProcess server(
      {TAVLORIN_CLI_PATH, "emulate", "--model", "TS-2000: Demo", "--pty", "--link", link});
  ASSERT_TRUE(server.started());
  const std::vector<std::string> first = Lines(server.WaitForLines(1, kProgramLimit));
  ASSERT_FALSE(first.empty());
  EXPECT_EQ(first[0].rfind("/dev/pts/", 0), 0u) << first[0];
  ASSERT_EQ(std::filesystem::read_symlink(link).string(), first[0]);

  auto rigctl = [&](std::vector<std::string> commands) {
    std::vector<std::string> argv = {"rigctl", "-m", model, "-r", link, "-s", "57600"};
    argv.insert(argv.end(), commands.begin(), commands.end());
    testing::ProcessResult r = RunProcess(argv, kProgramLimit);
    EXPECT_EQ(r.exitCode, 0) << r.out << r.err;
    return Lines(r.out);
  };
  // "f m" prints the frequency, the mode and the passband, one a line.
  auto expectRead = [&](const std::string& hz, const std::string& mode) {
    std::vector<std::string> lines = rigctl({"f", "m"});
    lines.resize(2);
    EXPECT_EQ(lines, (std::vector<std::string>{hz, mode}));
  };
  expectRead("14235000", "LSB");
  rigctl({"F", "7074000", "M", "USB", "0"});
  expectRead("7074000", "USB");
  // The demonstration radio itself took the new values: the server's poll reports them.
  const std::string report = "7074000 7.074.000 mode 2";
  const auto end = steady_clock::now() + kProgramLimit;
  while (server.out().find(report) == std::string::npos && steady_clock::now() < end) {
    const auto lines = size_t(std::count(server.out().begin(), server.out().end(), '\n'));
    server.WaitForLines(lines + 1, milliseconds(500));
  }
  EXPECT_NE(server.out().find(report), std::string::npos) << server.out();

  EXPECT_EQ(server.Stop(SIGTERM, kProgramLimit), 0);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link)));
}

}  // namespace
}  // namespace tavlorin
