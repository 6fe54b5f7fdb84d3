// The commands of tavlorin-cli. main.cpp parses the global options and hands the rest of the
// command line to one of these; each command lives in its own file (radio_command.cpp, ...).
// Every command prints plain lines on standard output, messages on standard error, and returns
// the process exit code (0 success, 1 the operation failed, 2 the command line was wrong).
#pragma once

#include <string>
#include <vector>

namespace tavlorin::cli {

// Options given before the command, as in `tavlorin-cli --db my.sqlite log list`.
struct Globals {
  std::string dbPath;  // --db FILE; empty: the setting "LogbookDatabase"
  bool echoLog = false;  // --debug: copy the debug log to standard error
};

using Args = std::vector<std::string>;

int RunRadioCommand(const Globals& globals, const Args& args);
int RunRadiosCommand(const Globals& globals, const Args& args);
int RunEmulateCommand(const Globals& globals, const Args& args);
int RunLogCommand(const Globals& globals, const Args& args);
int RunCountryCommand(const Globals& globals, const Args& args);
int RunCountriesCommand(const Globals& globals, const Args& args);
int RunLocatorCommand(const Globals& globals, const Args& args);
int RunConnectIdentifyCommand(const Globals& globals, const Args& args);
int RunSpotsCommand(const Globals& globals, const Args& args);
int RunSpotCommand(const Globals& globals, const Args& args);
int RunWebpageCommand(const Globals& globals, const Args& args);

}  // namespace tavlorin::cli
