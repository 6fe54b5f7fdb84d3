// tavlorin-cli reading and setting the frequency and mode of each radio added for the current
// models, through a pseudo-terminal with a simulated radio of the model's command set.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <thread>

#include "support/child_process.h"
#include "support/pty_radio.h"
#include "support/sim_icom.h"
#include "support/sim_kenwood.h"
#include "support/sim_yaesu_ascii.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

testing::ProcessResult Cli(std::vector<std::string> args) {
  args.insert(args.begin(), TAVLORIN_CLI_PATH);
  return testing::RunProcess(args, seconds(60));
}

// A simulated radio with what the test needs to see of it: its mode, as a mode number of the
// family.
struct Simulated {
  std::unique_ptr<testing::Simulator> sim;
  std::function<int()> mode;
};

Simulated YaesuAscii(testing::SimYaesuAscii::Model model) {
  auto sim = std::make_unique<testing::SimYaesuAscii>(model);
  auto* raw = sim.get();
  return {std::move(sim), [raw] {
            const char c = raw->mode();
            return c <= '9' ? c - '0' : 10 + (c - 'A');
          }};
}

Simulated Kenwood(testing::SimKenwood::Flavour flavour, bool receiverInMode = false) {
  auto sim = std::make_unique<testing::SimKenwood>(flavour);
  sim->SetReceiverInModeCommand(receiverInMode);
  sim->SetIdentity(flavour == testing::SimKenwood::Flavour::kElecraftK2 ? "017" : "020");
  auto* raw = sim.get();
  return {std::move(sim), [raw] { return raw->mode(); }};
}

Simulated Icom(uint8_t address, int frequencyBytes = 5, bool echo = false, bool unswapped = false) {
  testing::SimIcomOptions options;
  options.address = address;
  options.frequencyBytes = frequencyBytes;
  options.echo = echo;
  options.unswappedReplies = unswapped;
  auto sim = std::make_unique<testing::SimIcom>(options);
  auto* raw = sim.get();
  return {std::move(sim), [raw] { return int(raw->mode()); }};
}

TEST(CurrentModelsCli, ReadsAndSetsFrequencyAndModeOfEachNewModel) {
  using Y = testing::SimYaesuAscii::Model;
  using K = testing::SimKenwood::Flavour;
  const struct {
    const char* model;
    std::function<Simulated()> make;
    const char* startFrequency;  // what get-freq prints first
    const char* frequency;       // set, then read back
    const char* shown;
    int mode;  // the family's mode number set, then read back
  } cases[] = {
      {"FT-991A", [] { return YaesuAscii(Y::kFt991A); }, "14074000 14.074.000", "7074000",
       "7.074.000", 12},
      {"FT-991", [] { return YaesuAscii(Y::kFt991A); }, "14074000 14.074.000", "144174000",
       "144.174.000", 4},
      {"FT-891", [] { return YaesuAscii(Y::kFt991A); }, "14074000 14.074.000", "7074000",
       "7.074.000", 3},
      {"FT-710", [] { return YaesuAscii(Y::kFt991A); }, "14074000 14.074.000", "50313000",
       "50.313.000", 12},
      {"FTDX10", [] { return YaesuAscii(Y::kFt991A); }, "14074000 14.074.000", "7074000",
       "7.074.000", 1},
      {"FTDX101D", [] { return YaesuAscii(Y::kFtdx101D); }, "14074000 14.074.000", "7074000",
       "7.074.000", 7},
      {"FTDX101MP", [] { return YaesuAscii(Y::kFtdx101D); }, "14074000 14.074.000", "7074000",
       "7.074.000", 2},
      {"FTDX3000", [] { return YaesuAscii(Y::kFtdx3000); }, "14074000 14.074.000", "7074000",
       "7.074.000", 6},
      {"FTDX1200", [] { return YaesuAscii(Y::kFtdx3000); }, "14074000 14.074.000", "28074000",
       "28.074.000", 12},
      {"FT-450D", [] { return YaesuAscii(Y::kFtdx3000); }, "14074000 14.074.000", "7074000",
       "7.074.000", 5},
      {"TS-590SG", [] { return Kenwood(K::kKenwood); }, "14070000 14.070.000", "7074000",
       "7.074.000", 3},
      {"TS-890S", [] { return Kenwood(K::kKenwood); }, "14070000 14.070.000", "7074000",
       "7.074.000", 12},
      {"TS-990S", [] { return Kenwood(K::kKenwood, true); }, "14070000 14.070.000", "7074000",
       "7.074.000", 13},
      {"QMX", [] { return Kenwood(K::kKenwood); }, "14070000 14.070.000", "7074000", "7.074.000",
       3},
      {"QDX", [] { return Kenwood(K::kKenwood); }, "14070000 14.070.000", "7074000", "7.074.000",
       2},
      {"truSDX", [] { return Kenwood(K::kKenwood); }, "14070000 14.070.000", "7074000", "7.074.000",
       1},
      {"uSDX", [] { return Kenwood(K::kKenwood); }, "14070000 14.070.000", "7074000", "7.074.000",
       3},
      {"KX2", [] { return Kenwood(K::kElecraftK2); }, "14070000 14.070.000", "7074000", "7.074.000",
       3},
      {"K4", [] { return Kenwood(K::kElecraftK2); }, "14070000 14.070.000", "7074000", "7.074.000",
       1},
      {"IC-905", [] { return Icom(0xAC, 6); }, "14070000 14.070.000", "2400100000", "2400.100.000",
       3},
      {"IC-R8600", [] { return Icom(0x96); }, "14070000 14.070.000", "7074000", "7.074.000", 2},
      {"G90", [] { return Icom(0x88); }, "14070000 14.070.000", "7074000", "7.074.000", 3},
      {"X6100", [] { return Icom(0x70); }, "14070000 14.070.000", "7074000", "7.074.000", 3},
      {"X5105", [] { return Icom(0x70); }, "14070000 14.070.000", "7074000", "7.074.000", 0},
      // Radios and interfaces that answer with the header as sent, with and without an echo.
      {"IC-7610", [] { return Icom(0x98, 5, false, true); }, "14070000 14.070.000", "7074000",
       "7.074.000", 1},
      {"IC-7610", [] { return Icom(0x98, 5, true, true); }, "14070000 14.070.000", "3573000",
       "3.573.000", 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.model);
    Simulated radio = c.make();
    testing::PtyRadio pty(*radio.sim);
    ASSERT_TRUE(pty.ok());
    auto run = [&](std::vector<std::string> more) {
      std::vector<std::string> args = {"radio", "--model", c.model, "--port", pty.path()};
      args.insert(args.end(), more.begin(), more.end());
      return Cli(args);
    };
    testing::ProcessResult r = run({"get-freq"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, std::string(c.startFrequency) + "\n");
    r = run({"set-freq", c.frequency});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, std::string(c.frequency) + " " + c.shown + "\n");
    r = run({"set-mode", std::to_string(c.mode)});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    // The set has left the port when the run ends: let the radio read it before the next run
    // purges the line at open (a pseudo-terminal drops what its far side has not read yet).
    for (int i = 0; i < 500 && radio.mode() != c.mode; ++i) {
      std::this_thread::sleep_for(milliseconds(10));
    }
    r = run({"get-mode"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, std::to_string(c.mode) + "\n");
  }
}

TEST(CurrentModelsCli, RadiosListsEveryNewModel) {
  testing::ProcessResult r = Cli({"radios"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  for (const char* line : {"Yaesu\tFT-991A (FT-991 commands)\t4800\t",
                           "Yaesu\tFT-891\t",
                           "Yaesu\tFT-710\t",
                           "Yaesu\tFTDX10\t",
                           "Yaesu\tFTDX101D\t",
                           "Yaesu\tFTDX101MP (FTDX101D commands)\t",
                           "Yaesu\tFTDX3000\t",
                           "Yaesu\tFTDX1200\t",
                           "Yaesu\tFT-450D\t",
                           "Kenwood\tTS-890S\t",
                           "Kenwood\tTS-990S\t",
                           "Kenwood\tTS-590SG (TS-2000 commands)\t",
                           "Elecraft\tK4 (K3 commands)",
                           "Elecraft\tKX2 (K3 commands)",
                           "ICOM\tIC-905\t19200\t300,1200,4800,9600,19200\tAC\n",
                           "ICOM\tIC-R8600\t",
                           "Xiegu\tG90\t19200\t300,1200,4800,9600,19200\t88\n",
                           "Xiegu\tX6100\t",
                           "Xiegu\tX5105\t",
                           "QRP Labs\tQMX (TS-480 commands)\t",
                           "QRP Labs\tQDX (TS-480 commands)\t",
                           "(tr)uSDX\ttruSDX (TS-480 commands)\t",
                           "(tr)uSDX\tuSDX (TS-480 commands)\t",
                           "FT-991: Demo\t"}) {
    EXPECT_NE(r.out.find(line), std::string::npos) << line;
  }
}

TEST(CurrentModelsCli, TheConnectionSaysWhichModelAnswered) {
  testing::SimYaesuAscii sim(testing::SimYaesuAscii::Model::kFtdx101D);
  testing::PtyRadio pty(sim);
  testing::ProcessResult r = Cli({"radio", "--model", "FT-991A", "--port", pty.path(), "get-freq"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.err.find("found FTDX101D, connected as FT-991A"), std::string::npos) << r.err;
}

// A user who knows neither family nor speed: connect --identify finds the radio and prints a
// preset that connects to it.
TEST(CurrentModelsCli, IdentifyFindsTheRadioAndAWorkingPreset) {
  const struct {
    std::function<Simulated()> make;
    const char* found;
    const char* presetTail;  // after "MODEL,PORT,"
  } cases[] = {
      {[] { return YaesuAscii(testing::SimYaesuAscii::Model::kFt991A); }, "FT-991", "115200"},
      {[] { return YaesuAscii(testing::SimYaesuAscii::Model::kFtdx3000); }, "FTDX3000", "115200"},
      {[] { return Kenwood(testing::SimKenwood::Flavour::kKenwood); }, "TS-480", "115200"},
      {[] { return Kenwood(testing::SimKenwood::Flavour::kElecraftK2); }, "K3", "115200"},
      {[] { return Icom(0x94); }, "IC-7300", "115200,Addr:94"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.found);
    Simulated radio = c.make();
    testing::PtyRadio pty(*radio.sim);
    testing::ProcessResult r = Cli({"connect", "--identify", "--port", pty.path()});
    EXPECT_EQ(r.exitCode, 0) << r.out << r.err;
    EXPECT_NE(r.out.find(std::string("found\t") + c.found + "\t"), std::string::npos) << r.out;
    const std::string preset =
        std::string("preset\t") + c.found + "," + pty.path() + "," + c.presetTail + "\n";
    EXPECT_NE(r.out.find(preset), std::string::npos) << r.out;
    // The preset's fields connect the radio command.
    r = Cli({"radio", "--model", c.found, "--port", pty.path(), "get-freq"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
  }
  testing::SimYaesuAscii silent(testing::SimYaesuAscii::Model::kFt991A);
  silent.SetSilent(true);
  testing::PtyRadio pty(silent);
  testing::ProcessResult r = Cli({"connect", "--identify", "--port", pty.path()});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_NE(r.err.find("No radio answered on "), std::string::npos) << r.err;
  EXPECT_EQ(Cli({"connect", "--port", pty.path()}).exitCode, 2);
}

}  // namespace
}  // namespace tavlorin
