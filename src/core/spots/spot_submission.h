// Spot submission: the "Submit DX spot" dialog's work (CSubmitSpot) without the dialog. One spot
// is posted to a web cluster's spot-entry script as a form, or, when the spots come from a
// telnet cluster, sent to the node as its "DX" command.
//
// The form escapes exactly five characters ("/", "?", "%", "#", "&" as "%XX") and turns blanks
// into "+"; "=" and non-ASCII pass unchanged, as the spot-entry script expects. The frequency
// is entered in MHz with four decimals ("####.#### MHz") and travels as kHz with one decimal.
//
// The encoding functions are pure (any thread). SubmitSpot blocks on the network: run it on a
// worker (SpotSubmitter does), never on a window's thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "shell/loop_thread.h"
#include "shell/settings.h"
#include "shell/status.h"

namespace tavlorin {

inline constexpr const char* kSpotEntryPath = "/cgi-bin/spotin2.sh";
inline constexpr const char* kSubmittedOk = "Submitted OK";
inline constexpr const char* kSubmitReplyFileName = "DXClusterReply.html";
inline constexpr const char* kRequiredMark = "* = Input required";

struct SpotSubmission {
  std::string myCall;
  std::string dxCall;
  uint32_t frequency100Hz = 0;  // the masked field's value: 14.0255 MHz is 140255
  std::string info;
};

struct SubmitOutcome {
  bool ok = false;
  std::string status;  // "Submitted OK", "Failed: status = 404", or the library's error text
  std::string reply;   // what the server answered, kept for viewing
};

std::string FormEncode(std::string_view text);
// "%d.%01d" of the value in 100 Hz units: 70001 -> "7000.1".
std::string FormatSpotKilohertz(uint32_t frequency100Hz);
// "7.0001" -> 70001: up to four digits before the "." and four after; nullopt otherwise.
std::optional<uint32_t> ParseSpotMegahertz(std::string_view mhz);
// "mycall=...&dxcall=...&freq=...&info=...".
std::string SpotFormBody(const SpotSubmission& spot);
// The telnet cluster's command: "DX 7000.1 DL1ABC info".
std::string SpotDxCommand(const SpotSubmission& spot);

// Saves my callsign (when settings are given), posts the form to kSpotEntryPath on `host`
// ("host" or "host:port") and logs each piece of the reply as "Reply: %s\n".
SubmitOutcome SubmitSpot(const std::string& host, const SpotSubmission& spot, Settings* settings,
                         const std::atomic<bool>* abort = nullptr);

// Writes the kept reply to "DXClusterReply.html" in `folder` (normally DataDir()).
Status SaveSubmitReply(const std::string& reply, const std::filesystem::path& folder,
                       std::filesystem::path* saved);

// SpotSubmitter: SubmitSpot on a worker thread, for a dialog. `done` is called on the worker
// thread; post it on to the window. The destructor aborts a submission under way.
class SpotSubmitter {
 public:
  using Done = std::function<void(SubmitOutcome outcome)>;
  ~SpotSubmitter() { abort_ = true; }
  void Submit(std::string host, SpotSubmission spot, Settings* settings, Done done);

 private:
  std::atomic<bool> abort_{false};
  LoopThread worker_;
};

}  // namespace tavlorin
