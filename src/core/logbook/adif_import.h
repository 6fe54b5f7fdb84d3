// AdifImport: reading an ADIF file (tagged text or XML) into the logbook, in the import's
// steps: read and analyse the file (with a preview of every record as it would be stored and
// the problems found), then save it in one transaction.
//
// A dialog uses it from a worker thread:
//   AdifImport import(database, {autoBand, autoDxcc});
//   import.Read(path, progress);          // "Extracting ADIF data...", "Analysing ADIF data..."
//   // preview: import.size(), import.Contact(n, &contact), import.problems()
//   AdifImportResult r = import.Save(progress);  // "Saving to database..."
//   // r.FinishedText(): "Finished, %d errors (%d duplicates)"
// Progress and status go through ExchangeProgress; its cancel flag stops either step (a
// cancelled save stores nothing). A duplicate (same callsign, band, mode and start time as a
// stored contact or an earlier record of the file) is counted and skipped.
//
// One thread at a time. REQUIRES: `database` has been defined and outlives the object.
#pragma once

#include <string>
#include <vector>

#include "logbook/adif_contact_mapper.h"
#include "logbook/adif_document.h"
#include "logbook/exchange_progress.h"
#include "logbook/logbook_database.h"
#include "shell/settings.h"

namespace tavlorin {

// The import's texts and settings.
inline constexpr const char* kImportExtracting = "Extracting ADIF data...";
inline constexpr const char* kImportAnalysing = "Analysing ADIF data...";
inline constexpr const char* kImportReadingFile = "Reading file...";
inline constexpr const char* kImportLoadingPreview = "Loading preview...";
inline constexpr const char* kImportReady = "Ready";
inline constexpr const char* kImportSaveButton = "Save to Database";
inline constexpr const char* kImportConfirm = "This may take a few minutes - continue ?";
inline constexpr const char* kImportSaving = "Saving to database...";
inline constexpr const char* kImportCloseButton = "Close";
inline constexpr FlagSetting kImportAutoBand{"CLogbookImport::m_bAutoBand", false};
inline constexpr FlagSetting kImportAutoDxcc{"CLogbookImport::m_bAutoDXCC", false};

struct AdifImportResult {
  size_t records = 0;   // records in the file
  int stored = 0;
  int errors = 0;       // records not stored, duplicates included
  int duplicates = 0;
  bool cancelled = false;
  Status status;                      // a failure that stored nothing
  // The records that the database did not store (duplicates above all), and why; the records
  // that the analysis refused are in AdifImport::problems().
  std::vector<AdifProblem> notStored;

  // "Finished, %d errors (%d duplicates)"
  std::string FinishedText() const;
};

class AdifImport {
 public:
  AdifImport(LogbookDatabase& database, AdifImportOptions options);

  // Reads and analyses the file; the XML form is recognised by its content. Fails when the
  // file cannot be read, is not ADIF at all, or the reading was cancelled. Without `analyse`
  // (no preview wanted) the analysis is left to Save, which then fills problems().
  Status Read(const std::string& path, const ExchangeProgress& progress = {},
              bool analyse = true);
  // The same on the file's bytes.
  Status ReadBytes(std::string bytes, const ExchangeProgress& progress = {}, bool analyse = true);

  size_t size() const { return document_.size(); }
  const AdifDocument& document() const { return document_; }
  // Record `number` (1 to size()) as it would be stored; false when it would not be stored.
  bool Contact(size_t number, CLogbookRecordset* contact) const;
  // What the reading and the analysis found, by record number (0: the file as a whole).
  const std::vector<AdifProblem>& problems() const { return problems_; }
  // Records that will not be stored for a problem of their own (duplicates not counted);
  // known once analysed.
  size_t refused() const { return refused_; }

  // Stores every storable record in one transaction. A dry run does all of it, duplicate
  // checks included, and then rolls it back: the counts tell what a save would do.
  AdifImportResult Save(const ExchangeProgress& progress = {}, bool dryRun = false);

 private:
  Status Analyse(const ExchangeProgress& progress);

  LogbookDatabase& database_;
  AdifImportOptions options_;
  AdifReference reference_;
  AdifDocument document_;
  std::vector<AdifProblem> problems_;
  size_t refused_ = 0;
  bool analysed_ = false;
};

}  // namespace tavlorin
