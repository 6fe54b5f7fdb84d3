// tavlorin-cli country and countries: callsign to DXCC entity, and loading a countries file.
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <iostream>
#include <string>

#include "args.h"
#include "commands.h"
#include "logbook/logbook_database.h"
#include "logbook_cli.h"

namespace tavlorin::cli {
namespace {

constexpr const char* kCountryUsage =
    "Usage: tavlorin-cli [--db FILE] country [CALLSIGN...]\n"
    "Prints one line per callsign: callsign, DXCC number, country (tab-separated; empty when\n"
    "no entity matches). Reads callsigns from standard input, one a line, when none are given.\n"
    "The country table is the logbook's; a missing logbook file is created first.\n";

constexpr const char* kCountriesUsage =
    "Usage: tavlorin-cli [--db FILE] countries load FILE [--yes]\n"
    "Replaces the logbook's country table with a countries file (13 quoted fields a line).\n"
    "--yes answers the confirmation question; without it the question is asked on the terminal.\n";

// Define creates the logbook when it is missing, as the program does on first use.
bool DefineQuietly(LogbookDatabase& database) {
  database.SetLogSink([](const std::string& line) {
    if (line.rfind("Error", 0) == 0) {
      std::fprintf(stderr, "%s\n", line.c_str());
    }
  });
  bool ok = database.Define(false);
  database.SetLogSink(nullptr);
  return ok;
}

std::string Upper(std::string text) {
  for (char& c : text) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return text;
}

std::string Trimmed(const std::string& line) {
  size_t first = line.find_first_not_of(" \t\r");
  if (first == std::string::npos) {
    return {};
  }
  return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
}

void PrintCountry(const CountryTables& tables, const std::string& callsign) {
  // Entries are stored in capitals; the look-up itself never changes case.
  const std::string call = Upper(callsign);
  std::string dxcc;
  std::string country = tables.CountryForCallsign(call, &dxcc);
  std::printf("%s\t%s\t%s\n", call.c_str(), dxcc.c_str(), country.c_str());
}

bool AskOnTerminal(const std::string& question) {
  if (!isatty(STDIN_FILENO)) {
    std::fprintf(stderr, "%s\nNo answer (standard input is not a terminal): use --yes.\n",
                 question.c_str());
    return false;
  }
  std::fprintf(stderr, "Load Countries: %s [y/N] ", question.c_str());
  std::string answer;
  std::getline(std::cin, answer);
  return !answer.empty() && (answer[0] == 'y' || answer[0] == 'Y');
}

}  // namespace

int RunCountryCommand(const Globals& globals, const Args& args) {
  ArgReader reader(args);
  if (reader.Flag("--help")) {
    std::printf("%s", kCountryUsage);
    return 0;
  }
  std::vector<std::string> callsigns = reader.Positionals();
  if (std::string error = reader.Finish(); !error.empty()) {
    std::fprintf(stderr, "tavlorin-cli country: %s\n\n%s", error.c_str(), kCountryUsage);
    return 2;
  }
  LogbookDatabase database(LogbookPath(globals));
  if (!DefineQuietly(database)) {
    return 1;
  }
  const CountryTables& tables = database.countries();
  if (!callsigns.empty()) {
    for (const std::string& call : callsigns) {
      PrintCountry(tables, call);
    }
    return 0;
  }
  std::string line;
  while (std::getline(std::cin, line)) {
    if (std::string call = Trimmed(line); !call.empty()) {
      PrintCountry(tables, call);
    }
  }
  return 0;
}

int RunCountriesCommand(const Globals& globals, const Args& args) {
  ArgReader reader(args);
  if (reader.Flag("--help")) {
    std::printf("%s", kCountriesUsage);
    return 0;
  }
  const bool yes = reader.Flag("--yes");
  std::vector<std::string> words = reader.Positionals();
  std::string error = reader.Finish();
  if (error.empty() && (words.size() != 2 || words[0] != "load")) {
    error = "expected: countries load FILE";
  }
  if (!error.empty()) {
    std::fprintf(stderr, "tavlorin-cli countries: %s\n\n%s", error.c_str(), kCountriesUsage);
    return 2;
  }
  LogbookDatabase database(LogbookPath(globals));
  if (!DefineQuietly(database)) {
    return 1;
  }
  bool loaded = false;
  Status s = database.LoadCountriesFile(
      words[1],
      [yes](const std::string& question, int, int) {
        if (yes) {
          std::printf("%s yes\n", question.c_str());
          return true;
        }
        return AskOnTerminal(question);
      },
      &loaded);
  if (!s.ok()) {
    return ReportFailure(database, s);
  }
  if (!loaded) {
    std::printf("Nothing changed.\n");
    return 1;
  }
  std::printf("%zu countries loaded\n", database.countries().CountryNames().size());
  return 0;
}

}  // namespace tavlorin::cli
