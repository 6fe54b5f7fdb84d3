#include "radio/radio_models.h"

#include <vector>

#include "link/manufacturer.h"

namespace tavlorin {
namespace {

const std::vector<RadioModel>& Table() {
  static const std::vector<RadioModel> table = {
      {"IC-7300", std::string(kCompanyIcom), kIcom, "19200", "94"},
      {"IC-756Pro", std::string(kCompanyIcom), kIcom, "19200", "5C"},
      {"IC-735", std::string(kCompanyIcom), kIcom, "1200", "04"},
      {"K2", std::string(kCompanyElecraft), kElecraft, "4800", ""},
      {"K3", std::string(kCompanyElecraft), kElecraft, "38400", ""},
      {"TS-2000", std::string(kCompanyKenwood), kKenwood, "57600", ""},
      {"TS-480", std::string(kCompanyKenwood), kKenwood, "57600", ""},
      {"TS-570", std::string(kCompanyKenwood), kKenwood, "57600", ""},
      {"TS-870", std::string(kCompanyKenwood), kKenwood, "57600", ""},
      {"TS-440S", std::string(kCompanyKenwood), kKenwood, "4800", ""},
      {"FT-817", std::string(kCompanyYaesu), kYaesu, "38400", ""},
      {"FT-847", std::string(kCompanyYaesu), kYaesu, "57600", ""},
      {"Orion", std::string(kCompanyTenTec), kTenTec, "57600", ""},
      {"PCR-1000", std::string(kCompanyGeneral), kGeneral, "9600", ""},
      {"NRD-535", std::string(kCompanyGeneral), kNrd535, "4800", ""},
      {"Orion: Demo", std::string(kCompanyDemonstration), kDemonstration, "57600", ""},
      {"K2: Demo", std::string(kCompanyDemonstration), kDemonstration, "4800", ""},
      {"TS-480: Demo", std::string(kCompanyDemonstration), kDemonstration, "57600", ""},
      {"TS-570: Demo", std::string(kCompanyDemonstration), kDemonstration, "57600", ""},
      {"TS-2000: Demo", std::string(kCompanyDemonstration), kDemonstration, "57600", ""},
  };
  return table;
}

}  // namespace

const RadioModel* FindRadioModel(std::string_view name) {
  for (const RadioModel& m : Table()) {
    if (m.name == name) {
      return &m;
    }
  }
  return nullptr;
}

std::span<const RadioModel> AllRadioModels() { return Table(); }

}  // namespace tavlorin
