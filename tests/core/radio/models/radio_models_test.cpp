// The shipped radio definitions against the connection setup's rules, and the reader itself.
#include "radio/radio_models.h"

#include <gtest/gtest.h>

#include <set>

#include "link/manufacturer.h"

namespace tavlorin {
namespace {

using Speeds = std::vector<std::string>;

// The speed list and default each model must offer, by company and model.
std::pair<Speeds, std::string> ExpectedSpeeds(const RadioModel& m) {
  static const std::set<std::string> kenwood4800 = {"TS-50S",  "TS-60S",  "TS-140S", "TS-450S",
                                                    "TS-680S", "TS-690S", "TS-790",  "TS-850",
                                                    "TS-940S", "TS-950",  "R-5000"};
  switch (m.manufacturer) {
    case kIcom:
      return {{"300", "1200", "4800", "9600", "19200"}, "19200"};
    case kElecraft:
      return {{"4800"}, "4800"};
    case kKenwood:
      if (kenwood4800.count(m.name) != 0) {
        return {{"4800"}, "4800"};
      }
      if (m.name == "TS-480") {
        return {{"9600", "19200", "38400", "57600", "115200"}, "115200"};
      }
      return {{"4800", "9600", "19200", "38400", "57600"}, "57600"};
    case kYaesu:
      if (m.name == "FT-847") {
        return {{"4800", "9600", "57600"}, "57600"};
      }
      if (m.name == "FT-100" || m.name == "FT-1000MP MkV") {
        return {{"4800"}, "4800"};
      }
      return {{"4800", "9600", "38400"}, "38400"};
    case kTenTec:
      return {{"1200", "57600"}, "57600"};
    case kDemonstration:
      return {{"57600"}, "57600"};
    case kGeneral:
      if (m.name == "PCR-1000") {
        return {{"9600"}, "9600"};
      }
      return {{"300", "1200", "4800", "9600", "19200", "38400"}, "38400"};
    case kNrd535:
      return {{"4800"}, "4800"};
    default:
      return {};
  }
}

TEST(RadioModelsTest, EveryShippedModelOffersItsCompanysSpeeds) {
  ASSERT_GT(AllRadioModels().size(), 50u) << "the definitions file was not found or not read";
  std::set<std::string> names;
  for (const RadioModel& m : AllRadioModels()) {
    SCOPED_TRACE(m.name);
    EXPECT_TRUE(names.insert(m.name).second) << "listed twice";
    auto [speeds, selected] = ExpectedSpeeds(m);
    EXPECT_EQ(m.speeds, speeds);
    EXPECT_EQ(m.defaultSpeed, selected);
    if (!m.commandSet.empty()) {
      const RadioModel* lender = FindRadioModel(m.commandSet);
      ASSERT_NE(lender, nullptr) << "borrows from an unknown model";
      EXPECT_EQ(lender->manufacturer, m.manufacturer);
    }
  }
}

TEST(RadioModelsTest, RequiredModelsAndTheirFamilies) {
  struct Case {
    const char* name;
    const char* company;
    int family;
    const char* address;
  } cases[] = {
      {"IC-735", "ICOM", kIcom, "04"},
      {"IC-706", "ICOM", kIcom, "48"},
      {"IC-706MkII", "ICOM", kIcom, "4E"},
      {"IC-746", "ICOM", kIcom, "56"},
      {"IC-706MkIIG", "ICOM", kIcom, "58"},
      {"IC-756Pro", "ICOM", kIcom, "5C"},
      {"IC-718", "ICOM", kIcom, "5E"},
      {"IC-756ProII", "ICOM", kIcom, "64"},
      {"IC-746Pro", "ICOM", kIcom, "66"},
      {"IC-7400", "ICOM", kIcom, "66"},
      {"IC-703", "ICOM", kIcom, "68"},
      {"IC-7800", "ICOM", kIcom, "6A"},
      {"IC-756ProIII", "ICOM", kIcom, "6E"},
      {"IC-7300", "ICOM", kIcom, "94"},
      {"IC-705", "ICOM", kIcom, "A4"},
      {"IC-9700", "ICOM", kIcom, "A2"},
      {"IC-7610", "ICOM", kIcom, "98"},
      {"IC-R8500", "ICOM", kIcom, "4A"},
      {"PCR-1000", "ICOM", kGeneral, ""},
      {"TS-2000", "Kenwood", kKenwood, ""},
      {"TS-480", "Kenwood", kKenwood, ""},
      {"TS-570", "Kenwood", kKenwood, ""},
      {"TS-870", "Kenwood", kKenwood, ""},
      {"TS-850", "Kenwood", kKenwood, ""},
      {"TS-440S", "Kenwood", kKenwood, ""},
      {"K2", "Elecraft", kElecraft, ""},
      {"K3", "Elecraft", kElecraft, ""},
      {"FT-100", "Yaesu", kYaesu, ""},
      {"FT-600", "Yaesu", kYaesu, ""},
      {"FT-817", "Yaesu", kYaesu, ""},
      {"FT-847", "Yaesu", kYaesu, ""},
      {"FT-900", "Yaesu", kYaesu, ""},
      {"FT-920", "Yaesu", kYaesu, ""},
      {"FT-990", "Yaesu", kYaesu, ""},
      {"FT-1000D", "Yaesu", kYaesu, ""},
      {"FT-1000MP MkV", "Yaesu", kYaesu, ""},
      {"Orion", "Ten-Tec", kTenTec, ""},
      {"Argonaut", "Ten-Tec", kTenTec, ""},
      {"NRD-535", "General", kNrd535, ""},
      {"Orion: Demo", "\xC2\xAE Dem-o-Matic \xC2\xAE", kDemonstration, ""},
      {"K2: Demo", "\xC2\xAE Dem-o-Matic \xC2\xAE", kDemonstration, ""},
      {"TS-2000: Demo", "\xC2\xAE Dem-o-Matic \xC2\xAE", kDemonstration, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const RadioModel* m = FindRadioModel(c.name);
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->company, c.company);
    EXPECT_EQ(m->manufacturer, c.family);
    EXPECT_EQ(m->civAddress, c.address);
  }
  EXPECT_EQ(FindRadioModel("IC-735")->civFrequencyBytes, 4);
  EXPECT_EQ(FindRadioModel("IC-7300")->civFrequencyBytes, 5);
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

TEST(RadioDefinitionsReaderTest, LinesCommentsAndBadLines) {
  const std::string text =
      "# comment\r\n"
      "\r\n"
      "IC-7300|ICOM|1||300,19200|19200|94|5\r\n"
      "FT-857|Yaesu|4|FT-817|4800,38400|38400||\r"
      "Bad|ICOM|1||300|19200|94|5\n"  // default speed not offered
      "Bad|ICOM|9||300|300||\n"       // no such family
      "Bad|ICOM|1||300|300|94|6\n"    // six frequency bytes
      "Bad|ICOM|1||300|300\n"         // fields missing
      "|ICOM|1||300|300||\n"          // no name
      "K2|Elecraft|2||4800|4800||";   // last line without an end
  std::vector<std::string> errors;
  std::vector<RadioModel> models = ParseRadioDefinitions(text, &errors);
  ASSERT_EQ(models.size(), 3u);
  EXPECT_EQ(models[0].name, "IC-7300");
  EXPECT_EQ(models[0].speeds, (Speeds{"300", "19200"}));
  EXPECT_EQ(models[1].commandSet, "FT-817");
  EXPECT_EQ(models[1].civFrequencyBytes, 5);
  EXPECT_EQ(models[2].name, "K2");
  ASSERT_EQ(errors.size(), 5u);
  EXPECT_EQ(errors[0], "line 5 is not a radio definition");
}

}  // namespace
}  // namespace tavlorin
