#include "radio/cat_radio.h"

#include <gtest/gtest.h>

#include "support/fake_clock.h"
#include "support/pty_radio.h"
#include "support/scripted_device.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::FakeClock;
using testing::ScriptedDevice;

TEST(FormatFrequency, InsertsTheDotsOfTheDisplay) {
  struct {
    Frequency hz;
    const char* text;
  } cases[] = {
      {0, "0"},
      {999, "999"},
      {1234, "1.234"},
      {7060430, "7.060.430"},
      {14070000, "14.070.000"},
      {144300000, "144.300.000"},
      {2999999999u, "2999.999.999"},
      {4294967295u, "4294.967.295"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FormatFrequency(c.hz), c.text) << c.hz;
  }
  EXPECT_EQ(FormatFrequency(14070000.9), "14.070.000") << "the fraction is cut, not rounded";
  EXPECT_EQ(FormatFrequency(12.0), "12");
}

TEST(NoRadioFrequency, TheFourAnswersOfASilentRadio) {
  for (Frequency hz : {0u, 0xFFFFFFFFu, 0x0000FFFFu, 0xFFFF0000u}) {
    EXPECT_TRUE(IsNoRadioFrequency(hz)) << hz;
  }
  for (Frequency hz : {1u, 0xFFFFu + 1u, 14070000u, 0xFFFEFFFFu}) {
    EXPECT_FALSE(IsNoRadioFrequency(hz)) << hz;
  }
}

class CatRadioTest : public ::testing::Test {
 protected:
  // Attaches a scripted port as the radio's link, for family `family`.
  ScriptedDevice& AttachPort(int family) {
    radio_.manufacturer = family;
    auto owned = std::make_unique<ScriptedDevice>(clock_);
    ScriptedDevice& device = *owned;
    std::string message;
    EXPECT_TRUE(radio_.link().Attach(
        std::move(owned), FamilyLineSettings(family, "9600", false, false, false, 500), &message));
    return device;
  }

  FakeClock clock_;
  CatRadio radio_{clock_};
};

TEST_F(CatRadioTest, UnknownFamiliesAnswerTheDefaultsAndSendNothing) {
  for (int family : {0, 6, 10, -1}) {
    ScriptedDevice& port = AttachPort(family);
    Frequency hz = 123;
    std::string text;
    EXPECT_EQ(radio_.SetFrequency(0, 14070000), 1) << family;
    EXPECT_EQ(radio_.ReadFrequency(0, &hz, &text), 0u);
    EXPECT_EQ(hz, 123u) << "a failed read leaves the caller's value";
    EXPECT_EQ(text, "123") << "the text is formatted even after a failed read";
    EXPECT_EQ(radio_.ReadMode(), 0);
    EXPECT_EQ(radio_.SetMode(2), 0);
    EXPECT_EQ(radio_.ReadSMeter(0), 0);
    EXPECT_EQ(radio_.ReadValue("FA", "test"), 0u);
    EXPECT_EQ(radio_.SetValue("FA", "test"), 0);
    EXPECT_EQ(radio_.ReadString("FA"), "");
    EXPECT_TRUE(port.writes().empty()) << family;
  }
}

TEST_F(CatRadioTest, OperationsAFamilyDoesNotHaveSendNothing) {
  struct Case {
    int family;
    const char* what;
  } cases[] = {{kGeneral, "SetMode"},   {kNrd535, "SetMode"},
               {kGeneral, "ReadValue"}, {kKenwood, "SetFilter"},
               {kYaesu, "SetVfo"},      {kIcom, "SetCommandState"},
               {kIcom, "ReadString"},   {kYaesu, "ReadValue other than mode and filter"}};
  for (const Case& c : cases) {
    ScriptedDevice& port = AttachPort(c.family);
    const std::string what = c.what;
    int result = -1;
    if (what == "SetMode") {
      result = radio_.SetMode(1);
    } else if (what == "ReadValue") {
      result = int(radio_.ReadValue("H1", "power"));
    } else if (what == "SetFilter") {
      result = radio_.SetFilter(1);
    } else if (what == "SetVfo") {
      result = radio_.SetVfo(7, 0);
    } else if (what == "SetCommandState") {
      result = radio_.SetCommandState(1, 1);
    } else if (what == "ReadString") {
      result = int(radio_.ReadString("03").size());
    } else {
      result = int(radio_.ReadValue("meter", "meter"));
    }
    EXPECT_EQ(result, 0) << c.family << " " << what;
    EXPECT_TRUE(port.writes().empty()) << c.family << " " << what;
  }
}

TEST_F(CatRadioTest, ConnectGivesUpAfterThreeAttemptsWithGrowingWaits) {
  // A radio that answers every frequency read with 0xFFFF0000: the sign of an interface that
  // answers with no radio behind it.
  testing::LineSimulator sim(';', [](const std::string& command) {
    return command == "FA;" ? std::string("FA04294901760;") : std::string();
  });
  testing::PtyRadio pty(sim);
  ASSERT_TRUE(pty.ok());
  ConnectParams params;
  params.company = kKenwood;
  params.model = "TS-2000";
  params.port = pty.path();
  params.speed = "9600";
  std::string identification;
  std::string message;
  EXPECT_EQ(radio_.Connect(params, &identification, &message), 0);
  EXPECT_EQ(message, "Failed to read frequency");
  EXPECT_EQ(clock_.sleeps(), (std::vector<milliseconds>{milliseconds(250), milliseconds(500)}))
      << "waits before the second and third attempts";
  EXPECT_TRUE(radio_.link().IsOpen()) << "the caller closes it with Disconnect";
  radio_.Disconnect();
  EXPECT_FALSE(radio_.link().IsOpen());
}

TEST_F(CatRadioTest, APortThatCannotBeOpenedFailsBeforeAnyAttempt) {
  ConnectParams params;
  params.company = kKenwood;
  params.model = "TS-2000";
  params.port = "/dev/ttyTAVLORIN-none";
  params.speed = "9600";
  std::string identification;
  std::string message;
  EXPECT_EQ(radio_.Connect(params, &identification, &message), 0);
  EXPECT_EQ(message, "No such file or directory");
  EXPECT_TRUE(radio_.link().deviceRefused());
  EXPECT_TRUE(clock_.sleeps().empty()) << "no read attempt without a port";
}

TEST_F(CatRadioTest, ADemonstrationRadioOpensNoPortAndResolvesItsFamily) {
  struct Case {
    const char* model;
    int family;
  } cases[] = {{"Orion: Demo", kTenTec},
               {"K2: Demo", kElecraft},
               {"TS-480: Demo", kKenwood},
               {"TS-2000: Demo", kKenwood}};
  for (const Case& c : cases) {
    CatRadio radio(clock_);
    ConnectParams params;
    params.company = kDemonstration;
    params.model = c.model;
    params.port = "/dev/ttyTAVLORIN-none";  // never opened for a demonstration radio
    std::string identification = "unchanged";
    std::string message;
    radio.Connect(params, &identification, &message);
    EXPECT_EQ(radio.manufacturer, c.family) << c.model;
    EXPECT_TRUE(radio.isDemo) << c.model;
    EXPECT_FALSE(radio.link().deviceRefused()) << c.model;
    EXPECT_EQ(identification, "unchanged");
  }
}

TEST_F(CatRadioTest, TheCivAddressIsParsedAsHexadecimal) {
  struct {
    const char* text;
    uint8_t address;
  } cases[] = {{"5C", 0x5C}, {"94", 0x94}, {"a4", 0xA4}, {"", 0}, {"zz", 0}};
  for (const auto& c : cases) {
    CatRadio radio(clock_);
    ConnectParams params;
    params.company = kIcom;
    params.port = "/dev/ttyTAVLORIN-none";
    params.speed = "19200";
    params.civAddress = c.text;
    std::string id;
    std::string message;
    radio.Connect(params, &id, &message);
    EXPECT_EQ(radio.civAddress, c.address) << c.text;
    EXPECT_EQ(radio.civControllerAddress, 0xE0);
  }
}

TEST_F(CatRadioTest, RemoteWithoutAChosenComputerIsAUserAbort) {
  ConnectParams params;
  params.company = kIcom;
  params.port = "remote";
  std::string id;
  std::string message;
  EXPECT_EQ(radio_.Connect(params, &id, &message), 0);
  EXPECT_EQ(message, "User abort");
  radio_.SetRemoteSelector([] { return std::string(); });
  EXPECT_EQ(radio_.Connect(params, &id, &message), 0);
  EXPECT_EQ(message, "User abort");
}

TEST_F(CatRadioTest, SwitchingOffAsksFirstAndANoSendsNothing) {
  struct Case {
    const char* model;
    const char* text;
  } cases[] = {
      {"TS-480", "Switch off your Radio?"},
      {"TS-870", "Switch off your Radio?"},
      {"FT-817",
       "Switch off your FT-817?\n\nNote:\nDo not use this command when using Alkaline "
       "batteries\nor the optional FNB-72 Ni-Cd battery Pack."},
  };
  for (const Case& c : cases) {
    ScriptedDevice& port = AttachPort(std::string(c.model) == "FT-817" ? kYaesu : kKenwood);
    std::string title;
    std::string text;
    radio_.SetYesNoQuestion([&](const std::string& t, const std::string& x) {
      title = t;
      text = x;
      return false;
    });
    EXPECT_EQ(radio_.SwitchPower(c.model, false), 0) << c.model;
    EXPECT_EQ(title, "Closing...");
    EXPECT_EQ(text, c.text);
    EXPECT_TRUE(port.writes().empty());
  }
}

TEST_F(CatRadioTest, PowerSwitchingIsRefusedForOtherModelsAndDemonstrations) {
  bool asked = false;
  radio_.SetYesNoQuestion([&](const std::string&, const std::string&) { return asked = true; });
  EXPECT_EQ(radio_.SwitchPower("TS-2000", false), 0);
  EXPECT_EQ(radio_.SwitchPower("IC-7300", true), 0);
  radio_.isDemo = 1;
  EXPECT_EQ(radio_.SwitchPower("TS-480", false), 0);
  EXPECT_FALSE(asked);
}

}  // namespace
}  // namespace tavlorin
