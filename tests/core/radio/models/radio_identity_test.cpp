// What a radio's identity names among the shipped definitions, and how a model's line
// settings follow its definition.
#include "radio/radio_identity.h"

#include <gtest/gtest.h>

#include "link/manufacturer.h"
#include "radio/radio_models.h"

namespace tavlorin {
namespace {

TEST(RadioIdentityTest, TheIdentityNamesTheChosenModelOrTheFirstOfTheFamilyThatCarriesIt) {
  const struct {
    const char* chosen;
    int family;
    const char* identity;
    const char* found;
  } cases[] = {
      // The chosen model wins when it carries the identity, also through the model it
      // borrows from (the FT-991A uses the FT-991's commands and identity).
      {"FT-991A", kYaesuAscii, "0570", "FT-991A"},
      {"FT-991", kYaesuAscii, "0570", "FT-991"},
      {"FT-991A", kYaesuAscii, "0681", "FTDX101D"},
      {"FTDX101MP", kYaesuAscii, "0682", "FTDX101MP"},
      {"FT-710", kYaesuAscii, "0462", "FTDX3000"},
      {"FT-991A", kYaesuAscii, "9999", ""},
      {"FT-991A", kYaesuAscii, "", ""},
      // The QRP Labs radios answer as the TS-480 whose commands they use.
      {"QMX", kKenwood, "020", "QMX"},
      {"TS-2000", kKenwood, "020", "TS-480"},
      {"TS-2000", kKenwood, "024", "TS-890S"},
      // ICOM radios name themselves by their address; the Xiegu G90 shares the IC-7100's.
      {"IC-7300", kIcom, "94", "IC-7300"},
      {"IC-7300", kIcom, "ac", "IC-905"},
      {"G90", kIcom, "88", "G90"},
      {"IC-7300", kIcom, "88", "IC-7100"},
      // The demonstration radio finds the real model it imitates.
      {"FT-991: Demo", kYaesuAscii, "0570", "FT-991"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.chosen) + " / " + c.identity);
    const RadioModel* chosen = FindRadioModel(c.chosen);
    ASSERT_NE(chosen, nullptr);
    EXPECT_EQ(FoundModel(AllRadioModels(), *chosen, c.family, c.identity), c.found);
  }
  EXPECT_EQ(IdentityReport("FTDX101D", "FT-991A"), "found FTDX101D, connected as FT-991A");
  EXPECT_EQ(IdentityReport("", "FT-991A"), "");
}

}  // namespace
}  // namespace tavlorin
