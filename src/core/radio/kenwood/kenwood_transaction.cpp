#include "radio/kenwood/kenwood_transaction.h"

#include <cstdint>

#include "radio/kenwood/kenwood_codec.h"
#include "shell/debug_log.h"

namespace tavlorin {

bool KenwoodTransaction::KenwoodSend(std::string_view command) {
  return link_.Write(kenwood::TerminatedCommand(command));
}

std::string KenwoodTransaction::ReadReply() {
  uint8_t buffer[kenwood::kReplyBufferSize];
  size_t got = 0;
  link_.ReadUntil(buffer, sizeof buffer, static_cast<uint8_t>(kenwood::kTerminator), &got);
  std::string reply(reinterpret_cast<const char*>(buffer), got);
  if (!reply.empty() && reply.back() != kenwood::kTerminator) {
    DebugLog::Write("KenwoodRead: incomplete reply %s", reply.c_str());
    return {};
  }
  return reply;
}

std::string KenwoodTransaction::FindKenwoodCandidate(std::string_view letters) {
  for (int i = 0; i < kKenwoodRepliesPerAttempt; ++i) {
    std::string reply = ReadReply();
    if (reply.empty()) {
      return {};
    }
    if (kenwood::JudgeKenwoodReply(reply, letters) == kenwood::KenwoodReplyVerdict::kEndSearch) {
      return reply;
    }
    DebugLog::Write("KenwoodRead: %s skipped %s", std::string(letters).c_str(), reply.c_str());
  }
  return {};
}

std::string KenwoodTransaction::KenwoodRead(std::string_view command) {
  const std::string_view letters = kenwood::CommandLetters(command);
  for (int attempt = 0; attempt < kKenwoodAttempts; ++attempt) {
    if (attempt > 0 && abort_) {
      break;
    }
    if (!KenwoodSend(command)) {
      break;
    }
    std::string candidate = FindKenwoodCandidate(letters);
    if (kenwood::IsRefusal(candidate, letters)) {
      DebugLog::Write("KenwoodRead: %s refused", std::string(letters).c_str());
      return {};
    }
    if (kenwood::IsKenwoodAnswer(candidate, letters)) {
      return kenwood::ReplyValue(candidate, letters);
    }
    link_.Purge();
  }
  DebugLog::Write("KenwoodRead: no answer to %s", std::string(letters).c_str());
  return {};
}

std::string KenwoodTransaction::ElecraftRead(std::string_view command) {
  const std::string_view letters = kenwood::CommandLetters(command);
  for (int attempt = 0; attempt < kElecraftAttempts; ++attempt) {
    if (attempt > 0 && abort_) {
      break;
    }
    if (attempt >= 2) {
      clock_.SleepFor(kElecraftRetryWait);
    }
    if (!ElecraftSend(command)) {
      break;
    }
    std::string reply = ReadReply();
    if (kenwood::IsElecraftAnswer(reply, letters)) {
      return kenwood::ReplyValue(reply, letters);
    }
    link_.Purge();
  }
  DebugLog::Write("ElecraftRead: no answer to %s", std::string(letters).c_str());
  return {};
}

}  // namespace tavlorin
