// The Kenwood and Elecraft operations through CatRadio over a scripted radio: which command
// each operation sends per family and model, how replies become values, and power switching.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "radio/cat_radio.h"
#include "support/fake_clock.h"
#include "support/scripted_device.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::FakeClock;
using testing::ScriptedDevice;

struct ScriptedRadio {
  ScriptedRadio(int family, const std::string& model) {
    auto device = std::make_unique<ScriptedDevice>(clock);
    scripted = device.get();
    std::string message;
    EXPECT_TRUE(radio.link().Attach(
        std::move(device), FamilyLineSettings(family, "9600", false, false, false, 500), &message));
    radio.manufacturer = family;
    radio.modelName = model;
  }
  FakeClock clock;
  CatRadio radio{clock};
  ScriptedDevice* scripted = nullptr;
};

TEST(KenwoodDriverTest, FrequencyCommandsPerFamilyAndVfo) {
  const std::string status = "IF00003573000     +00000000002000000 ;";
  struct Case {
    int family;
    int vfo;
    std::string set;   // what SetFrequency(vfo, hz) sends
    std::string read;  // what ReadFrequency(vfo) sends, answered by `reply`
    std::string reply;
    Frequency hz;
  } cases[] = {
      {kKenwood, 0, "FA00014070000;", "FA;", "FA00014070000;", 14070000},
      {kKenwood, 1, "FB00007074000;", "FB;", "FB00007074000;", 7074000},
      {kKenwood, 2, "FC00003573000;", "IF;", status, 3573000},
      {kElecraft, 0, "FA00014070000;", "FA;", "FA00014070000;", 14070000},
      {kElecraft, 1, "FB00000474200;", "FB;", "FB00000474200;", 474200},
      {kElecraft, 2, "FA00014070000;", "FA;", "FA00014070000;", 14070000},
      {kKenwood, 0, "FA00000000000;", "FA;", "FA00000000000;", 0},  // a failed read: zero
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.set + " " + c.read);
    ScriptedRadio s(c.family, c.family == kKenwood ? "TS-2000" : "K2");
    s.scripted->OnWrite(c.set, "").OnWrite(c.read, c.reply);
    EXPECT_EQ(s.radio.SetFrequency(c.vfo, c.hz), 1);
    Frequency hz = 1;
    std::string text;
    EXPECT_EQ(s.radio.ReadFrequency(c.vfo, &hz, &text) != 0u, c.hz != 0);
    EXPECT_EQ(hz, c.hz);
    EXPECT_EQ(text, FormatFrequency(c.hz));
    EXPECT_EQ(s.scripted->AllWritten(), c.set + c.read);
  }
}

TEST(KenwoodDriverTest, SMeterPerModel) {
  struct Case {
    int family;
    std::string model;
    std::string sent;  // "" = nothing may be sent
    std::string reply;
    uint8_t value;
  } cases[] = {
      {kKenwood, "TS-2000", "SM0;", "SM00007;", 7}, {kKenwood, "TS-480", "SM0;", "SM00015;", 15},
      {kKenwood, "TS-4800", "SM;", "SM0012;", 12},  // not taken for a TS-480
      {kElecraft, "K2", "BG;", "BG15;", 3},         {kElecraft, "K2", "BG;", "BG11;", 11},
      {kElecraft, "K2", "BG;", "BG12;", 0},
  };
  for (const Case& c : cases) {
    ScriptedRadio s(c.family, c.model);
    if (!c.sent.empty()) {
      s.scripted->OnWrite(c.sent, c.reply);
    }
    EXPECT_EQ(s.radio.ReadSMeter(0), c.value) << c.model << " " << c.reply;
    EXPECT_EQ(s.scripted->AllWritten(), c.sent) << c.model;
  }
}

TEST(KenwoodDriverTest, GenericValuesModeAndStartUp) {
  ScriptedRadio s(kKenwood, "TS-2000");
  s.scripted->OnWrite("MD;", "MD3;")
      .OnWrite("MD7;", "")
      .OnWrite("IS;", "IS 0600;")
      .OnWrite("AG0;", "AG0050;")
      .OnWrite("MR0001;", "MR0001000100028450000;")
      .OnWrite("AN1;", "")
      .OnWrite("AI0;", "");
  EXPECT_EQ(s.radio.ReadMode(), 3);
  EXPECT_EQ(s.radio.SetMode(7), 1);
  EXPECT_EQ(s.radio.ReadValue("IS", "IF shift"), 600u);
  EXPECT_EQ(s.radio.ReadValue("AG0;", "AF gain"), 50u);
  EXPECT_EQ(s.radio.ReadString("MR0001"), "000100028450000");
  EXPECT_EQ(s.radio.SetValue("AN1", "Antenna 1"), 1);
  s.radio.kenwood().StartUp();
  EXPECT_EQ(s.scripted->pendingExpectations(), 0u);
  EXPECT_TRUE(s.scripted->unexpected().empty());

  ScriptedRadio k2(kElecraft, "K2");
  k2.scripted->OnWrite("AI0;K22;", "");
  k2.radio.kenwood().StartUp();
  EXPECT_EQ(k2.scripted->AllWritten(), "AI0;K22;");
}

TEST(KenwoodDriverTest, SwitchingOffAsksFirstThenSendsPs0) {
  for (bool yes : {false, true}) {
    ScriptedRadio s(kKenwood, "TS-480");
    s.scripted->SetResponder([](const std::string&) { return std::string(); });
    std::string asked;
    s.radio.SetYesNoQuestion([&](const std::string& title, const std::string& text) {
      asked = title + "|" + text;
      return yes;
    });
    EXPECT_EQ(s.radio.SwitchPower("TS-480", false), yes ? 1 : 0);
    EXPECT_EQ(asked, "Closing...|Switch off your Radio?");
    EXPECT_EQ(s.scripted->AllWritten(), yes ? "PS0;" : "");
    EXPECT_EQ(s.clock.sleeps(),
              yes ? std::vector<milliseconds>{milliseconds(250)} : std::vector<milliseconds>{});
  }
}

TEST(KenwoodDriverTest, SwitchingOnWakesTheRadioAndWaitsForFrequency) {
  ScriptedRadio s(kKenwood, "TS-570");
  s.scripted->OnWrite("PS;", "PS0;")
      .OnWrite(";;;;;", "")
      .OnWrite("PS1;", "")
      .OnWrite("PS;", "PS1;")
      .OnWrite("FA;", "")  // still booting: three silent attempts
      .OnWrite("FA;", "")
      .OnWrite("FA;", "")
      .OnWrite("FA;", "FA00014070000;");
  EXPECT_EQ(s.radio.SwitchPower("TS-570", true), 1);
  EXPECT_EQ(s.scripted->pendingExpectations(), 0u);
  EXPECT_EQ(s.scripted->writes().size(), 8u);
  // 250 ms after the wake-up, after the second "PS" read, and between the two "FA" reads.
  EXPECT_EQ(s.clock.sleeps(), std::vector<milliseconds>(3, milliseconds(250)));

  ScriptedRadio on(kKenwood, "TS-870");
  on.scripted->OnWrite("PS;", "PS1;").OnWrite("FA;", "FA00014070000;");
  EXPECT_EQ(on.radio.SwitchPower("TS-870", true), 1);
  EXPECT_EQ(on.scripted->AllWritten(), "PS;FA;");

  ScriptedRadio other(kKenwood, "TS-2000");
  EXPECT_EQ(other.radio.SwitchPower("TS-2000", true), 0);
  EXPECT_EQ(other.scripted->AllWritten(), "");

  ScriptedRadio never(kKenwood, "TS-480");  // gives up after sixteen reads of three attempts
  never.scripted->SetResponder([](const std::string&) { return std::string(); });
  EXPECT_EQ(never.radio.SwitchPower("TS-480", true), 1);
  const std::vector<std::string>& writes = never.scripted->writes();
  EXPECT_EQ(std::count(writes.begin(), writes.end(), "FA;"), 16 * 3);
}

}  // namespace
}  // namespace tavlorin
