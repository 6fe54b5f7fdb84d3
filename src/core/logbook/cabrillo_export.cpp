#include "logbook/cabrillo_export.h"

#include <vector>

#include "logbook/adif_export.h"
#include "tavlorin_version.h"

namespace tavlorin {
namespace {

using H = CabrilloHeader;

struct TextKey {
  TextSetting setting;
  std::string H::*member;
};
struct FlagKey {
  FlagSetting setting;
  bool H::*member;
};

const TextKey kTextKeys[] = {
    {{"CLogbookCabrillo::m_strCallsign", ""}, &H::callsign},
    {{"CLogbookCabrillo::m_strName", ""}, &H::name},
    {{"CLogbookCabrillo::m_strAddress", ""}, &H::address},
    {{"CLogbookCabrillo::m_strClub", ""}, &H::club},
    {{"CLogbookCabrillo::m_strOperators", ""}, &H::operators},
    {{"CLogbookCabrillo::m_strSoapbox", ""}, &H::soapbox},
    {{"CLogbookCabrillo::m_strScore", ""}, &H::score},
    {{"CLogbookCabrillo::m_strIOTAIsland", ""}, &H::iotaIsland},
    {{"CLogbookCabrillo::m_comboCatContest", "AP-SPRINT"}, &H::contest},
    {{"CLogbookCabrillo::m_comboCatOperator", "SINGLE-OP"}, &H::catOperator},
    {{"CLogbookCabrillo::m_comboCatBand", "ALL"}, &H::catBand},
    {{"CLogbookCabrillo::m_comboCatPower", "HIGH"}, &H::catPower},
    {{"CLogbookCabrillo::m_comboCatMode", "CW"}, &H::catMode},
    {{"CLogbookCabrillo::m_comboCatAssisted", "NON-ASSISTED"}, &H::catAssisted},
    {{"CLogbookCabrillo::m_comboCatDX", "NON-DXPEDITION"}, &H::catDx},
    {{"CLogbookCabrillo::m_comboCatOverlay", ""}, &H::catOverlay},
    {{"CLogbookCabrillo::m_comboCatTime", "24-HOURS"}, &H::catTime},
    {{"CLogbookCabrillo::m_comboARRLSection", "- Foreign DX -"}, &H::arrlSection},
};

const FlagKey kFlagKeys[] = {
    {{"CLogbookCabrillo::m_bIOTA", false}, &H::iota},
    {{"CLogbookCabrillo::m_bDX", false}, &H::dx},
    {{"CLogbookCabrillo::m_bTime", false}, &H::time},
    {{"CLogbookCabrillo::m_bMode", false}, &H::modeFromContacts},
    {{"CLogbookCabrillo::m_bOfftime", false}, &H::offtime},
};

constexpr IntSetting kVersionKey{"CLogbookCabrillo::m_nVersion", 2};
constexpr TextSetting kTemplateKey{"CLogbookCabrillo::m_strTemplate", ""};

}  // namespace

std::string CabrilloFileIn(const std::string& folder) {
  std::string prefix = folder;
  if (!prefix.empty() && prefix.back() != '/') {
    prefix += '/';
  }
  return prefix + "Cabrillo.txt";
}

CabrilloSettingsValues LoadCabrilloSettings(const Settings& settings) {
  CabrilloSettingsValues values;
  for (const TextKey& k : kTextKeys) {
    values.header.*k.member = settings.Get(k.setting);
  }
  for (const FlagKey& k : kFlagKeys) {
    values.header.*k.member = settings.Get(k.setting);
  }
  values.header.version = settings.Get(kVersionKey) == 3 ? 3 : 2;
  values.templateName = settings.Get(kTemplateKey);
  return values;
}

Status StoreCabrilloSettings(Settings& settings, const CabrilloSettingsValues& values) {
  for (const TextKey& k : kTextKeys) {
    if (Status s = settings.Set(k.setting, values.header.*k.member); !s.ok()) {
      return s;
    }
  }
  for (const FlagKey& k : kFlagKeys) {
    if (Status s = settings.Set(k.setting, values.header.*k.member); !s.ok()) {
      return s;
    }
  }
  if (Status s = settings.Set(kVersionKey, values.header.version); !s.ok()) {
    return s;
  }
  return settings.Set(kTemplateKey, values.templateName);
}

const CabrilloTemplate& ChosenCabrilloTemplate(const CabrilloSettingsValues& values) {
  if (const CabrilloTemplate* t = FindCabrilloTemplate(values.templateName)) {
    return *t;
  }
  const bool multiTwo = values.header.catOperator == "MULTI-TWO";
  return CabrilloTemplates()[multiTwo ? 1 : 0];
}

CabrilloExportResult ExportCabrillo(LogbookDatabase& database, const std::string& path,
                                    const CabrilloSettingsValues& values,
                                    const std::string& where, const std::string& order,
                                    const ExchangeProgress& progress) {
  CabrilloExportResult result;
  if (std::string missing = CabrilloMissingValue(values.header); !missing.empty()) {
    result.status = Status::Error(missing);
    return result;
  }
  CabrilloHeader header = values.header;
  if (header.createdBy.empty()) {
    header.createdBy = std::string(TAVLORIN_PROGRAM_NAME) + " " + TAVLORIN_VERSION;
  }
  // A contest log is small; holding it whole gives the OFFTIME lines before the contacts.
  std::vector<CLogbookRecordset> contacts;
  result.status = database.ListRecords(0, where, order.empty() ? kCabrilloOrder : order, &contacts);
  if (!result.status.ok()) {
    return result;
  }
  const CabrilloTemplate& layout = ChosenCabrilloTemplate(values);
  std::string text = CabrilloHeaderText(header, contacts);
  for (const CLogbookRecordset& contact : contacts) {
    if (result.contacts % 256 == 0) {
      progress.Step(result.contacts, contacts.size());
      if (progress.Cancelled()) {
        result.cancelled = true;
        result.status = Status::Error("Cancelled");
        return result;
      }
    }
    text += CabrilloQsoLine(contact, layout, header);
    text += "\r\n";
    ++result.contacts;
  }
  progress.Step(result.contacts, contacts.size());
  text += "END-OF-LOG:\r\n";
  result.status = WriteFileAtomically(path, {text});
  return result;
}

}  // namespace tavlorin
