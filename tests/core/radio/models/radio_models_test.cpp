// The shipped radio definitions against the connection setup's rules, and the reader itself.
#include "radio/radio_models.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "link/manufacturer.h"

namespace tavlorin {
namespace {

using Speeds = std::vector<std::string>;

// The speed list and default each model must offer: the first rule of its family that names it
// (or names no model) applies.
struct SpeedRule {
  int family;
  std::set<std::string> models;
  Speeds speeds;
  std::string selected;
};
const SpeedRule kSpeedRules[] = {
    {kIcom, {}, {"300", "1200", "4800", "9600", "19200"}, "19200"},
    // The K3 generation and the K4 run their serial port faster than the K2's fixed 4800 bit/s.
    {kElecraft, {"K3", "K3S", "KX3", "KX2"}, {"4800", "9600", "19200", "38400"}, "38400"},
    {kElecraft, {"K4"}, {"4800", "9600", "19200", "38400", "57600", "115200"}, "38400"},
    {kElecraft, {}, {"4800"}, "4800"},
    {kKenwood,
     {"TS-50S", "TS-60S", "TS-140S", "TS-450S", "TS-680S", "TS-690S", "TS-790", "TS-850", "TS-940S",
      "TS-950", "R-5000"},
     {"4800"},
     "4800"},
    {kKenwood,
     {"TS-480", "QMX", "QDX", "truSDX", "uSDX"},
     {"9600", "19200", "38400", "57600", "115200"},
     "115200"},
    {kKenwood, {}, {"4800", "9600", "19200", "38400", "57600"}, "57600"},
    {kYaesu, {"FT-847"}, {"4800", "9600", "57600"}, "57600"},
    {kYaesu, {"FT-100", "FT-1000MP MkV"}, {"4800"}, "4800"},
    {kYaesu, {}, {"4800", "9600", "38400"}, "38400"},
    {kTenTec, {}, {"1200", "57600"}, "57600"},
    {kDemonstration, {}, {"57600"}, "57600"},
    {kGeneral, {"PCR-1000"}, {"9600"}, "9600"},
    {kGeneral, {}, {"300", "1200", "4800", "9600", "19200", "38400"}, "38400"},
    {kNrd535, {}, {"4800"}, "4800"},
    {kYaesuAscii, {}, {"4800", "9600", "19200", "38400"}, "4800"},
};

TEST(RadioModelsTest, EveryShippedModelOffersItsCompanysSpeeds) {
  ASSERT_GT(AllRadioModels().size(), 50u) << "the definitions file was not found or not read";
  std::set<std::string> names;
  for (const RadioModel& m : AllRadioModels()) {
    SCOPED_TRACE(m.name);
    EXPECT_TRUE(names.insert(m.name).second) << "listed twice";
    const SpeedRule* rule = nullptr;
    for (const SpeedRule& r : kSpeedRules) {
      if (!rule && r.family == m.manufacturer && (r.models.empty() || r.models.count(m.name))) {
        rule = &r;
      }
    }
    ASSERT_NE(rule, nullptr) << "no such family";
    EXPECT_EQ(m.speeds, rule->speeds);
    EXPECT_EQ(m.defaultSpeed, rule->selected);
    if (!m.commandSet.empty()) {
      const RadioModel* lender = FindRadioModel(m.commandSet);
      ASSERT_NE(lender, nullptr) << "borrows from an unknown model";
      // A demonstration model imitates a real one; any other borrows within its family.
      EXPECT_EQ(lender->manufacturer,
                m.manufacturer == kDemonstration ? ResolvedFamily(m) : m.manufacturer);
      EXPECT_NE(lender->manufacturer, kDemonstration);
    }
  }
}

TEST(RadioModelsTest, TheShippedFileHasNoBadLine) {
  std::ifstream in(std::string(TAVLORIN_SOURCE_DATA_DIR) + "/" + kRadioDefinitionsFile);
  std::stringstream text;
  text << in.rdbuf();
  std::vector<std::string> errors;
  EXPECT_EQ(ParseRadioDefinitions(text.str(), &errors).size(), AllRadioModels().size());
  for (const std::string& e : errors) {
    ADD_FAILURE() << e;
  }
}

TEST(RadioModelsTest, RequiredModelsAndTheirFamilies) {
  const std::string demo = "\xC2\xAE Dem-o-Matic \xC2\xAE";
  const struct {
    std::string company;
    int family;
    std::vector<std::string> models;  // "name" or "name:CI-V address"
  } groups[] = {
      {"ICOM",
       kIcom,
       {"IC-735:04", "IC-706:48", "IC-706MkII:4E", "IC-746:56", "IC-706MkIIG:58", "IC-756Pro:5C",
        "IC-718:5E", "IC-756ProII:64", "IC-746Pro:66", "IC-7400:66", "IC-703:68", "IC-7800:6A",
        "IC-756ProIII:6E", "IC-7300:94", "IC-705:A4", "IC-9700:A2", "IC-7610:98", "IC-R8500:4A",
        "IC-905:AC", "IC-R8600:96"}},
      {"Xiegu", kIcom, {"G90:88", "X6100:70", "X5105:70"}},
      {"QRP Labs", kKenwood, {"QMX", "QDX"}},
      {"(tr)uSDX", kKenwood, {"truSDX", "uSDX"}},
      {"Yaesu",
       kYaesuAscii,
       {"FT-991", "FT-991A", "FT-891", "FT-710", "FTDX10", "FTDX101D", "FTDX101MP", "FTDX3000",
        "FTDX1200", "FT-450D"}},
      {"ICOM", kGeneral, {"PCR-1000"}},
      {"Kenwood",
       kKenwood,
       {"TS-2000", "TS-480", "TS-570", "TS-870", "TS-850", "TS-440S", "TS-590SG", "TS-890S",
        "TS-990S"}},
      {"Elecraft", kElecraft, {"K2", "K3", "K3S", "KX3", "KX2", "K4"}},
      {"Yaesu",
       kYaesu,
       {"FT-100", "FT-600", "FT-817", "FT-847", "FT-900", "FT-920", "FT-990", "FT-1000D",
        "FT-1000MP MkV"}},
      {"Ten-Tec", kTenTec, {"Orion", "Argonaut"}},
      {"General", kNrd535, {"NRD-535"}},
      {demo, kDemonstration, {"Orion: Demo", "K2: Demo", "TS-2000: Demo", "FT-991: Demo"}},
  };
  for (const auto& g : groups) {
    for (const std::string& entry : g.models) {
      SCOPED_TRACE(entry);
      const size_t colon = entry.find(':');
      const bool hasAddress = g.family == kIcom;
      const RadioModel* m = FindRadioModel(hasAddress ? entry.substr(0, colon) : entry);
      ASSERT_NE(m, nullptr);
      EXPECT_EQ(m->company, g.company);
      EXPECT_EQ(m->manufacturer, g.family);
      EXPECT_EQ(m->civAddress, hasAddress ? entry.substr(colon + 1) : "");
    }
  }
  EXPECT_EQ(FindRadioModel("IC-735")->civFrequencyBytes, 4);
  EXPECT_EQ(FindRadioModel("IC-7300")->civFrequencyBytes, 5);
  EXPECT_EQ(FindRadioModel("IC-905")->civFrequencyBytes, 6);
}

TEST(RadioModelsTest, UnknownNamesHaveNoDefinition) {
  for (const char* name : {"", "IC-999", "ic-7300", "IC-7300 ", "FT-817: Demo"}) {
    EXPECT_EQ(FindRadioModel(name), nullptr) << name;
  }
  EXPECT_STREQ(kRadioDefinitionNotFound, "Radio definition not found");
}

TEST(RadioModelsTest, CaptionsAndBorrowedCommandSets) {
  EXPECT_EQ(RadioCaption(*FindRadioModel("IC-7400")), "IC-7400 (IC-746Pro commands)");
  EXPECT_EQ(RadioCaption(*FindRadioModel("FT-857")), "FT-857 (FT-817 commands)");
  EXPECT_EQ(RadioCaption(*FindRadioModel("IC-7300")), "IC-7300");
  EXPECT_EQ(CommandSetOf("FT-897"), "FT-817");
  EXPECT_EQ(CommandSetOf("FT-817"), "FT-817");
  EXPECT_EQ(CommandSetOf("No such radio"), "No such radio");
}

TEST(RadioModelsTest, CompanyListsFollowTheFile) {
  std::vector<std::string> icom;
  for (const RadioModel* m : RadioModelsOfCompany("ICOM")) {
    icom.push_back(m->name);
  }
  EXPECT_EQ(icom.front(), "IC-703");
  EXPECT_NE(std::find(icom.begin(), icom.end(), "PCR-1000"), icom.end());
  EXPECT_TRUE(RadioModelsOfCompany("JRC").empty());
}

TEST(RadioModelsTest, DemonstrationModelsAnswerAsTheModelTheyImitate) {
  const struct {
    const char* model;
    int family;
  } cases[] = {{"Orion: Demo", kTenTec},     {"K2: Demo", kElecraft},
               {"TS-480: Demo", kKenwood},   {"TS-2000: Demo", kKenwood},
               {"PCR-1000: Demo", kGeneral}, {"TS-2000", kKenwood},
               {"FT-991: Demo", kYaesuAscii}};
  for (const auto& c : cases) {
    ASSERT_NE(FindRadioModel(c.model), nullptr) << c.model;
    EXPECT_EQ(ResolvedFamily(*FindRadioModel(c.model)), c.family) << c.model;
  }
  // The demonstration TS-480 inherits the real one's meter quirks.
  EXPECT_EQ(FindRadioModel("TS-480: Demo")->Property("s-meter"), "SM0");
  EXPECT_EQ(RadioCaption(*FindRadioModel("TS-480: Demo")), "TS-480: Demo");
}

TEST(RadioDefinitionsReaderTest, LinesCommentsAndBadLines) {
  const std::string text =
      "# comment\r\n"
      "\r\n"
      "IC-7300|ICOM|1||300,19200|19200|94|5\r\n"  // the format without properties still reads
      "FT-857|Yaesu|4|FT-817|4800,38400|38400|||power=ask\r"
      "FT-817|Yaesu|4||4800|4800|||slots=ft817, power=battery ,vfo-a-is-current\n"
      "K2|Elecraft|2||4800|4800|||";  // last line without an end
  std::vector<std::string> errors;
  std::vector<RadioModel> models = ParseRadioDefinitions(text, &errors);
  EXPECT_TRUE(errors.empty()) << errors.front();
  ASSERT_EQ(models.size(), 4u);
  EXPECT_EQ(models[0].name, "IC-7300");
  EXPECT_EQ(models[0].speeds, (Speeds{"300", "19200"}));
  EXPECT_EQ(models[0].civFrequencyBytes, 5);
  // FT-857 keeps its own power question and inherits the rest of the FT-817's quirks.
  EXPECT_EQ(models[1].Property("power"), "ask");
  EXPECT_EQ(models[1].Property("slots"), "ft817");
  EXPECT_TRUE(models[1].Has("vfo-a-is-current"));
  EXPECT_EQ(models[2].Property("power"), "battery");
  EXPECT_EQ(models[3].name, "K2");
}

TEST(RadioDefinitionsReaderTest, ABadLineIsSkippedWithItsReason) {
  const struct {
    const char* line;
    const char* why;
  } cases[] = {
      {"Bad|ICOM|1||300|19200|94|5", "the default speed \"19200\" is not among"},
      {"Bad|ICOM|99||300|300||", "\"99\" is not a family code"},
      {"Bad|ICOM|1||300|300|94|7", "4 to 6 bytes"},
      {"Bad|ICOM|1||300|300|ZZ|5", "CI-V address \"ZZ\""},
      {"Bad|ICOM|1||300|300", "expected 8 or 9 fields"},
      {"|ICOM|1||300|300||", "the name or the company is empty"},
      {"Bad|Kenwood|3||4800|4800|||s-meters=SM0", "unknown property \"s-meters\""},
      {"Bad|Kenwood|3||4800|4800|||digits=lsb", "\"digits\" does not belong to this family"},
      {"Bad|Yaesu|4||4800|4800|||digits=middle", "\"digits\" takes one of msb|lsb"},
      {"Bad|Yaesu|4||4800|4800|||mode-byte=40", "from 0 to 31, not \"40\""},
      {"Bad|Yaesu|4||4800|4800|||preamble=0x0F", "two hexadecimal digits"},
      {"Bad|Yaesu|4||4800|4800|||short-flags=1", "\"short-flags\" takes no value"},
      {"Bad|Ten-Tec|5||4800|4800|||mode-command=", "\"mode-command\" needs a value"},
      {"Bad|Yaesu|4||4800|4800|||power=ask,power=quiet", "\"power\" is given twice"},
      {"K2|Elecraft|2||4800|4800||", "\"K2\" is listed already"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> errors;
    std::vector<RadioModel> models =
        ParseRadioDefinitions(std::string("K2|Elecraft|2||4800|4800||\n") + c.line, &errors);
    EXPECT_EQ(models.size(), 1u) << c.line;
    ASSERT_EQ(errors.size(), 1u) << c.line;
    EXPECT_EQ(errors[0].rfind("line 2: ", 0), 0u) << errors[0];
    EXPECT_NE(errors[0].find(c.why), std::string::npos) << errors[0];
  }
  std::vector<std::string> errors;
  ParseRadioDefinitions("X1|Yaesu|4|FT-9|4800|4800||", &errors);
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0], "X1 borrows from \"FT-9\", which is not listed");
}

}  // namespace
}  // namespace tavlorin
