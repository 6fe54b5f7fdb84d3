// tavlorin-cli webpage: the web page update from a terminal: build the page from a template, or
// build and upload it (FTP, or a copy into a local directory), once or every few minutes.
#include <cstdio>
#include <ctime>
#include <optional>
#include <string>

#include "args.h"
#include "commands.h"
#include "interfaces/webpage_update.h"
#include "radio/frequency.h"
#include "shell/event_loop.h"
#include "shell/paths.h"
#include "spots_cli.h"
#include "stop_signal.h"

namespace tavlorin::cli {
namespace {

constexpr const char* kUsage =
    "Usage: tavlorin-cli webpage build TEMPLATE [VALUES]\n"
    "       tavlorin-cli webpage upload [TEMPLATE] [--host HOST[:PORT]|local] [--dir D]\n"
    "                                   [--user U] [--password-file F] [VALUES]\n"
    "                                   [--auto [--minutes N] [--seconds S]]\n"
    "VALUES: [--freq HZ] [--mode M] [--radio R] [--image I]\n"
    "build    replaces the tokens ###-frequency-###, ###-mode-###, ###-radio-###,\n"
    "         ###-image-### and ###-timestamp-### and prints the built page's path\n"
    "         (\"TVR Web Page Update.htm\" in the data folder).\n"
    "upload   builds the page and uploads it under the template's file name by FTP, or copies\n"
    "         it into --dir when the host is \"local\", printing the upload log. The defaults\n"
    "         are the settings \"CWebPageUpdate::...\"; the password is read from the first\n"
    "         line of --password-file (never from the command line). --auto repeats the\n"
    "         update every --minutes (default m_nUpdateMinutes) until --seconds pass or Ctrl-C.\n"
    "--freq takes hertz and is shown as the radio window shows it (14070000 -> 14.070.000).\n";

bool ReadValues(ArgReader& args, WebPageValues* values) {
  if (std::optional<long long> hz = args.NumberOption("--freq", 0, kMaxTypedFrequency)) {
    values->frequency = FormatFrequency(static_cast<Frequency>(*hz));
  }
  values->mode = args.Option("--mode").value_or("");
  values->radio = args.Option("--radio").value_or("");
  values->image = args.Option("--image").value_or("");
  return args.error().empty();
}

void PrintLine(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

int Build(ArgReader& args) {
  WebPageValues values;
  ReadValues(args, &values);
  std::vector<std::string> positionals = args.Positionals();
  std::string error = args.Finish();
  if (error.empty() && positionals.size() != 1) {
    error = "build takes one TEMPLATE";
  }
  if (!error.empty()) {
    std::fprintf(stderr, "tavlorin-cli webpage: %s\n\n%s", error.c_str(), kUsage);
    return 2;
  }
  std::filesystem::path built;
  Status s = BuildWebPage(positionals[0], values, std::time(nullptr), DataDir(), &built);
  if (!s.ok()) {
    std::fprintf(stderr, "%s\n", s.message().c_str());
    return 1;
  }
  std::printf("%s\n", built.c_str());
  return 0;
}

int Upload(ArgReader& args) {
  WebPageConfig config = WebPageConfig::Load(Settings::Default());
  WebPageValues values;
  ReadValues(args, &values);
  std::optional<std::string> host = args.Option("--host");
  std::optional<std::string> dir = args.Option("--dir");
  std::optional<std::string> user = args.Option("--user");
  std::optional<std::string> passwordFile = args.Option("--password-file");
  const bool autoOn = args.Flag("--auto");
  std::optional<long long> minutes = args.NumberOption("--minutes", 1, 10080);
  std::optional<long long> seconds = args.NumberOption("--seconds", 1, 31536000);
  std::vector<std::string> positionals = args.Positionals();
  if (positionals.size() > 1) {
    args.SetError("upload takes at most one TEMPLATE");
  }
  if (passwordFile && !ReadFirstLine(*passwordFile, &config.password)) {
    args.SetError("cannot read the password file " + *passwordFile);
  }
  if (std::string error = args.Finish(); !error.empty()) {
    std::fprintf(stderr, "tavlorin-cli webpage: %s\n\n%s", error.c_str(), kUsage);
    return 2;
  }
  if (!positionals.empty()) {
    config.templatePath = positionals[0];
  }
  config.host = host.value_or(config.host);
  config.directory = dir.value_or(config.directory);
  config.user = user.value_or(config.user);
  if (minutes) {
    config.updateMinutes = static_cast<int>(*minutes);
  }
  if (config.templatePath.empty()) {
    std::fprintf(stderr, "tavlorin-cli webpage: no TEMPLATE given and none is set\n");
    return 2;
  }
  if (std::string invalid = ValidateWebPageConfig(config); !invalid.empty()) {
    std::fprintf(stderr, "Error: %s\n", invalid.c_str());
    return 1;
  }
  if (!autoOn) {
    return CWebPageUpdate::Update(config, values, DataDir(), PrintLine, {}).ok() ? 0 : 1;
  }
  const std::atomic<bool>& stop = StopOnSignals();
  CWebPageUpdate updater({PrintLine, {}}, DataDir());
  updater.SetValues(values);
  config.autoOn = true;
  updater.Configure(config);
  updater.UpdateNow();
  EventLoop waiting;
  using std::chrono::milliseconds;
  waiting.Run(seconds ? milliseconds(*seconds * 1000) : milliseconds::max(), &stop);
  return 0;
}

}  // namespace

int RunWebpageCommand(const Globals&, const Args& words) {
  const std::string action = words.empty() ? "" : words[0];
  ArgReader args(words.empty() ? words : Args(words.begin() + 1, words.end()));
  if (action == "--help" || action == "-h" || args.Flag("--help")) {
    std::printf("%s", kUsage);
    return 0;
  }
  if (action == "build") {
    return Build(args);
  }
  if (action == "upload") {
    return Upload(args);
  }
  std::fprintf(stderr, "tavlorin-cli webpage: expected \"build\" or \"upload\"\n\n%s", kUsage);
  return 2;
}

}  // namespace tavlorin::cli
