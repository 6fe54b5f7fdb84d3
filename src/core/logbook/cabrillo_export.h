// ExportCabrillo: writes a list of the logbook's contacts as a Cabrillo contest log, and the
// dialog's values kept as settings under their keys.
//
// A dialog loads the values (LoadCabrilloSettings), lets the user change them, checks
// CabrilloMissingValue (shown as "%s cannot be empty" in a box titled "Error"), stores them
// (StoreCabrilloSettings) and runs ExportCabrillo on a worker thread with an ExchangeProgress.
// The file is replaced whole (temporary file and rename). One thread at a time per database.
#pragma once

#include <string>

#include "logbook/cabrillo_writer.h"
#include "logbook/exchange_progress.h"
#include "logbook/logbook_database.h"
#include "shell/settings.h"

namespace tavlorin {

inline constexpr const char* kCabrilloErrorTitle = "Error";
// Contest logs go oldest first: robots refuse contacts out of time order.
inline constexpr const char* kCabrilloOrder = "StartTime ASC, Created ASC, PrimaryKey ASC";

// The output file in `folder` ("%sCabrillo.txt": the folder, then the name).
std::string CabrilloFileIn(const std::string& folder);

// The dialog's values with the template's name, as the settings hold them.
struct CabrilloSettingsValues {
  CabrilloHeader header;
  std::string templateName;  // empty: the standard template (Multi-Two for MULTI-TWO)
};
CabrilloSettingsValues LoadCabrilloSettings(const Settings& settings);
Status StoreCabrilloSettings(Settings& settings, const CabrilloSettingsValues& values);

// The template that `values` choose.
const CabrilloTemplate& ChosenCabrilloTemplate(const CabrilloSettingsValues& values);

struct CabrilloExportResult {
  size_t contacts = 0;
  bool cancelled = false;
  Status status;  // "%s cannot be empty" when a required value is missing
};

// Writes the contacts that `where` lists, in `order` (empty: kCabrilloOrder).
CabrilloExportResult ExportCabrillo(LogbookDatabase& database, const std::string& path,
                                    const CabrilloSettingsValues& values,
                                    const std::string& where, const std::string& order,
                                    const ExchangeProgress& progress = {});

}  // namespace tavlorin
