// tavlorin-cli log cabrillo: a contest log in Cabrillo 2.0 or 3.0 from the logbook's contacts.
#include <cstdio>
#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "args.h"
#include "log_exchange_commands.h"
#include "logbook/adif_text.h"
#include "logbook/cabrillo_export.h"
#include "logbook/cabrillo_lists.h"
#include "logbook_cli.h"
#include "progress_bar.h"

namespace tavlorin::cli {
namespace {

constexpr const char* kUsage =
    "Usage: tavlorin-cli [--db FILE] log cabrillo FILE|FOLDER [OPTIONS]\n"
    "Writes the listed contacts (oldest first) as a Cabrillo contest log; a FOLDER gets\n"
    "\"Cabrillo.txt\". Values not given are those of the last run (the dialog's settings).\n"
    "  --contest NAME --callsign CALL --name NAME --address TEXT   (address and soapbox: one\n"
    "      line each, or several lines in one value)\n"
    "  --version 2|3             Cabrillo 2.0 (one CATEGORY: line) or 3.0\n"
    "  --template standard|multi-two   the column layout (multi-two adds the transmitter)\n"
    "  --category-operator, --category-band, --category-power, --category-mode, --assisted,\n"
    "  --overlay VALUE           the categories (SINGLE-OP, ALL, HIGH, CW, NON-ASSISTED, ...)\n"
    "  --dxpedition VALUE, --time VALUE, --iota-island NAME   written only when given\n"
    "      (--no-dxpedition, --no-time, --no-iota-island leave them out again)\n"
    "  --club, --operators, --soapbox, --score, --section TEXT\n"
    "  --mode-from-contacts      each contact's mode even when the contest names one\n"
    "  --offtime                 OFFTIME: lines for breaks of an hour or more\n"
    "  --where CLAUSE, --order CLAUSE   which contacts, in which order\n";

int BadLine(const std::string& message) {
  std::fprintf(stderr, "tavlorin-cli log cabrillo: %s\n\n%s", message.c_str(), kUsage);
  return 2;
}

// Takes --NAME VALUE, in capitals and checked against `list` when there is one; a free text
// (list nullptr) keeps its case.
std::optional<std::string> TakeValue(ArgReader& reader, const char* name, const char* list) {
  auto given = reader.Option(name);
  if (!given || list == nullptr) {
    return given;
  }
  const std::string upper = UpperAscii(*given);
  const auto choices = SplitChoices(list);
  if (std::find(choices.begin(), choices.end(), upper) == choices.end()) {
    reader.SetError(std::string(name) + " \"" + *given + "\" is not one of " + list);
    return std::nullopt;
  }
  return upper;
}

}  // namespace

int RunLogCabrillo(LogbookDatabase& database, const Args& words) {
  if (!words.empty() && (words[0] == "--help" || words[0] == "-h")) {
    std::printf("%s", kUsage);
    return 0;
  }
  ArgReader reader(words);
  Settings& settings = Settings::Default();
  CabrilloSettingsValues values = LoadCabrilloSettings(settings);
  CabrilloHeader& h = values.header;
  const std::pair<const char*, std::string*> texts[] = {
      {"--callsign", &h.callsign}, {"--name", &h.name},           {"--address", &h.address},
      {"--club", &h.club},         {"--operators", &h.operators}, {"--soapbox", &h.soapbox},
      {"--score", &h.score},
  };
  for (const auto& [name, member] : texts) {
    if (auto v = reader.Option(name)) {
      *member = *v;
    }
  }
  if (auto contest = reader.Option("--contest")) {
    h.contest = UpperAscii(*contest);
  }
  h.callsign = UpperAscii(h.callsign);
  const std::pair<const char*, std::pair<const char*, std::string*>> choices[] = {
      {"--category-operator", {kCabrilloOperators, &h.catOperator}},
      {"--category-power", {kCabrilloPowers, &h.catPower}},
      {"--category-mode", {kCabrilloModes, &h.catMode}},
      {"--assisted", {kCabrilloAssisted, &h.catAssisted}},
      {"--overlay", {kCabrilloOverlays, &h.catOverlay}},
  };
  for (const auto& [name, choice] : choices) {
    if (auto v = TakeValue(reader, name, choice.first)) {
      *choice.second = *v;
    }
  }
  // Cabrillo 3.0 has bands beyond the old list (6M, 2M, 432, ...): any band word is taken.
  if (auto band = reader.Option("--category-band")) {
    h.catBand = UpperAscii(*band);
  }
  // Lines written only when asked for: --NAME VALUE turns one on, --no-NAME off.
  const struct {
    const char* name;
    const char* list;
    std::string* value;
    bool* on;
  } lines[] = {
      {"dxpedition", kCabrilloDxpeditions, &h.catDx, &h.dx},
      {"time", kCabrilloTimes, &h.catTime, &h.time},
      {"iota-island", nullptr, &h.iotaIsland, &h.iota},
  };
  for (const auto& line : lines) {
    if (reader.Flag(std::string("--no-") + line.name)) {
      *line.on = false;
    }
    if (auto v = TakeValue(reader, (std::string("--") + line.name).c_str(), line.list)) {
      *line.value = *v;
      *line.on = true;
    }
  }
  if (auto section = reader.Option("--section")) {
    if (ArrlSectionAbbreviation(*section).empty()) {
      reader.SetError("--section \"" + *section + "\" is not an ARRL section");
    }
    h.arrlSection = *section;
  }
  if (auto version = reader.NumberOption("--version", 2, 3)) {
    h.version = static_cast<int>(*version);
  }
  if (auto layout = reader.Option("--template")) {
    const std::string l = LowerAscii(*layout);
    if (l == "standard") {
      values.templateName = kCabrilloStandardTemplate;
    } else if (l == "multi-two") {
      values.templateName = kCabrilloMultiTwoTemplate;
    } else if (FindCabrilloTemplate(*layout) != nullptr) {
      values.templateName = *layout;
    } else {
      reader.SetError("--template must be standard or multi-two");
    }
  }
  h.modeFromContacts = reader.Flag("--mode-from-contacts") ||
                       (!reader.Flag("--no-mode-from-contacts") && h.modeFromContacts);
  h.offtime = reader.Flag("--offtime") || (!reader.Flag("--no-offtime") && h.offtime);
  const std::string where = WhereClause(reader.Option("--where").value_or(""));
  const std::string order = reader.Option("--order").value_or("");
  const std::vector<std::string> targets = reader.Positionals();
  if (std::string error = reader.Finish(); !error.empty() || targets.size() != 1) {
    return BadLine(error.empty() ? "cabrillo needs one FILE or FOLDER" : error);
  }
  if (std::string missing = CabrilloMissingValue(h); !missing.empty()) {
    std::fprintf(stderr, "%s: %s\n", kCabrilloErrorTitle, missing.c_str());
    return 2;
  }
  std::error_code ec;
  const std::string file = std::filesystem::is_directory(targets[0], ec)
                               ? CabrilloFileIn(targets[0])
                               : targets[0];
  if (!DefineExisting(database)) {
    return 1;
  }
  StoreCabrilloSettings(settings, values);
  CabrilloExportResult result;
  {
    ProgressBar bar(true);
    result = ExportCabrillo(database, file, values, where, order, bar.progress());
  }
  if (!result.status.ok()) {
    return ReportFailure(database, result.status);
  }
  std::printf("Wrote %zu contacts to %s (Cabrillo %s)\n", result.contacts, file.c_str(),
              h.version == 3 ? "3.0" : "2.0");
  return 0;
}

}  // namespace tavlorin::cli
