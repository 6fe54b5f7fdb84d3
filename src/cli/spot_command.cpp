// tavlorin-cli spot: submitting one DX spot (to a web cluster's spot-entry script, or to a
// telnet cluster node as its DX command) and the cluster status record.
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "args.h"
#include "commands.h"
#include "radio/frequency.h"
#include "shell/paths.h"
#include "spots/cluster_status.h"
#include "spots/dx_cluster_config.h"
#include "spots/spot_settings.h"
#include "spots/spot_submission.h"
#include "spots/telnet_cluster.h"
#include "spots_cli.h"

namespace tavlorin::cli {
namespace {

constexpr const char* kUsage =
    "Usage: tavlorin-cli spot submit --mycall C --dxcall C --freq MHZ --info TEXT\n"
    "                                [--host HOST[:PORT]] [--telnet] [--save-reply]\n"
    "       tavlorin-cli spot status [--freq HZ] [--mode M] [--radio R] [--call C] [--name N]\n"
    "                                [--dxcc D] [--locator L] [--comment T]\n"
    "                                [--send [--host HOST[:PORT]]]\n"
    "submit   posts the spot to the spot-entry script of --host (default: the setting\n"
    "         \"CSubmitSpot::m_strHost\") and prints the status text (\"Submitted OK\",\n"
    "         \"Failed: status = N\" or the transfer's error). The frequency is MHz with up\n"
    "         to four decimals (7.0001). --save-reply keeps the server's reply as\n"
    "         \"DXClusterReply.html\" in the data folder. --telnet sends the spot to a telnet\n"
    "         cluster node as its DX command instead, logged in as --mycall; --host then\n"
    "         names the node (default: the DX cluster window's, port 7300).\n"
    "status   prints the cluster status record of the station settings\n"
    "         (\"CTVRClusterUpdate::...\", or the options given) with the radio's frequency\n"
    "         (hertz), mode and model; --send posts it (HTTP POST, text/plain) to the status\n"
    "         server.\n";

// Waits (bounded) for the node to confirm the spot with its own "DX de MYCALL:" line.
class Confirmation {
 public:
  void Line(const std::string& line, const std::string& myCall) {
    std::lock_guard lock(mutex_);
    if (line.find("DX de " + myCall + ":") != std::string::npos) {
      confirmed_ = true;
    } else if (sent_ && !confirmed_) {
      lastOther_ = line;
    }
    changed_.notify_all();
  }
  void Sent() {
    std::lock_guard lock(mutex_);
    sent_ = true;
  }
  bool Wait(std::chrono::seconds limit, std::string* other) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, limit, [this] { return confirmed_; });
    *other = lastOther_;
    return confirmed_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool sent_ = false;
  bool confirmed_ = false;
  std::string lastOther_;
};

int SubmitToTelnet(const SpotSubmission& spot, TelnetClusterConfig node) {
  node.callsign = spot.myCall;
  Confirmation confirmation;
  TelnetCluster::Callbacks callbacks;
  callbacks.spotLine = [&](const std::string& line) { confirmation.Line(line, spot.myCall); };
  callbacks.otherLine = [&](const std::string& line) { confirmation.Line(line, spot.myCall); };
  TelnetCluster cluster(node, callbacks);
  for (int i = 0; i < 200 && !cluster.loggedIn(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  Status s = cluster.Send(SpotDxCommand(spot));
  if (!s.ok()) {
    std::printf("%s\n", s.message().c_str());
    return 1;
  }
  confirmation.Sent();
  std::string other;
  if (confirmation.Wait(std::chrono::seconds(15), &other)) {
    std::printf("%s\n", kSubmittedOk);
    return 0;
  }
  std::printf("Failed: %s\n", other.empty() ? "the cluster did not confirm the spot" : other.c_str());
  return 1;
}

int Submit(ArgReader& args) {
  std::optional<std::string> myCall = args.Option("--mycall");
  std::optional<std::string> dxCall = args.Option("--dxcall");
  std::optional<std::string> freq = args.Option("--freq");
  std::optional<std::string> info = args.Option("--info");
  std::optional<std::string> host = args.Option("--host");
  const bool saveReply = args.Flag("--save-reply");
  const bool telnet = args.Flag("--telnet");
  std::optional<uint32_t> frequency;
  Settings& settings = Settings::Default();
  if (!myCall) {
    myCall = settings.Get(spot_settings::kMyCall);
  }
  if (myCall->empty() || !dxCall || dxCall->empty() || !freq) {
    args.SetError("--mycall, --dxcall and --freq are required");
  } else if (!(frequency = ParseSpotMegahertz(*freq))) {
    args.SetError("--freq takes MHz with up to four digits before and after the \".\", not \"" +
                  *freq + "\"");
  }
  TelnetClusterConfig node = DxClusterConfig::Load(settings).telnet;
  if (telnet && host && !SplitHostPort(*host, &node.host, &node.port)) {
    args.SetError("--host takes HOST or HOST:PORT, not \"" + *host + "\"");
  }
  if (std::string error = args.Finish(); !error.empty()) {
    std::fprintf(stderr, "tavlorin-cli spot: %s\n\n%s", error.c_str(), kUsage);
    return 2;
  }
  SpotSubmission spot{*myCall, *dxCall, *frequency, info.value_or("")};
  if (telnet) {
    if (node.host.empty()) {
      std::fprintf(stderr, "tavlorin-cli spot: no telnet cluster is set\n");
      return 2;
    }
    settings.Set(spot_settings::kMyCall, spot.myCall);
    return SubmitToTelnet(spot, node);
  }
  SubmitOutcome outcome =
      SubmitSpot(host.value_or(settings.Get(spot_settings::kSubmitHost)), spot, &settings);
  std::printf("%s\n", outcome.status.c_str());
  if (saveReply && !outcome.reply.empty()) {
    std::filesystem::path saved;
    Status s = SaveSubmitReply(outcome.reply, DataDir(), &saved);
    std::fprintf(stderr, "%s\n", s.ok() ? ("Reply saved as " + saved.string()).c_str()
                                        : s.message().c_str());
  }
  return outcome.ok ? 0 : 1;
}

int StatusRecord(ArgReader& args) {
  RadioStatusValues values;
  if (std::optional<long long> hz = args.NumberOption("--freq", 0, kMaxTypedFrequency)) {
    values.frequency = std::to_string(*hz);
  }
  values.mode = args.Option("--mode").value_or("");
  values.radio = args.Option("--radio").value_or("");
  ClusterStation station = ClusterStation::Load(Settings::Default());
  struct Override {
    const char* option;
    std::string* field;
  } overrides[] = {{"--call", &station.callsign},  {"--name", &station.name},
                   {"--dxcc", &station.dxcc},      {"--locator", &station.locator},
                   {"--comment", &station.comment}};
  for (const Override& o : overrides) {
    *o.field = args.Option(o.option).value_or(*o.field);
  }
  if (std::optional<std::string> host = args.Option("--host")) {
    uint16_t port = 80;
    if (!SplitHostPort(*host, &station.host, &port)) {
      args.SetError("--host takes HOST or HOST:PORT, not \"" + *host + "\"");
    }
    station.port = host->find(':') != std::string::npos ? std::to_string(port) : "";
  }
  const bool send = args.Flag("--send");
  if (std::string error = args.Finish(); !error.empty()) {
    std::fprintf(stderr, "tavlorin-cli spot: %s\n\n%s", error.c_str(), kUsage);
    return 2;
  }
  const std::string record = BuildStatusRecord(station, values);
  std::printf("%s\n", record.c_str());
  if (!send) {
    return 0;
  }
  std::string answer;
  Status s = SendStatusRecord(station, record, &answer);
  if (!s.ok()) {
    std::fprintf(stderr, "%s\n", s.message().c_str());
    return 1;
  }
  std::fprintf(stderr, "Sent%s%s\n", answer.empty() ? "" : ": ", answer.c_str());
  return 0;
}

}  // namespace

int RunSpotCommand(const Globals&, const Args& words) {
  const std::string action = words.empty() ? "" : words[0];
  ArgReader args(words.empty() ? words : Args(words.begin() + 1, words.end()));
  if (action == "--help" || action == "-h" || args.Flag("--help")) {
    std::printf("%s", kUsage);
    return 0;
  }
  if (action == "submit") {
    return Submit(args);
  }
  if (action == "status") {
    return StatusRecord(args);
  }
  std::fprintf(stderr, "tavlorin-cli spot: expected \"submit\" or \"status\"\n\n%s", kUsage);
  return 2;
}

}  // namespace tavlorin::cli
