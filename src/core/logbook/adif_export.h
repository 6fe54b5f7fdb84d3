// ExportAdif: writes a list of the logbook's contacts to an ADIF file, tagged text or XML.
//
// The list is the one the user chose (a WHERE clause and an order in the logbook's SQL, the
// logbook window's view or the CLI's --where/--order). The file is written whole to a
// temporary file beside it and renamed at the end, so a failed or cancelled export leaves an
// older file of that name as it was. A dialog runs it on a worker thread with an
// ExchangeProgress (a step per contact, 0 to the list's count; cancel stops it).
//
// One thread at a time per database object.
#pragma once

#include <ctime>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "logbook/adif_writer.h"
#include "logbook/exchange_progress.h"
#include "logbook/logbook_database.h"
#include "shell/settings.h"

namespace tavlorin {

// The export dialog's settings and texts.
inline constexpr IntSetting kExportField{"CLogbookExport::m_nField", 0};
inline constexpr FlagSetting kExportView{"CLogbookExport::m_bView", false};
inline constexpr TextSetting kExportFilename{"CLogbookExport::m_strFilename", ""};
inline constexpr TextSetting kExportComment{"CLogbookExport::m_strComment", ""};
inline constexpr const char* kExportDialogTitle = "Save as ADIF file";
inline constexpr const char* kExportFileTypes =
    "ADIF Files (*.ADI)|*.ADI|ADIF Files (*.ADF)|*.ADF|ADIF Files (*.ADIF)|*.ADIF|Text Files "
    "(*.TXT)|*.TXT|All Files (*.*)|*.*||";

// Oldest first: files are read in order, and equal start times keep the order they were
// stored in, so exporting an imported file gives the same file again.
inline constexpr const char* kExportOrder = "StartTime ASC, Created ASC, PrimaryKey ASC";

struct AdifExportOptions {
  AdifFieldSet fields = AdifFieldSet::kAdif20;
  std::string comment;  // QSLMSG of the eQSL set
  std::string where;    // a whole WHERE clause, or empty for every contact
  std::string order;    // empty: kExportOrder
  bool xml = false;     // the ADX form
  std::optional<std::time_t> now;  // the header's "Created:" time; the clock when unset
};

struct AdifExportResult {
  size_t records = 0;
  bool cancelled = false;
  Status status;
};

AdifExportResult ExportAdif(LogbookDatabase& database, const std::string& path,
                            const AdifExportOptions& options,
                            const ExchangeProgress& progress = {});

// Writes `pieces`, one after the other, to `path` through a temporary file in the same folder
// and a rename.
Status WriteFileAtomically(const std::string& path, std::initializer_list<std::string_view> pieces);

// The number of contacts that `where` lists (for a progress bar's total).
Status CountListed(const LogbookDatabase& database, const std::string& where, size_t* count);

}  // namespace tavlorin
