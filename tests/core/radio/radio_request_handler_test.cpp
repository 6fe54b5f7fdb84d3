#include "radio/radio_request_handler.h"

#include <gtest/gtest.h>

#include "radio/cat_radio.h"
#include "support/fake_clock.h"
#include "support/scripted_device.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

// A demonstration TS-2000: VFO A 14.235.000, VFO B 3.780.000, memory (the "IF" status)
// 1.000.000.
class RadioRequestHandlerTest : public ::testing::Test {
 protected:
  void SetUp() override { Connect("TS-2000: Demo"); }

  void Connect(const char* model) {
    ConnectParams params;
    params.company = kDemonstration;
    params.model = model;
    std::string id;
    std::string message;
    ASSERT_NE(radio_.Connect(params, &id, &message), 0) << message;
  }

  RadioResult Run(uint32_t code, uint32_t value1 = 0, uint32_t value2 = 0,
                  const std::string& text = {}, const std::string& model = "TS-2000") {
    RadioRequest request;
    request.code = code;
    request.radio = &radio_;
    request.modelName = model;
    request.value1 = value1;
    request.value2 = value2;
    request.text = text;
    RadioResult result;
    result.code = code;
    RadioRequestHandler::Run(request, result);
    return result;
  }

  testing::FakeClock clock_;
  CatRadio radio_{clock_};
};

TEST_F(RadioRequestHandlerTest, FrequencyReadsBySelector) {
  struct Case {
    uint32_t selector;
    const char* model;
    Frequency a, b, current;
  } cases[] = {
      {0, "TS-2000", 14235000, 0, 14235000},
      {1, "TS-2000", 0, 3780000, 3780000},
      {3, "TS-2000", 1000000, 0, 1000000},  // memory: the frequency in the status reply
      {0 | kReadBothVfos, "TS-2000", 14235000, 3780000, 14235000},
      {1 | kReadBothVfos, "TS-2000", 14235000, 3780000, 3780000},
      {3 | kReadBothVfos, "TS-2000", 1000000, 3780000, 1000000},
      // The FT-817 shows VFO A whichever VFO is selected.
      {1 | kReadBothVfos, "FT-817", 14235000, 3780000, 14235000},
  };
  for (const Case& c : cases) {
    RadioResult r = Run(kReadFrequency, c.selector, 0, {}, c.model);
    EXPECT_EQ(r.frequencyA, c.a) << c.selector << " " << c.model;
    EXPECT_EQ(r.frequencyB, c.b) << c.selector << " " << c.model;
    EXPECT_EQ(r.frequencyCurrent, c.current) << c.selector << " " << c.model;
    EXPECT_EQ(r.vfoSelector, c.selector);
    EXPECT_EQ(r.textCurrent, FormatFrequency(c.current));
  }
}

TEST_F(RadioRequestHandlerTest, SettingTheFrequencyReadsItBack) {
  RadioResult r = Run(kSetFrequency, 7074000, 1u << 2);  // VFO B
  EXPECT_EQ(r.frequencyB, 7074000u);
  EXPECT_EQ(r.frequencyCurrent, 7074000u);
  EXPECT_EQ(r.mainMeter.numbers[2], 0) << "no meter read unless asked";
  r = Run(kSetFrequency, 21074000, kSetReadsMeters);
  EXPECT_EQ(r.frequencyA, 21074000u);
  EXPECT_NE(r.mainMeter.numbers[2], 0) << "bit 0 asks for the meters too";
}

TEST_F(RadioRequestHandlerTest, AStepAddsTheSignedStepToTheVfoRead) {
  RadioResult r = Run(kStepFrequency, uint32_t(-5000), 0);
  EXPECT_EQ(r.frequencyA, 14230000u);
  r = Run(kStepFrequency, 100, 1);
  EXPECT_EQ(r.frequencyB, 3780100u);
}

TEST_F(RadioRequestHandlerTest, AStepSetsNothingWhenTheReadFailed) {
  CatRadio silent(clock_);  // no family: the read gives 0
  RadioRequest request;
  request.code = kStepFrequency;
  request.radio = &silent;
  request.value1 = 1000;
  RadioResult result;
  RadioRequestHandler::Run(request, result);
  EXPECT_EQ(result.frequencyA, 0u);
  EXPECT_EQ(result.frequencyCurrent, 0u);
}

int Dropdown(const RadioResult& r, const std::string& name) {
  for (const auto& [n, selection] : r.dropdowns) {
    if (n == name) {
      return selection;
    }
  }
  return -1;
}

TEST_F(RadioRequestHandlerTest, ASliderIsSetByNameThenReadBackForItsSlider) {
  RadioResult r = Run(kSetSlider, 120, 7, "AF Gain");
  EXPECT_EQ(r.value, 120u);
  EXPECT_EQ(r.sliderId, 7u);
  EXPECT_EQ(radio_.values().Get("AG0"), "120");
  r = Run(kReadSlider, 0, 9, "AF Gain");
  EXPECT_EQ(r.value, 120u);
  EXPECT_EQ(r.sliderId, 9u);
}

TEST_F(RadioRequestHandlerTest, DropdownsAndModeSelection) {
  Run(kSelectDropdown, 3, 0, "Mode");
  Run(kSelectDropdown, 500, 0, "Filter");
  Run(kSelectDropdown, 7, 0, "AF Gain");  // not a drop-down: nothing happens
  RadioResult r = Run(kReadDropdowns);
  EXPECT_EQ(Dropdown(r, "Mode"), 3);
  EXPECT_EQ(Dropdown(r, "Filter"), 500);
  EXPECT_EQ(radio_.values().Get("AG0"), "50");
}

TEST_F(RadioRequestHandlerTest, AMacroSendsEachLineInOrder) {
  Run(kRunMacro, 0, 0, "FA00007030000\r\nMD3\n\nFB00010100000");
  EXPECT_EQ(radio_.values().Get("FA"), "00007030000");
  EXPECT_EQ(radio_.values().Get("MD"), "3");
  EXPECT_EQ(radio_.values().Get("FB"), "00010100000");
}

TEST_F(RadioRequestHandlerTest, TheCommandTesterReturnsTheReply) {
  RadioResult r = Run(kSendTester, 0, 0, "FA");
  EXPECT_EQ(r.text, "00014235000");
}

TEST_F(RadioRequestHandlerTest, ElecraftWaitsBeforeReadingBackADropdownSetByCommand) {
  CatRadio k2(clock_);
  ConnectParams params;
  params.company = kDemonstration;
  params.model = "K2: Demo";
  std::string id;
  std::string message;
  ASSERT_NE(k2.Connect(params, &id, &message), 0);
  RadioRequest request;
  request.code = kSetDropdownByCommand;
  request.radio = &k2;
  request.text = "MD%u";
  request.value1 = 3;
  RadioResult result;
  const auto before = clock_.elapsed();
  RadioRequestHandler::Run(request, result);
  EXPECT_EQ(clock_.elapsed() - before, milliseconds(250));
  EXPECT_EQ(Dropdown(result, "Mode"), 3);
}

TEST_F(RadioRequestHandlerTest, ALostPortIsReportedInTheResult) {
  CatRadio radio(clock_);
  radio.manufacturer = kKenwood;
  auto device = std::make_unique<testing::ScriptedDevice>(clock_);
  device->Vanish();
  std::string message;
  ASSERT_TRUE(radio.link().Attach(
      std::move(device), FamilyLineSettings(kKenwood, "9600", false, false, false, 500), &message));
  RadioRequest request;
  request.code = kReadFrequency;
  request.radio = &radio;
  RadioResult result;
  RadioRequestHandler::Run(request, result);
  EXPECT_TRUE(result.linkLost);
  EXPECT_EQ(result.linkLostReason, "Input/output error");
  EXPECT_EQ(result.frequencyCurrent, 0u);
}

}  // namespace
}  // namespace tavlorin
