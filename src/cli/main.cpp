// tavlorin-cli: the program's core from a terminal.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "commands.h"
#include "shell/debug_log.h"
#include "tavlorin_version.h"

namespace tavlorin::cli {
namespace {

using CommandFn = int (*)(const Globals&, const Args&);

struct Command {
  const char* name;
  const char* summary;
  CommandFn run;
};

constexpr Command kCommands[] = {
    {"radio", "talk to a radio: read and set frequency and mode, poll it", RunRadioCommand},
    {"radios", "list the radio models, their speeds and CI-V addresses", RunRadiosCommand},
    {"connect", "connect --identify: find which radio answers on a port, and its preset",
     RunConnectIdentifyCommand},
    {"emulate", "serve a radio on an emulated Kenwood port for other programs", RunEmulateCommand},
    {"log", "the logbook: define the file, add, list, update and delete contacts", RunLogCommand},
    {"country", "the DXCC entity and country of callsigns", RunCountryCommand},
    {"countries", "load a countries file into the logbook", RunCountriesCommand},
    {"locator", "Maidenhead locators, positions, bearing and distance", RunLocatorCommand},
    {"spots", "the DX spot list from web clusters, a log file or a telnet cluster", RunSpotsCommand},
    {"spot", "submit a DX spot; the cluster status record", RunSpotCommand},
    {"webpage", "build and upload the station's activity web page", RunWebpageCommand},
};

void PrintUsage(std::FILE* out) {
  std::fprintf(out,
               "Usage: tavlorin-cli [--db FILE] [--debug] COMMAND [ARGUMENTS]\n\n"
               "Global options:\n"
               "  --db FILE   logbook database to use (default: the setting \"LogbookDatabase\")\n"
               "  --debug     copy the debug log to standard error\n"
               "  --version   print the version and stop\n\n"
               "Commands:\n");
  for (const Command& c : kCommands) {
    std::fprintf(out, "  %-10s  %s\n", c.name, c.summary);
  }
  std::fprintf(out, "\n'tavlorin-cli COMMAND --help' tells more about one command.\n");
}

int Main(int argc, char** argv) {
  Globals globals;
  int i = 1;
  for (; i < argc && argv[i][0] == '-'; ++i) {
    std::string word = argv[i];
    if (word == "--db" && i + 1 < argc) {
      globals.dbPath = argv[++i];
    } else if (word.rfind("--db=", 0) == 0) {
      globals.dbPath = word.substr(5);
    } else if (word == "--debug") {
      globals.echoLog = true;
    } else if (word == "--help" || word == "-h") {
      PrintUsage(stdout);
      return 0;
    } else if (word == "--version") {
      std::printf("%s %s\n", TAVLORIN_PROGRAM_NAME, TAVLORIN_VERSION);
      return 0;
    } else {
      std::fprintf(stderr, "tavlorin-cli: unknown option \"%s\"\n\n", argv[i]);
      PrintUsage(stderr);
      return 2;
    }
  }
  if (i >= argc) {
    PrintUsage(stderr);
    return 2;
  }
  DebugLog::SetEcho(globals.echoLog);
  const std::string name = argv[i];
  Args args(argv + i + 1, argv + argc);
  for (const Command& c : kCommands) {
    if (name == c.name) {
      return c.run(globals, args);
    }
  }
  std::fprintf(stderr, "tavlorin-cli: unknown command \"%s\"\n\n", name.c_str());
  PrintUsage(stderr);
  return 2;
}

}  // namespace
}  // namespace tavlorin::cli

int main(int argc, char** argv) { return tavlorin::cli::Main(argc, argv); }
