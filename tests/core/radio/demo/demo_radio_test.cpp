// The demonstration radios through the ordinary operations: Connect with no port, the default
// tables, and every effect a read or write has on the stored state.
#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "radio/cat_radio.h"
#include "radio/demo/demo_defaults.h"
#include "radio/radio_models.h"
#include "support/fake_clock.h"

namespace tavlorin {
namespace {

using testing::FakeClock;

class DemoRadioTest : public ::testing::Test {
 protected:
  // A new radio connected to `model`; the message Connect gave is in `message`.
  CatRadio& Connect(const std::string& model, int company = kDemonstration) {
    radio = std::make_unique<CatRadio>(clock);
    ConnectParams params;
    params.company = company;
    params.model = model;
    std::string id;
    EXPECT_EQ(radio->Connect(params, &id, &message), 1) << model << ": " << message;
    return *radio;
  }
  Frequency Read(int vfo) {
    Frequency hz = 0;
    radio->ReadFrequency(vfo, &hz);
    return hz;
  }

  FakeClock clock;
  std::unique_ptr<CatRadio> radio;
  std::string message;
};

TEST_F(DemoRadioTest, ConnectResolvesTheFamilyAndOpensNoPort) {
  for (auto [model, family] :
       {std::pair{"K2: Demo", kElecraft}, std::pair{"TS-2000: Demo", kKenwood}}) {
    ASSERT_NE(FindRadioModel(model), nullptr) << model;
    CatRadio& r = Connect(model, FindRadioModel(model)->manufacturer);
    EXPECT_EQ(r.manufacturer, family);
    EXPECT_EQ(r.isDemo, 1);
    EXPECT_FALSE(r.link().IsOpen());
    EXPECT_EQ(message, "Frequency = 14.235.000");
    EXPECT_EQ(r.SwitchPower(model, true), 0);
  }
  EXPECT_TRUE(clock.sleeps().empty());  // the first connect attempt answers
}

TEST_F(DemoRadioTest, ElecraftMeterSweepsWithEveryFrequencyRead) {
  Connect("K2: Demo");  // Connect's own read already moved "BG" from 21 to 9
  EXPECT_EQ(radio->values().Get("BG"), "0009");
  EXPECT_EQ(radio->ReadSMeter(0), 9);
  std::vector<int> seen;
  for (int i = 0; i < 13; ++i) {
    Read(0);
    seen.push_back(static_cast<int>(radio->ReadValue("BG", "bar graph")));
  }
  EXPECT_EQ(seen, (std::vector<int>{10, 11, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
  Read(1);  // "FB" reads leave the meter alone
  EXPECT_EQ(radio->values().Get("BG"), "0009");
}

TEST_F(DemoRadioTest, ElecraftWritesAct) {
  Connect("K2: Demo");
  radio->SetValue("SW09", "A/B");
  EXPECT_EQ(FormatFrequency(Read(0)), "3.780.000");
  EXPECT_EQ(FormatFrequency(Read(1)), "14.235.000");
  radio->SetValue("SW10", "A=B");
  EXPECT_EQ(Read(1), 3780000u);

  const std::string nb = radio->ReadString("NB");
  std::vector<std::string> steps;
  for (int i = 0; i < 3; ++i) {
    radio->SetValue("NB", "noise blanker");
    steps.push_back(radio->ReadString("NB"));
  }
  EXPECT_EQ(nb, "11");
  EXPECT_EQ(steps, (std::vector<std::string>{"21", "01", "11"}));

  radio->SetValue("TX", "transmit");
  EXPECT_EQ(radio->ReadString("IF")[26], '1');
  radio->SetValue("RX;", "receive");
  EXPECT_EQ(radio->ReadString("IF")[26], '0');
  radio->SetValue("FW0500", "filter");
  EXPECT_EQ(radio->ReadString("FW"), "05001");
  radio->SetFrequency(2, 7074000);  // Elecraft VFO 2 is VFO A
  EXPECT_EQ(Read(0), 7074000u);
  radio->SetMode(3);
  EXPECT_EQ(radio->ReadMode(), 3);
}

TEST_F(DemoRadioTest, KenwoodTableLaterLinesWin) {
  Connect("TS-2000: Demo");
  EXPECT_EQ(radio->ReadString("RM"), "10000");
  EXPECT_EQ(radio->ReadString("IS"), " 0600");
  EXPECT_EQ(radio->ReadString("FW"), "0000");
  EXPECT_EQ(radio->ReadValue("IS", "IF shift"), 600u);
  EXPECT_EQ(radio->ReadString("MR0002"), "00020005011000021210410000000000000003010M RPT");
  EXPECT_FALSE(radio->values().Has("#  0123456789012345678901234567890123456789"));
  EXPECT_EQ(radio->ReadString("XX"), "");
  EXPECT_EQ(radio->ReadValue("XX", "unknown"), 0u);
}

TEST_F(DemoRadioTest, KenwoodWritesFollowIntoTheStatus) {
  Connect("TS-570: Demo");
  auto status = [&] { return radio->ReadString("IF"); };
  ASSERT_EQ(status().size(), 35u);
  radio->SetValue("TX", "transmit");
  EXPECT_EQ(status()[26], '1');
  radio->SetValue("RX", "receive");
  EXPECT_EQ(status()[26], '0');
  radio->SetMode(7);
  EXPECT_EQ(status()[27], '7');
  EXPECT_EQ(radio->ReadMode(), 7);
  radio->SetValue("FR1", "VFO B");
  EXPECT_EQ(status()[28], '1');
  radio->SetFrequency(2, 21074000);
  EXPECT_EQ(radio->ReadString("FC"), "00021074000");
  // "VV" copies the active VFO (B, by "FR1") to the other.
  radio->SetValue("VV", "A=B");
  EXPECT_EQ(Read(0), 3780000u);
  radio->SetValue("FR0", "VFO A");
  radio->SetFrequency(0, 7030000);
  radio->SetValue("VV", "A=B");
  EXPECT_EQ(Read(1), 7030000u);
  EXPECT_EQ(status().substr(0, 11), "00001000000");  // VFO 2 reads the status frequency
  EXPECT_EQ(Read(2), 1000000u);
}

TEST_F(DemoRadioTest, KenwoodMeterAndReceiverKeysPerModel) {
  struct Case {
    std::string model;
    std::string meterKey;
    unsigned modulus;
    std::string gainKey;  // where a write of "AG0120" is stored
  } cases[] = {
      {"TS-2000: Demo", "SM0", 31, "AG0"},
      {"TS-480: Demo", "SM0", 21, "AG0"},
      {"TS-570: Demo", "SM", 31, "AG"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.model);
    CatRadio& r = Connect(c.model);
    // Connect read "FA" once; each later "FA" or "FB" read moves the meter one step.
    for (unsigned i = 1; i < c.modulus + 3; ++i) {
      EXPECT_EQ(r.ReadSMeter(0), i % c.modulus);
      Frequency hz = 0;
      r.ReadFrequency(i % 2, &hz);
    }
    EXPECT_EQ(r.values().Get(c.meterKey).size(), 4u);
    r.SetValue("AG0120", "AF gain");
    EXPECT_EQ(r.values().Get(c.gainKey), c.gainKey == "AG0" ? "120" : "0120");
    EXPECT_EQ(r.ReadValue("AG0", "AF gain"), c.gainKey == "AG0" ? 120u : 50u);
  }
}

TEST(DemoDefaultsTest, LaterLinesWinCommentsAreSkippedAndALoadReplacesTheTable) {
  ValueMap values;
  LoadDemonstrationDefaults(kTenTec, values);
  EXPECT_EQ(values.Get("?S"), "RM10S5");  // the later "?S" and "?P" lines win
  EXPECT_EQ(values.Get("?P"), "0");
  EXPECT_FALSE(values.Has("#?P"));
  size_t keys = 0;
  for (std::string_view line : DemonstrationTable(kTenTec)) {
    keys += line[0] != '#' ? 1 : 0;
  }
  EXPECT_EQ(values.size(), keys - 2);  // two keys appear twice

  LoadDemonstrationDefaults(kGeneral, values);  // the receiver's own table
  EXPECT_EQ(values.Get("freq"), "0014225000");
  EXPECT_FALSE(values.Has("?S"));
  LoadDemonstrationDefaults(kYaesu, values);
  EXPECT_EQ(values.size(), 0u);
}

}  // namespace
}  // namespace tavlorin
