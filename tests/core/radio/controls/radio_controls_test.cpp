// The control definitions: the command texts, the line reader, which model gets which control,
// and the shipped files.
#include "radio/radio_controls.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "link/manufacturer.h"
#include "shell/definition_file.h"
#include "shell/paths.h"

namespace tavlorin {
namespace {

TEST(ControlCommandTest, TheValueTakesEveryPlaceForIt) {
  const struct {
    const char* text;
    uint32_t value;
    const char* sent;
  } cases[] = {
      {"AG0%03u", 120, "AG0120"},     {"PC%u", 5, "PC5"},
      {"J40%02X", 255, "J40FF"},      {"J40%02x", 10, "J400a"},
      {"FR%u;FT%u;", 1, "FR1;FT1;"},  {"RA%02u", 1, "RA01"},
      {"*RMA%c", 'F', "*RMAF"},       {"XIT%d", uint32_t(-25), "XIT-25"},
      {"FA%011u", 14070000, "FA00014070000"}, {"TX;", 7, "TX;"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FormatControlCommand(c.text, c.value), c.sent) << c.text;
  }
}

TEST(ControlCommandTest, AnyOtherPercentRefusesTheText) {
  // These crashed or read memory when the text was a printf format.
  for (const char* text : {"AG%s;", "AG0%n", "AG0%2000000000u", "100%", "%%", "AG%lu",
                           "AG%12u", "%5c", "%-3u", "%"}) {
    EXPECT_EQ(FormatControlCommand(text, 1), std::nullopt) << text;
  }
  EXPECT_EQ(FormatControlCommand("*RMA%c", 0), std::nullopt) << "no control characters";
  EXPECT_EQ(FormatControlCommand("*RMA%c", ';'), "*RMA;");
}

std::vector<FamilyControl> Parse(int family, std::vector<std::string> lines,
                                 std::vector<std::string>* errors) {
  return ParseControlDefinitions(family, lines, errors);
}

TEST(ControlDefinitionsReaderTest, FieldsAndOptions) {
  std::vector<std::string> errors;
  std::vector<FamilyControl> controls = Parse(
      kKenwood,
      {"# comment", "button|VFO B|VFO B|VFO|TS-2000,TS-480|FR|FR1;FT1; / FR0;FT0;|on=1",
       "button|NB||Receive|*,!TS-440S|NB[0]|NB%u|group2",
       "dropdown|AGC|AGC|Receive|*|GT[0,3]|GT%03u|Fast=2, Slow=4,start",
       "meter|Power out|PO|Meters|*|SM0||tx,max=30",
       "status|Busy|BUSY|Receive|*|BY[0]||off=0,slow"},
      &errors);
  ASSERT_TRUE(errors.empty()) << errors[0];
  ASSERT_EQ(controls.size(), 5u);
  const ControlDefinition& vfo = controls[0].control;
  EXPECT_EQ(vfo.kind, ControlKind::kButton);
  EXPECT_EQ(vfo.poll, ControlPoll::kButtons);
  EXPECT_EQ(vfo.set, "FR1;FT1;");
  EXPECT_EQ(vfo.setOff, "FR0;FT0;");
  EXPECT_TRUE(vfo.IsOn(1));
  EXPECT_FALSE(vfo.IsOn(2)) << "only the on value is on";
  EXPECT_EQ(controls[0].models, (std::vector<std::string>{"TS-2000", "TS-480"}));
  const ControlDefinition& nb = controls[1].control;
  EXPECT_EQ(nb.caption, "NB") << "an empty caption is the name";
  EXPECT_EQ(nb.poll, ControlPoll::kButtons2);
  EXPECT_EQ(nb.ValueFor(true), 1u);
  EXPECT_EQ(controls[1].excluded, (std::vector<std::string>{"TS-440S"}));
  const ControlDefinition& agc = controls[2].control;
  EXPECT_EQ(agc.poll, ControlPoll::kStart);
  ASSERT_EQ(agc.choices.size(), 2u);
  EXPECT_EQ(agc.ChoiceOf(4)->caption, "Slow");
  EXPECT_EQ(agc.ChoiceOf(3), nullptr);
  EXPECT_EQ(controls[3].control.poll, ControlPoll::kTxMeters);
  EXPECT_EQ(controls[3].control.max, 30u);
  EXPECT_EQ(controls[4].control.poll, ControlPoll::kSlow);
  EXPECT_TRUE(controls[4].control.IsOn(1));
  EXPECT_FALSE(controls[4].control.IsOn(0));
}

TEST(ControlDefinitionsReaderTest, ABadLineIsSkippedWithItsReason) {
  const struct {
    int family;
    const char* line;
    const char* why;
  } cases[] = {
      {kKenwood, "buton|X|X|G|*|FA||", "unknown kind \"buton\""},
      {kKenwood, "button|X|X|G|*|FA|", "expected 8 fields"},
      {kKenwood, "button||X|G|*|FA||", "no name"},
      {kKenwood, "button|X|X|G|*|||", "neither be read nor set"},
      {kKenwood, "slider|AF|AF|G|*|AG|AG%s;|", "\"AG%s;\" has a \"%\""},
      {kKenwood, "button|X|X|G|*|status:16-02||", "cannot read a control of this family"},
      {kKenwood, "button|X|X|G|*|IF[2,x]||", "is not \"start\""},
      {kKenwood, "button|X|X|G|*,TS-2000|FR||", "\"*\" and model names together"},
      {kKenwood, "dropdown|M|M|G|*|MD|MD%u|", "needs its choices"},
      {kKenwood, "dropdown|M|M|G|*|MD|MD%u|LSB=one", "is not \"Caption=N\""},
      {kKenwood, "meter|S|S|G|*||SM%u|", "needs a read"},
      {kKenwood, "slider|AF|AF|G|*|AG|AG%03u|group2", "does not fit a control of this kind"},
      {kKenwood, "slider|AF|AF|G|*|AG|AG%03u / AG000|", "only a button"},
      {kKenwood, "slider|AF|AF|G|*|AG|AG%03u|min=9,max=3", "min is above max"},
      {kIcom, "button|X|X|G|*|status:1G||", "not one or two hexadecimal bytes"},
      {kIcom, "button|X|X|G|*|IF[26]||", "reply fields are for the ASCII command families"},
      {kIcom, "button|X|X|G|*|1A-05-ZZ||", "not up to four hexadecimal bytes"},
      {kIcom, "button|X|X|G|*||cmd:02|", "cannot set a control of this family"},
      {kIcom, "slider|X|X|G|*||14-01-00-00-01|", "not up to four hexadecimal bytes"},
      {kYaesu, "button|X|X|G|*|FA||", "only with the words mode, filter and smeter"},
      {kYaesu, "button|X|X|G|*||00-00-81|", "not five hexadecimal bytes"},
      {kYaesu, "button|X|X|G|*||state:0F|", "cannot set a control of this family"},
      {kYaesu, "meter|X|X|G|*|smeter:3||", "0, 1 or 2"},
      {kNrd535, "dropdown|M|M|G|*|mode|mode|A=1", "cannot set a control of this family"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> errors;
    EXPECT_TRUE(Parse(c.family, {"# one", c.line}, &errors).empty()) << c.line;
    ASSERT_EQ(errors.size(), 1u) << c.line;
    EXPECT_EQ(errors[0].rfind("line 2: ", 0), 0u) << errors[0];
    EXPECT_NE(errors[0].find(c.why), std::string::npos) << errors[0];
  }
}

TEST(ControlDefinitionsTest, EachModelGetsTheControlsMeantForIt) {
  const struct {
    const char* model;
    int family;
    const char* control;
    const char* read;  // nullptr: the model has no such control
  } cases[] = {
      {"TS-2000", kKenwood, "AF Gain", "AG0"},
      {"TS-590S", kKenwood, "AF Gain", "AG0"},  // borrows the TS-2000's commands
      {"TS-570", kKenwood, "AF Gain", "AG"},
      {"TS-850", kKenwood, "AF Gain", nullptr},
      {"TS-850", kKenwood, "VFO B", "IF[28]"},
      {"TS-480", kKenwood, "S-meter", "smeter"},
      {"TS-440S", kKenwood, "S-meter", nullptr},
      {"TS-2000: Demo", kKenwood, "Sub S-meter", "SM1"},
      {"IC-7300", kIcom, "TX", "status:1C-00"},
      {"IC-735", kIcom, "AF Gain", nullptr},
      {"IC-735", kIcom, "MEM", ""},
      {"FT-857", kYaesu, "Split", ""},
      {"FT-1000MP MkV", kYaesu, "Sub S-meter", "smeter:1"},
      {"Orion", kTenTec, "AGC", "RMA[0,char]"},
      {"Orion: Demo", kTenTec, "VFO B", "KV[0,char]"},
      {"K2", kElecraft, "A/B", ""},
      {"PCR-1000", kGeneral, "AF Gain", ""},
      // The Yaesu ASCII radios: the memory flag sits where the model's frequency width puts it.
      {"FT-991A", kYaesuAscii, "MEM", "IF[20]"},
      {"FTDX3000", kYaesuAscii, "MEM", "IF[19]"},
      {"FT-991: Demo", kYaesuAscii, "Split", "FT"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.model) + " " + c.control);
    const RadioModel* model = FindRadioModel(c.model);
    ASSERT_NE(model, nullptr);
    const ControlDefinition* control = ControlsForModel(c.family, *model)->Find(c.control);
    if (c.read == nullptr) {
      EXPECT_EQ(control, nullptr);
    } else {
      ASSERT_NE(control, nullptr);
      EXPECT_EQ(control->read, c.read);
    }
  }
  // The first line of a name that fits a model counts: the TS-480's meter has its own scale.
  EXPECT_EQ(ControlsForModel(kKenwood, *FindRadioModel("TS-480"))->Find("S-meter")->max, 20u);
  EXPECT_EQ(ControlsForModel(kKenwood, *FindRadioModel("TS-570"))->Find("S-meter")->max, 30u);
  EXPECT_TRUE(ControlsForModel(kDemonstration, *FindRadioModel("TS-570"))->empty());
}

TEST(ControlDefinitionsTest, EveryShippedFileReadsWithoutABadLine) {
  for (int family : kFamilies) {
    const std::string name = ControlFileName(family);
    if (family == kDemonstration) {
      EXPECT_EQ(name, "");
      continue;
    }
    SCOPED_TRACE(name);
    std::vector<std::string> lines;
    ASSERT_TRUE(ReadDefinitionFile(std::string(TAVLORIN_SOURCE_DATA_DIR) + "/" + name,
                                   [&](std::string_view line) { lines.emplace_back(line); })
                    .ok());
    std::vector<std::string> errors;
    EXPECT_FALSE(ParseControlDefinitions(family, lines, &errors).empty());
    for (const std::string& e : errors) {
      ADD_FAILURE() << e;
    }
  }
}

TEST(ControlDefinitionsTest, AUsersCopyWinsOverTheShippedFile) {
  const std::filesystem::path copy = DataDir() / ControlFileName(kElecraft);
  ASSERT_TRUE(WriteDefinitionFile(copy, 17, {"slider|Keyer|WPM|CW|*|KS|KS%03u|max=50"}).ok());
  ReloadControlDefinitions();
  std::shared_ptr<const ModelControls> k2 = ControlsForModel(kElecraft, *FindRadioModel("K2"));
  std::filesystem::remove(copy);
  ReloadControlDefinitions();
  ASSERT_EQ(k2->all().size(), 1u);
  EXPECT_EQ(k2->all()[0].name, "Keyer");
  EXPECT_NE(ControlsForModel(kElecraft, *FindRadioModel("K2"))->Find("VFO B"), nullptr)
      << "the shipped file again once the copy is gone";
}

}  // namespace
}  // namespace tavlorin
