// tavlorin-cli log import / log export: ADIF files in and out of the logbook.
#include <cstdio>
#include <string>
#include <vector>

#include "args.h"
#include "log_exchange_commands.h"
#include "logbook/adif_export.h"
#include "logbook/adif_import.h"
#include "logbook/adif_text.h"
#include "logbook_cli.h"
#include "progress_bar.h"

namespace tavlorin::cli {

const char* const kLogExchangeUsage =
    "  import FILE [--dry-run] [--auto-band|--no-auto-band] [--auto-dxcc|--no-auto-dxcc] [--json]\n"
    "                                     read an ADIF file (.adi or .adx) into the logbook;\n"
    "                                     --dry-run shows what would be stored and stores nothing\n"
    "  export FILE [--fields adif|all|eqsl] [--comment TEXT] [--where CLAUSE] [--order CLAUSE]\n"
    "              [--adx]                write contacts to an ADIF file (ADX: --adx or FILE.adx)\n"
    "  cabrillo FILE|FOLDER --contest NAME --callsign CALL --name NAME --address TEXT\n"
    "              [--version 2|3] [--template standard|multi-two] [...]   ('log cabrillo --help')\n"
    "Options not given to import, export and cabrillo are taken from the last run's settings,\n"
    "and the ones used are kept for the next run.\n";

namespace {

int BadLine(const char* command, const std::string& message) {
  std::fprintf(stderr, "tavlorin-cli log %s: %s\n\n%s", command, message.c_str(),
               kLogExchangeUsage);
  return 2;
}

// --NAME or --no-NAME; the setting when neither is given.
bool Switch(ArgReader& reader, const std::string& name, bool otherwise) {
  const bool on = reader.Flag("--" + name);
  const bool off = reader.Flag("--no-" + name);
  if (on && off) {
    reader.SetError("--" + name + " and --no-" + name + " contradict each other");
  }
  return on || (!off && otherwise);
}

// The contact columns that an import fills (not the key and the two time stamps).
std::vector<const LogbookField*> ContactColumns() {
  std::vector<const LogbookField*> out;
  for (const LogbookField& f : LogbookFields()) {
    const std::string_view name = f.name;
    if (name != "PrimaryKey" && name != "Created" && name != "Modified") {
      out.push_back(&f);
    }
  }
  return out;
}

void PrintProblems(const std::vector<AdifProblem>& problems, bool json, bool* first) {
  for (const AdifProblem& p : problems) {
    if (json) {
      std::printf("%s\n    {\"record\": %zu, \"error\": %s, \"text\": %s}", *first ? "" : ",",
                  p.record, p.error ? "true" : "false", JsonText(p.text).c_str());
      *first = false;
    } else {
      std::fprintf(stderr, "%s%s: %s\n", p.record == 0 ? "" : ("record " + std::to_string(p.record) + ": ").c_str(),
                   p.error ? "error" : "warning", p.text.c_str());
    }
  }
}

void PrintContacts(const AdifImport& import, bool json) {
  const auto columns = ContactColumns();
  CLogbookRecordset contact;
  bool first = true;
  if (!json) {
    std::printf("Record");
    for (const LogbookField* f : columns) {
      std::printf("\t%s", f->name);
    }
    std::printf("\n");
  }
  for (size_t n = 1; n <= import.size(); ++n) {
    if (!import.Contact(n, &contact)) {
      continue;
    }
    if (json) {
      std::printf("%s\n    {\"Record\": %zu", first ? "" : ",", n);
      for (const LogbookField* f : columns) {
        std::printf(", %s: %s", JsonText(f->name).c_str(),
                    JsonText(LogbookFieldText(contact, *f)).c_str());
      }
      std::printf("}");
      first = false;
      continue;
    }
    std::printf("%zu", n);
    for (const LogbookField* f : columns) {
      std::printf("\t%s", TabSafe(LogbookFieldText(contact, *f)).c_str());
    }
    std::printf("\n");
  }
}

}  // namespace

int RunLogImport(LogbookDatabase& database, const Args& words) {
  ArgReader reader(words);
  Settings& settings = Settings::Default();
  const bool dryRun = reader.Flag("--dry-run");
  const bool json = reader.Flag("--json");
  AdifImportOptions options;
  options.autoBand = Switch(reader, "auto-band", settings.Get(kImportAutoBand));
  options.autoDxcc = Switch(reader, "auto-dxcc", settings.Get(kImportAutoDxcc));
  const std::vector<std::string> files = reader.Positionals();
  if (std::string error = reader.Finish(); !error.empty() || files.size() != 1) {
    return BadLine("import", error.empty() ? "import needs one FILE" : error);
  }
  if (!DefineExisting(database)) {
    return 1;
  }
  settings.Set(kImportAutoBand, options.autoBand);
  settings.Set(kImportAutoDxcc, options.autoDxcc);
  AdifImport import(database, options);
  AdifImportResult result;
  {
    ProgressBar bar(!json);
    // The save analyses on its way (a dry run too): one pass over the records, not two.
    if (Status s = import.Read(files[0], bar.progress(), false); !s.ok()) {
      std::fprintf(stderr, "tavlorin-cli log import: %s: %s\n", files[0].c_str(),
                   s.message().c_str());
      return 1;
    }
    result = import.Save(bar.progress(), dryRun);
  }
  if (!result.status.ok()) {
    return ReportFailure(database, result.status);
  }
  if (json) {
    std::printf("{\n  \"file\": %s,\n  \"dryRun\": %s,\n  \"records\": %zu,\n  \"stored\": %d,\n"
                "  \"errors\": %d,\n  \"duplicates\": %d,\n  \"problems\": [",
                JsonText(files[0]).c_str(), dryRun ? "true" : "false", result.records,
                result.stored, result.errors, result.duplicates);
  } else if (dryRun) {
    PrintContacts(import, false);
  }
  bool first = true;
  PrintProblems(import.problems(), json, &first);
  PrintProblems(result.notStored, json, &first);
  if (json) {
    std::printf("%s]", first ? "" : "\n  ");
    if (dryRun) {
      std::printf(",\n  \"contacts\": [");
      PrintContacts(import, true);
      std::printf("\n  ]");
    }
    std::printf("\n}\n");
    return 0;
  }
  if (dryRun) {
    std::printf("Dry run: %d of %zu records would be stored, %d errors (%d duplicates); nothing "
                "was stored\n",
                result.stored, result.records, result.errors, result.duplicates);
  } else {
    std::printf("%s; %d of %zu records stored\n", result.FinishedText().c_str(), result.stored,
                result.records);
  }
  return 0;
}

int RunLogExport(LogbookDatabase& database, const Args& words) {
  ArgReader reader(words);
  Settings& settings = Settings::Default();
  AdifExportOptions options;
  const int storedSet = settings.Get(kExportField);
  options.fields = storedSet >= 0 && storedSet <= 2 ? static_cast<AdifFieldSet>(storedSet)
                                                    : AdifFieldSet::kAdif20;
  if (auto fields = reader.Option("--fields")) {
    const std::string f = LowerAscii(*fields);
    if (f == "adif" || f == "adif2" || f == "0") {
      options.fields = AdifFieldSet::kAdif20;
    } else if (f == "all" || f == "1") {
      options.fields = AdifFieldSet::kAllFields;
    } else if (f == "eqsl" || f == "2") {
      options.fields = AdifFieldSet::kEqsl;
    } else {
      reader.SetError("--fields must be adif, all or eqsl");
    }
  }
  options.comment = reader.Option("--comment").value_or(settings.Get(kExportComment));
  options.where = WhereClause(reader.Option("--where").value_or(""));
  options.order = reader.Option("--order").value_or("");
  const bool adx = reader.Flag("--adx");
  const std::vector<std::string> files = reader.Positionals();
  if (std::string error = reader.Finish(); !error.empty() || files.size() != 1) {
    return BadLine("export", error.empty() ? "export needs one FILE" : error);
  }
  const std::string& file = files[0];
  options.xml = adx || (file.size() > 4 && EqualsIgnoreCase(file.substr(file.size() - 4), ".adx"));
  if (!DefineExisting(database)) {
    return 1;
  }
  settings.Set(kExportField, static_cast<int>(options.fields));
  settings.Set(kExportFilename, file);
  settings.Set(kExportComment, options.comment);
  AdifExportResult result;
  {
    ProgressBar bar(true);
    result = ExportAdif(database, file, options, bar.progress());
  }
  if (!result.status.ok()) {
    return ReportFailure(database, result.status);
  }
  std::printf("Exported %zu records to %s\n", result.records, file.c_str());
  return 0;
}

}  // namespace tavlorin::cli
