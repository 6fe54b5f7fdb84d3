// tavlorin-cli spots: the DX cluster window's list from a terminal, through the window's own
// logic (CDXClusterDyn) on an event loop: one fetch and the list, or --watch and a line per new
// spot.
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>

#include "args.h"
#include "commands.h"
#include "geo/countries_file.h"
#include "logbook/logbook_database.h"
#include "logbook/logbook_settings.h"
#include "logbook_cli.h"
#include "shell/event_loop.h"
#include "shell/paths.h"
#include "spots/dx_cluster_dyn.h"
#include "spots_cli.h"
#include "stop_signal.h"

namespace tavlorin::cli {
namespace {

constexpr const char* kUsage =
    "Usage: tavlorin-cli spots [--source web|csv|log|telnet] [--choice NAME] [--host HOST[:PORT]]\n"
    "                          [--file F] [--call CALL] [--watch [--seconds S] [--interval S]]\n"
    "                          [--no-country] [--json] [--choices]\n"
    "Prints the DX spot list: frequency (kHz), callsign, spotter (or time), comment, country,\n"
    "tab-separated. The defaults are the DX cluster window's settings.\n"
    "  --source    web pages (web cluster A), CSV files (web cluster B), the local log file,\n"
    "              or a telnet DX cluster node\n"
    "  --choice    the list or band, as the window offers it (--choices lists them)\n"
    "  --host      the source's server; for telnet HOST:PORT (default port 7300)\n"
    "  --file      the log file of the log source (implies --source log)\n"
    "  --call      the callsign to log in to a telnet cluster with\n"
    "  --watch     keep the list fresh and print a line per new spot; --seconds ends it (else\n"
    "              Ctrl-C), --interval sets the refresh interval (at least 10 s)\n"
    "              Without --watch a telnet source listens for --seconds (default 10).\n"
    "  --json      one JSON object per spot with every field\n";

// The window's host on the command line's event loop: timers and posted calls on the loop,
// messages on standard error, new spots printed as they come in --watch.
class CliDxHost final : public DxClusterHost {
 public:
  CliDxHost(EventLoop& loop, bool watch, bool json) : loop_(loop), watch_(watch), json_(json) {}
  void Attach(CDXClusterDyn* logic) { logic_ = logic; }

  void SetTimer(int id, std::chrono::milliseconds interval) override {
    loop_.SetTimer(id, interval, [this](int timer) { logic_->OnTimer(timer); });
  }
  void KillTimer(int id) override { loop_.KillTimer(id); }
  void PostToWindow(std::function<void()> call) override { loop_.Post(std::move(call)); }
  void ShowStatusPane(const std::string& text) override {
    if (text == kStatusShowing) {
      ++finished_;
    }
  }
  void ShowMessage(const std::string& text) override {
    lastMessage_ = text;
    std::fprintf(stderr, "%s\n", text.c_str());
  }
  void ShowList(const SpotListModel&, const SpotListModel::Update& update) override {
    drawn_ = true;
    if (update.unreadable > 0) {
      std::fprintf(stderr, "%d line(s) of the spot list could not be read\n", update.unreadable);
    }
    if (watch_) {
      for (const Spot& spot : update.newSpots) {
        PrintSpot(spot, json_);
      }
      std::fflush(stdout);
    }
  }
  void ShowClusterLine(const std::string& line) override {
    if (watch_) {
      std::fprintf(stderr, "%s\n", line.c_str());
    }
  }

  int finished() const { return finished_; }
  bool drawn() const { return drawn_; }
  const std::string& lastMessage() const { return lastMessage_; }

 private:
  EventLoop& loop_;
  CDXClusterDyn* logic_ = nullptr;
  const bool watch_;
  const bool json_;
  int finished_ = 0;
  bool drawn_ = false;
  std::string lastMessage_;
};

// The logbook's country table when there is a logbook; else the shipped countries list, so
// that looking at spots never creates a logbook.
bool LoadCountries(const Globals& globals, std::unique_ptr<LogbookDatabase>* database,
                   CountryTables* shipped, const CountryTables** tables) {
  const std::string path = LogbookPath(globals);
  std::error_code ec;
  if (std::filesystem::exists(path, ec)) {
    *database = std::make_unique<LogbookDatabase>(path);
    if (!DefineExisting(**database)) {
      return false;
    }
    *tables = &(*database)->countries();
    return true;
  }
  std::ifstream in(SharedDataDir() / kCountriesFileName);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  shipped->Build(ParseCountryLines(lines).rows);
  *tables = shipped;
  return true;
}

// --host names the server of the chosen source.
bool ApplyHost(ArgReader& args, const std::string& host, DxClusterConfig* config) {
  switch (config->source) {
    case SpotSource::kWebPages:
      config->servers.webPagesHost = host;
      return true;
    case SpotSource::kCsvFiles:
      config->servers.csvFilesHost = host;
      return true;
    case SpotSource::kTelnet:
      if (!SplitHostPort(host, &config->telnet.host, &config->telnet.port)) {
        args.SetError("--host takes HOST or HOST:PORT, not \"" + host + "\"");
        return false;
      }
      return true;
    case SpotSource::kLogFile:
      break;
  }
  args.SetError("--host does not apply to the log source (use --file)");
  return false;
}

// Applies the command line to the window's settings. False (message printed) on a mistake.
bool ApplyOptions(ArgReader& args, DxClusterConfig* config, bool* listChoices) {
  std::optional<std::string> source = args.Option("--source");
  std::optional<std::string> choice = args.Option("--choice");
  std::optional<std::string> host = args.Option("--host");
  std::optional<std::string> file = args.Option("--file");
  std::optional<std::string> call = args.Option("--call");
  std::optional<long long> interval = args.NumberOption("--interval", 1, 86400);
  *listChoices = args.Flag("--choices");
  if (args.Flag("--no-country")) {
    config->lookupCountry = false;
  }
  if (source) {
    std::optional<SpotSource> kind = SpotSourceFromName(*source);
    if (!kind) {
      args.SetError("--source takes web, csv, log or telnet, not \"" + *source + "\"");
      return false;
    }
    config->source = *kind;
  } else if (file) {
    config->source = SpotSource::kLogFile;
  }
  if (file) {
    config->servers.logFile = *file;
  }
  if (host && !ApplyHost(args, *host, config)) {
    return false;
  }
  if (call) {
    config->telnet.callsign = *call;
  }
  if (interval) {
    config->refreshSeconds = static_cast<int>(*interval);
  }
  if (choice) {
    config->choice = *choice;
  } else if (!FindChoice(config->source, config->choice)) {
    // The window's stored choice belongs to another source: take this source's first list.
    config->choice = ChoiceNames(config->source).front();
  }
  if (!*listChoices && !FindChoice(config->source, config->choice)) {
    args.SetError("there is no list \"" + config->choice + "\" for the " +
                  SpotSourceName(config->source) + " source (--choices lists them)");
    return false;
  }
  if (config->source == SpotSource::kTelnet && !*listChoices &&
      (config->telnet.host.empty() || config->telnet.callsign.empty())) {
    args.SetError("a telnet cluster needs --host and --call (or the window's settings)");
    return false;
  }
  return true;
}

}  // namespace

int RunSpotsCommand(const Globals& globals, const Args& words) {
  ArgReader args(words);
  if (args.Flag("--help") || args.Flag("-h")) {
    std::printf("%s", kUsage);
    return 0;
  }
  DxClusterConfig config = DxClusterConfig::Load(Settings::Default());
  const bool watch = args.Flag("--watch");
  const bool json = args.Flag("--json");
  const auto seconds = args.NumberOption("--seconds", 1, 31536000);
  bool listChoices = false;
  ApplyOptions(args, &config, &listChoices);
  if (std::string error = args.Finish(); !error.empty()) {
    std::fprintf(stderr, "tavlorin-cli spots: %s\n\n%s", error.c_str(), kUsage);
    return 2;
  }
  if (listChoices) {
    for (const std::string& name : ChoiceNames(config.source)) {
      std::printf("%s\n", name.c_str());
    }
    return 0;
  }
  std::unique_ptr<LogbookDatabase> database;
  CountryTables shipped;
  const CountryTables* countries = nullptr;
  if (config.lookupCountry && !LoadCountries(globals, &database, &shipped, &countries)) {
    return 1;
  }

  const std::atomic<bool>& stop = StopOnSignals();
  EventLoop loop;
  CliDxHost host(loop, watch, json);
  CDXClusterDyn window(host, config, countries, nullptr);
  host.Attach(&window);
  window.Open();
  using std::chrono::milliseconds;
  if (watch) {
    window.SetDisplayUpdates(true, false);
    loop.Run(seconds ? milliseconds(*seconds * 1000) : milliseconds::max(), &stop);
    window.Close();
    return 0;
  }
  if (config.source == SpotSource::kTelnet) {
    loop.Run(milliseconds(seconds.value_or(10) * 1000), &stop);  // listen first
  }
  window.Refresh();
  // The fetch itself is bounded by the transfer's own time-outs.
  while (host.finished() == 0 && !stop) {
    loop.Run(milliseconds(100), &stop);
  }
  window.Close();
  if (!host.drawn()) {
    return 1;
  }
  if (!json && !window.list().title().empty()) {
    std::fprintf(stderr, "%s\n", window.list().title().c_str());
  }
  for (const Spot& spot : window.list().rows()) {
    PrintSpot(spot, json);
  }
  return 0;
}

}  // namespace tavlorin::cli
