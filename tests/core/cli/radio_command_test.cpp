// tavlorin-cli radio, run as a user runs it.
#include <gtest/gtest.h>

#include "link/radio_link.h"
#include "support/child_process.h"
#include "support/pty_radio.h"

namespace tavlorin {
namespace {

using std::chrono::seconds;
using testing::RunProcess;

testing::ProcessResult Cli(std::vector<std::string> args) {
  args.insert(args.begin(), TAVLORIN_CLI_PATH);
  return RunProcess(args, seconds(60));
}

TEST(RadioCommand, CommandLineMistakesExitWithTwoAndSayWhat) {
  struct Case {
    std::vector<std::string> args;
    const char* says;
  } cases[] = {
      {{"radio", "get-freq"}, "--model is required"},
      {{"radio", "--model", "FT-9999X", "--port", "/dev/null", "get-freq"},
       "Radio definition not found"},
      {{"radio", "--model", "TS-2000", "get-freq"}, "--port is required"},
      {{"radio", "--model", "TS-2000", "--port", "/dev/x", "--speed", "fast", "get-freq"},
       "--speed takes a whole number"},
      {{"radio", "--model", "TS-2000", "--port", "/dev/x", "set-freq", "14.070"},
       "set-freq takes hertz"},
      {{"radio", "--model", "TS-2000", "--port", "/dev/x", "set-freq", "3000000000"},
       "set-freq takes hertz"},
      {{"radio", "--model", "TS-2000", "--port", "/dev/x", "tune"}, "unknown command"},
      {{"radio", "--model", "TS-2000", "--port", "/dev/x", "--bogus", "get-freq"},
       "unknown option or extra word \"--bogus\""},
      {{"frobnicate"}, "unknown command \"frobnicate\""},
  };
  for (const Case& c : cases) {
    testing::ProcessResult r = Cli(c.args);
    EXPECT_EQ(r.exitCode, 2) << c.says;
    EXPECT_NE(r.err.find(c.says), std::string::npos) << r.err;
  }
}

TEST(RadioCommand, HelpNamesTheCommandsAndOptions) {
  testing::ProcessResult r = Cli({"radio", "--help"});
  EXPECT_EQ(r.exitCode, 0);
  for (const char* word : {"get-freq", "--repeat", "set-freq", "set-mode", "poll", "--address",
                           "--port", "--speed", "Demo"}) {
    EXPECT_NE(r.out.find(word), std::string::npos) << word;
  }
}

TEST(RadioCommand, AMissingPortGivesTheSystemReasonAndTheAdvice) {
  testing::ProcessResult r =
      Cli({"radio", "--model", "TS-2000", "--port", "/dev/ttyTAVLORIN-gone", "get-freq"});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_NE(r.err.find("Cannot open port /dev/ttyTAVLORIN-gone: No such file or directory"),
            std::string::npos)
      << r.err;
  EXPECT_NE(r.err.find("Check that port /dev/ttyTAVLORIN-gone is not in use by another program"),
            std::string::npos)
      << r.err;
}

TEST(RadioCommand, APortInUseByAnotherProgramIsRefused) {
  testing::LineSimulator sim(';', [](const std::string&) { return std::string(); });
  testing::PtyRadio pty(sim);
  RadioLink holder;
  std::string message;
  ASSERT_TRUE(holder.Open(
      pty.path(), FamilyLineSettings(kKenwood, "9600", false, false, false, 500), &message));
  testing::ProcessResult r = Cli({"radio", "--model", "TS-2000", "--port", pty.path(), "get-freq"});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_NE(r.err.find("Device or resource busy"), std::string::npos) << r.err;
  EXPECT_NE(r.err.find("is not in use by another program"), std::string::npos) << r.err;
  EXPECT_EQ(pty.Received(), "") << "nothing reached the radio of the other program";
}

}  // namespace
}  // namespace tavlorin
