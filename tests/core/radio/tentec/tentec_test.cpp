// Ten-Tec radios: the codec, the Orion over a pseudo-terminal, and the demonstration Orion
// answering from its value table.
#include <gtest/gtest.h>

#include "radio/cat_radio.h"
#include "radio/tentec/tentec_codec.h"
#include "support/sim_line_radios.h"

namespace tavlorin {
namespace {

using testing::PtyParams;
using testing::PtyRadio;
using testing::SimOrion;

TEST(TenTecCodecTest, FrequencyCommandsAndValues) {
  EXPECT_EQ(TenTecFrequencyCommand(0, 14070000), "*A00D6B0F0");
  EXPECT_EQ(TenTecFrequencyCommand(1, 3780000), "*B0039ADA0");
  EXPECT_EQ(ParseTenTecFrequency("00D93578"), 14235000u);
  EXPECT_EQ(ParseTenTecFrequency("0039ADA0"), 3780000u);
  for (const char* bad : {"", "00D9357G", "100D93578", "-0000001", " 00D9357"}) {
    EXPECT_FALSE(ParseTenTecFrequency(bad)) << bad;
  }
  // A real Orion: decimal hertz.
  EXPECT_EQ(TenTecDecimalFrequencyCommand(0, 14070000), "*AF14070000");
  EXPECT_EQ(TenTecDecimalFrequencyCommand(1, 3780000), "*BF3780000");
  EXPECT_EQ(ParseTenTecDecimalFrequency("14074000"), 14074000u);
  EXPECT_EQ(ParseTenTecDecimalFrequency("00475000"), 475000u);
  for (const char* bad : {"", "0", "1407400O", "-7000000", "+7000000", " 7000000", "99999999999",
                          "4294967296", "00D6B0F0"}) {
    EXPECT_FALSE(ParseTenTecDecimalFrequency(bad)) << bad;
  }
}

TEST(TenTecCodecTest, NumbersAndMeters) {
  struct Case {
    const char* text;
    std::optional<int32_t> value;
  } numbers[] = {{"2500", 2500}, {"+250", 250},       {"-50", -50},       {"03e8", 1000},
                 {"F", 15},      {"M", std::nullopt}, {"", std::nullopt}, {"5.0", std::nullopt}};
  for (const auto& c : numbers) {
    EXPECT_EQ(ParseTenTecNumber(c.text), c.value) << c.text;
  }
  EXPECT_EQ(ParseTenTecSMeter("RM10S5"), 10);
  EXPECT_EQ(ParseTenTecSMeter("RM300S0"), 255);
  EXPECT_EQ(ParseTenTecSMeter("06800101"), 6);
  EXPECT_EQ(ParseTenTecSMeter("Z"), 0);
  EXPECT_EQ(TenTecQueryForm("*RMF"), "?RMF");
  EXPECT_EQ(TenTecQueryForm("RMF"), "?RMF");
  EXPECT_EQ(TenTecQueryForm("?RMF"), "?RMF");
}

TEST(TenTecPtyTest, OrionConnectsTunesAndReads) {
  SimOrion sim;
  PtyRadio pty(sim);
  CatRadio radio;
  std::string id, message;
  ASSERT_EQ(radio.Connect(PtyParams(kTenTec, "Orion", pty, "57600"), &id, &message), 1) << message;
  EXPECT_EQ(message, "Frequency = 14.070.000");
  EXPECT_NE(pty.Received().find("?V\r"), std::string::npos);  // woken before the read

  // Both VFOs, each by its own command, in decimal hertz.
  Frequency hz = 0;
  EXPECT_EQ(radio.ReadFrequency(1, &hz), 1u);
  EXPECT_EQ(hz, 7060000u);
  EXPECT_EQ(radio.SetFrequency(0, 7060430), 1);
  EXPECT_EQ(radio.SetFrequency(1, 10136000), 1);
  EXPECT_EQ(radio.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 7060430u);
  EXPECT_EQ(radio.ReadFrequency(1, &hz), 1u);
  EXPECT_EQ(hz, 10136000u);
  EXPECT_EQ(sim.Get("AF"), "7060430");
  EXPECT_EQ(sim.Get("BF"), "10136000");

  EXPECT_EQ(radio.SetMode(3), 1);
  EXPECT_EQ(radio.ReadMode(), 3);
  EXPECT_EQ(radio.ReadSMeter(0), 24);
  EXPECT_EQ(radio.ReadValue("?RMF", "filter"), 2400u);
  EXPECT_EQ(radio.SetValue("*RMF1800", "filter"), 1);
  EXPECT_EQ(radio.ReadValue("RMF", "filter"), 1800u);
  EXPECT_EQ(static_cast<int32_t>(radio.ReadValue("?RMP", "pbt")), -50);
  EXPECT_EQ(radio.ReadString("?V"), "Version 2.062");
  // A query the radio does not know is not answered: 0, nothing kept.
  EXPECT_EQ(radio.ReadValue("?ZZ", "unknown"), 0u);
  EXPECT_EQ(radio.ReadFrequency(0, &hz), 1u);  // and the line is still in step
  EXPECT_EQ(hz, 7060430u);
}

TEST(TenTecPtyTest, SilentOrGarbledRadioFailsCleanly) {
  SimOrion sim;
  sim.Set("AF", "XYZ");
  PtyRadio pty(sim);
  CatRadio radio;
  std::string id, message;
  EXPECT_EQ(radio.Connect(PtyParams(kTenTec, "Orion", pty, "57600"), &id, &message), 0);
  EXPECT_EQ(message, "Failed to read frequency");
  pty.Hangup();
  Frequency hz = 9;
  EXPECT_EQ(radio.ReadFrequency(0, &hz), 0u);
  EXPECT_EQ(hz, 0u);
  EXPECT_EQ(radio.ReadSMeter(0), 0);
}

class TenTecDemoTest : public ::testing::Test {
 protected:
  void SetUp() override {
    radio_.manufacturer = kTenTec;
    radio_.modelName = "Orion";
    radio_.isDemo = 1;
    radio_.values().LoadLines({"#   Default TenTec values", "?A=00D93578", "?B=0039ADA0", "?M=04",
                               "?S=06800101", "?V=Wombat", "?S=RM10S5", "?RMM=0", "?RMF=2500",
                               "?RMP=+250", "?RMA=F", "?RMAD=10"});
  }
  CatRadio radio_;
};

TEST_F(TenTecDemoTest, ReadsComeFromTheTable) {
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 14235000u);
  EXPECT_EQ(radio_.ReadMode(), 0);
  EXPECT_EQ(radio_.ReadSMeter(0), 10);  // the later "?S" line wins
  EXPECT_EQ(radio_.ReadValue("?RMF", "filter"), 2500u);
  EXPECT_EQ(radio_.ReadValue("?RMP", "pbt"), 250u);
  EXPECT_EQ(radio_.ReadString("?V"), "Wombat");
  EXPECT_EQ(radio_.ReadValue("?NOPE", "missing"), 0u);
}

TEST_F(TenTecDemoTest, WritesAreStoredUnderTheQueryForm) {
  EXPECT_EQ(radio_.SetFrequency(0, 14070000), 1);
  EXPECT_EQ(radio_.values().Get("?A"), "00D6B0F0");
  Frequency hz = 0;
  radio_.ReadFrequency(0, &hz);
  EXPECT_EQ(hz, 14070000u);
  EXPECT_EQ(radio_.SetMode(4), 1);
  EXPECT_EQ(radio_.values().Get("?RMM"), "4");
  EXPECT_EQ(radio_.SetValue("*RMAD20", "agc"), 1);  // longest known key: RMAD, not RMA
  EXPECT_EQ(radio_.values().Get("?RMAD"), "20");
  EXPECT_EQ(radio_.values().Get("?RMA"), "F");
  EXPECT_EQ(radio_.SetValue("*RMAS", "agc"), 1);  // RMA takes "S"
  EXPECT_EQ(radio_.values().Get("?RMA"), "S");
  EXPECT_EQ(radio_.SetValue("*KY12", "new"), 1);  // a new key ends at its first digit
  EXPECT_EQ(radio_.values().Get("?KY"), "12");
  EXPECT_FALSE(radio_.link().IsOpen());  // nothing ever went to a port
}

}  // namespace
}  // namespace tavlorin
