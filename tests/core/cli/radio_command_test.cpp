// tavlorin-cli radio, run as a user runs it.
#include <gtest/gtest.h>
#include <signal.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "link/radio_link.h"
#include "radio/radio_models.h"
#include "shell/paths.h"
#include "support/child_process.h"
#include "support/pty_radio.h"
#include "support/sim_kenwood.h"
#include "support/sim_line_radios.h"
#include "support/temp_dir.h"

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
      // Not silently the broadcast address 00.
      {{"radio", "--model", "IC-7300", "--port", "/dev/x", "--address", "ZZ", "get-freq"},
       "--address takes the radio's CI-V address"},
      {{"radio", "--model", "IC-7300", "--port", "/dev/x", "--address", "00", "get-freq"},
       "--address takes the radio's CI-V address"},
      {{"radio", "--model", "IC-7300", "--port", "/dev/x", "--address", "194", "get-freq"},
       "--address takes the radio's CI-V address"},
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

TEST(RadioCommand, RadiosListsTheModelsWithTheirDefaults) {
  testing::ProcessResult r = Cli({"radios"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  for (const char* line : {"ICOM\tIC-7300\t19200\t", "\t94\n", "Kenwood\tTS-2000\t",
                           "Elecraft\tK2\t", "TS-2000: Demo\t"}) {
    EXPECT_NE(r.out.find(line), std::string::npos) << line;
  }
  r = Cli({"radios", "--company", "Yaesu"});
  EXPECT_EQ(r.out.find("Kenwood"), std::string::npos);
  EXPECT_NE(r.out.find("\tFT-817"), std::string::npos);
  EXPECT_EQ(Cli({"radios", "--company", "Nobody"}).exitCode, 1);
}

// A model is a line of data: a user's definitions file adds one, and the program treats it as
// the model it names in its command set.
TEST(RadioCommand, AUsersDefinitionsFileAddsAModel) {
  const std::filesystem::path file = DataDir() / kRadioDefinitionsFile;
  std::ofstream(file) << "# my radios\n"
                         "Orion II: Demo|\xC2\xAE Dem-o-Matic \xC2\xAE|6|Orion|57600|57600|||\n"
                         "Orion|Ten-Tec|5||57600|57600|||wake-up=?V\n";
  struct Remove {
    std::filesystem::path path;
    ~Remove() { std::filesystem::remove(path); }
  } remove{file};
  testing::ProcessResult r = Cli({"radios"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Orion II: Demo\t"), std::string::npos) << r.out;
  EXPECT_EQ(r.out.find("TS-2000"), std::string::npos) << "the user's file replaces the shipped one";
  r = Cli({"radio", "--model", "Orion II: Demo", "get-freq"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "14235000 14.235.000\n") << "answers from the demonstration Orion's table";
}

TEST(RadioCommand, APortThatCannotBeOpenedGetsTheReasonAndTheAdviceThatFits) {
  testing::TempDir dir;
  const std::string notSerial = (dir / "notes.txt").string();
  std::ofstream(notSerial) << "not a radio\n";
  const struct {
    std::string port;
    const char* reason;
    const char* advice;
  } cases[] = {
      {"/dev/ttyTAVLORIN-gone", "No such file or directory", "There is no port"},
      {"/dev/null", "Inappropriate ioctl for device", "is not a serial port"},
      {notSerial, "Inappropriate ioctl for device", "is not a serial port"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.port);
    testing::ProcessResult r = Cli({"radio", "--model", "TS-2000", "--port", c.port, "get-freq"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("Cannot open port " + c.port + ": " + c.reason), std::string::npos)
        << r.err;
    EXPECT_NE(r.err.find(c.advice), std::string::npos) << r.err;
    EXPECT_EQ(r.err.find("in use by another program"), std::string::npos) << r.err;
  }
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

TEST(RadioCommand, ReadsAndSetsARadioOnASerialPort) {
  testing::SimKenwood sim;
  testing::PtyRadio pty(sim);
  const std::vector<std::string> base = {"radio", "--model", "TS-2000", "--port", pty.path()};
  auto with = [&](std::vector<std::string> more) {
    std::vector<std::string> args = base;
    args.insert(args.end(), more.begin(), more.end());
    return Cli(args);
  };
  testing::ProcessResult r = with({"get-freq"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "14070000 14.070.000\n");
  r = with({"set-freq", "7074000"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "7074000 7.074.000\n");
  EXPECT_EQ(sim.frequencyA(), 7074000u);
  r = with({"--vfo", "1", "get-freq"});
  EXPECT_EQ(r.out, "7074000 7.074.000\n") << "VFO B of the simulated radio";
  r = with({"set-mode", "3"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  // The command has left the port when set-mode ends; let the simulated radio read it before
  // the next run purges the line at open (on a pseudo-terminal that purge also drops bytes the
  // far side has not read yet, which a real cable has long delivered).
  for (int i = 0; i < 1000 && sim.mode() != 3; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  r = with({"get-mode"});
  EXPECT_EQ(r.out, "3\n");
  EXPECT_EQ(sim.mode(), 3);
  // A TS-2000 takes one digit: 12 must not go out as MD2.
  r = with({"set-mode", "12"});
  EXPECT_EQ(r.exitCode, 2);
  EXPECT_NE(r.err.find("TS-2000 takes mode numbers from 0 to 9"), std::string::npos) << r.err;
  EXPECT_EQ(sim.mode(), 3);
}

TEST(RadioCommand, ReadsAndSetsBothVfosOfAnOrion) {
  testing::SimOrion sim;
  testing::PtyRadio pty(sim);
  auto with = [&](std::vector<std::string> more) {
    std::vector<std::string> args = {"radio", "--model", "Orion", "--port", pty.path()};
    args.insert(args.end(), more.begin(), more.end());
    return Cli(args);
  };
  testing::ProcessResult r = with({"get-freq"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "14070000 14.070.000\n");
  r = with({"--vfo", "1", "get-freq"});
  EXPECT_EQ(r.out, "7060000 7.060.000\n") << r.err;
  r = with({"--vfo", "1", "set-freq", "10136000"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "10136000 10.136.000\n");
  EXPECT_EQ(sim.Get("BF"), "10136000");
  EXPECT_EQ(sim.Get("AF"), "14070000") << "VFO A untouched";
}

TEST(RadioCommand, RepeatedReadsReportTheLinkSpeed) {
  testing::SimKenwood sim;
  testing::PtyRadio pty(sim);
  testing::ProcessResult r =
      Cli({"radio", "--model", "TS-2000", "--port", pty.path(), "get-freq", "--repeat", "20"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("14070000 14.070.000\n20 reads in "), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("reads/s, mean round trip "), std::string::npos) << r.out;
  EXPECT_NE(r.out.find(", 0 failed"), std::string::npos) << r.out;
}

TEST(RadioCommand, ASilentRadioFailsWithTheMessage) {
  testing::SimKenwood sim;
  sim.SetSilent(true);
  testing::PtyRadio pty(sim);
  testing::ProcessResult r = Cli({"radio", "--model", "TS-2000", "--port", pty.path(), "get-freq"});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_EQ(r.err, "Failed to read frequency\n");
}

TEST(RadioCommand, CtrlCEndsAConnectToASilentRadio) {
  testing::LineSimulator silent(';', [](const std::string&) { return std::string(); });
  testing::PtyRadio pty(silent);
  testing::ChildProcess cli(
      {TAVLORIN_CLI_PATH, "radio", "--model", "FT-817", "--port", pty.path(), "get-freq"});
  ASSERT_TRUE(cli.started());
  // The first command on the line means the connect is under way, the handlers installed.
  ASSERT_TRUE(pty.WaitForReceived(1, std::chrono::seconds(30)));
  EXPECT_EQ(cli.Stop(SIGINT, std::chrono::seconds(60)), 1);
  EXPECT_EQ(cli.err(), "User abort\n");
}

// tavlorin-cli radio poll on a simulated Kenwood, its first line already printed.
struct PollRun {
  PollRun() {
    EXPECT_TRUE(poll.started());
    first = poll.WaitForLines(1, seconds(30));
  }
  testing::SimKenwood sim;
  testing::PtyRadio pty{sim};
  testing::ChildProcess poll{
      {TAVLORIN_CLI_PATH, "radio", "--model", "TS-2000", "--port", pty.path(), "poll"}};
  std::string first;
};

TEST(RadioCommand, PollPrintsEachChangeMadeAtTheRadio) {
  PollRun run;
  EXPECT_NE(run.first.find(" 14070000 14.070.000 mode "), std::string::npos) << run.first;
  run.sim.SetFrequencyA(21074000);  // the operator turns the knob
  std::string out = run.poll.WaitForLines(2, seconds(30));
  EXPECT_NE(out.find(" 21074000 21.074.000 mode 2\n"), std::string::npos) << out;
  EXPECT_EQ(run.poll.Stop(SIGINT, seconds(30)), 0);
}

TEST(RadioCommand, PollEndsWithAMessageWhenTheCableIsPulled) {
  PollRun run;
  ASSERT_NE(run.first.find("14070000"), std::string::npos) << run.first;
  run.pty.Hangup();
  // The tool must notice and end by itself; the limit is only a guard against a hang.
  EXPECT_EQ(run.poll.Stop(0, seconds(60)), 1);
  EXPECT_NE(run.poll.err().find("Lost the radio's port: "), std::string::npos) << run.poll.err();
}

}  // namespace
}  // namespace tavlorin
