#include "spots/spot_submission.h"

#include <cctype>
#include <cstdio>
#include <fstream>

#include "shell/debug_log.h"
#include "spots/http_transfer.h"
#include "spots/spot_choices.h"
#include "spots/spot_settings.h"

namespace tavlorin {

std::string FormEncode(std::string_view text) {
  std::string out;
  for (char c : text) {
    if (c == ' ') {
      out += '+';
    } else if (c == '/' || c == '?' || c == '%' || c == '#' || c == '&') {
      char hex[4];
      std::snprintf(hex, sizeof hex, "%%%02X", static_cast<unsigned char>(c));
      out += hex;
    } else {
      out += c;
    }
  }
  return out;
}

std::string FormatSpotKilohertz(uint32_t frequency100Hz) {
  char text[32];
  std::snprintf(text, sizeof text, "%u.%01u", frequency100Hz / 10, frequency100Hz % 10);
  return text;
}

std::optional<uint32_t> ParseSpotMegahertz(std::string_view mhz) {
  size_t dot = mhz.find('.');
  std::string_view whole = mhz.substr(0, dot);
  std::string_view fraction = dot == std::string_view::npos ? "" : mhz.substr(dot + 1);
  if (whole.empty() || whole.size() > 4 || fraction.size() > 4) {
    return std::nullopt;
  }
  uint32_t value = 0;
  for (std::string_view part : {whole, fraction}) {
    for (char c : part) {
      if (!std::isdigit(static_cast<unsigned char>(c))) {
        return std::nullopt;
      }
      value = value * 10 + static_cast<uint32_t>(c - '0');
    }
  }
  for (size_t i = fraction.size(); i < 4; ++i) {
    value *= 10;
  }
  return value;
}

std::string SpotFormBody(const SpotSubmission& spot) {
  return "mycall=" + FormEncode(spot.myCall) + "&dxcall=" + FormEncode(spot.dxCall) +
         "&freq=" + FormatSpotKilohertz(spot.frequency100Hz) + "&info=" + FormEncode(spot.info);
}

std::string SpotDxCommand(const SpotSubmission& spot) {
  std::string command = "DX " + FormatSpotKilohertz(spot.frequency100Hz) + " " + spot.dxCall;
  if (!spot.info.empty()) {
    command += " " + spot.info;
  }
  return command;
}

SubmitOutcome SubmitSpot(const std::string& host, const SpotSubmission& spot, Settings* settings,
                         const std::atomic<bool>* abort) {
  if (settings != nullptr) {
    settings->Set(spot_settings::kMyCall, spot.myCall);
  }
  SubmitOutcome outcome;
  if (host.find_first_not_of(' ') == std::string::npos) {
    outcome.status = "No spot-entry server is set";
    return outcome;
  }
  HttpReply reply;
  Status s = HttpPost(
      ServerAddress(host, std::string_view(kSpotEntryPath).substr(1)),
      "application/x-www-form-urlencoded", SpotFormBody(spot), &reply,
      [](std::string_view piece) {
        DebugLog::Write("Reply: %s\n", std::string(piece).c_str());
      },
      abort);
  outcome.reply = std::move(reply.body);
  if (!s.ok()) {
    outcome.status = s.message();
  } else if (reply.status == 200) {
    outcome.ok = true;
    outcome.status = kSubmittedOk;
  } else {
    outcome.status = "Failed: status = " + std::to_string(reply.status);
  }
  return outcome;
}

Status SaveSubmitReply(const std::string& reply, const std::filesystem::path& folder,
                       std::filesystem::path* saved) {
  *saved = folder / kSubmitReplyFileName;
  std::ofstream out(*saved, std::ios::binary | std::ios::trunc);
  out << reply;
  out.close();
  if (!out) {
    return Status::Error("Cannot write " + saved->string());
  }
  return Status::Ok();
}

void SpotSubmitter::Submit(std::string host, SpotSubmission spot, Settings* settings, Done done) {
  worker_.Post([this, host = std::move(host), spot = std::move(spot), settings,
                done = std::move(done)] { done(SubmitSpot(host, spot, settings, &abort_)); });
}

}  // namespace tavlorin
