// Manufacturer: the CAT command family of a radio, the code every layer switches on.
//
// The numbers are stored in settings and connection records: never renumber them.
#pragma once

#include <cstdint>
#include <string_view>

namespace tavlorin {

enum Manufacturer : int32_t {
  kIcom = 1,
  kElecraft = 2,
  kKenwood = 3,
  kYaesu = 4,
  kTenTec = 5,
  kDemonstration = 6,
  kGeneral = 7,  // the PCR-1000 receiver protocol
  kNrd535 = 8,
  // Yaesu's ASCII command set (FT-991A, FTDX101D, FT-891, ...): the company "Yaesu" offers both
  // this and the 5-byte family (4); the model's definition says which one it speaks.
  kYaesuAscii = 9,
};

// Every family code. A new family takes the next free number and needs a row here, its line
// settings (line_settings.cpp) and a case in CatRadio's switch; the radio definitions reader
// refuses codes that are not listed.
inline constexpr Manufacturer kFamilies[] = {
    kIcom, kElecraft, kKenwood, kYaesu, kTenTec, kDemonstration, kGeneral, kNrd535, kYaesuAscii};

constexpr bool IsFamilyCode(int code) {
  for (Manufacturer family : kFamilies) {
    if (family == code) {
      return true;
    }
  }
  return false;
}

// The company names as the user sees them.
inline constexpr std::string_view kCompanyIcom = "ICOM";
inline constexpr std::string_view kCompanyElecraft = "Elecraft";
inline constexpr std::string_view kCompanyKenwood = "Kenwood";
inline constexpr std::string_view kCompanyYaesu = "Yaesu";
inline constexpr std::string_view kCompanyTenTec = "Ten-Tec";
inline constexpr std::string_view kCompanyGeneral = "General";
inline constexpr std::string_view kCompanyDemonstration = "\xC2\xAE Dem-o-Matic \xC2\xAE";
// Makers whose radios speak another maker's command set (CI-V; the TS-480's Kenwood subset).
inline constexpr std::string_view kCompanyXiegu = "Xiegu";
inline constexpr std::string_view kCompanyQrpLabs = "QRP Labs";
inline constexpr std::string_view kCompanyTruSdx = "(tr)uSDX";

// The company list in the order it is offered.
struct Company {
  std::string_view name;
  Manufacturer code;
};
inline constexpr Company kCompanies[] = {
    {kCompanyElecraft, kElecraft},
    {kCompanyIcom, kIcom},
    {kCompanyKenwood, kKenwood},
    {kCompanyTenTec, kTenTec},
    {kCompanyYaesu, kYaesu},
    {kCompanyGeneral, kGeneral},
    {kCompanyDemonstration, kDemonstration},
    {kCompanyXiegu, kIcom},
    {kCompanyQrpLabs, kKenwood},
    {kCompanyTruSdx, kKenwood},
};

}  // namespace tavlorin
