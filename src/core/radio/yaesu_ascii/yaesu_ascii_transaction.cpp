#include "radio/yaesu_ascii/yaesu_ascii_transaction.h"

#include <cstdint>

#include "radio/yaesu_ascii/yaesu_ascii_codec.h"
#include "shell/debug_log.h"

namespace tavlorin {

namespace ya = yaesu_ascii;

bool YaesuAsciiTransaction::Send(std::string_view command) {
  return link_.Write(ya::TerminatedCommand(command));
}

std::string YaesuAsciiTransaction::ReadReply() {
  constexpr size_t kReplyBufferSize = 256;
  uint8_t buffer[kReplyBufferSize];
  size_t got = 0;
  link_.ReadUntil(buffer, sizeof buffer, static_cast<uint8_t>(ya::kTerminator), &got);
  std::string reply(reinterpret_cast<const char*>(buffer), got);
  if (!reply.empty() && reply.back() != ya::kTerminator) {
    DebugLog::Write("YaesuRead: incomplete reply %s", reply.c_str());
    return {};
  }
  return reply;
}

YaesuAsciiTransaction::Reply YaesuAsciiTransaction::Read(std::string_view command) {
  const std::string letters(ya::CommandLetters(command));
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (attempt > 0 && (abort_ || link_.lost())) {
      break;
    }
    if (!Send(command)) {
      break;
    }
    for (int i = 0; i < kRepliesPerAttempt; ++i) {
      const std::string reply = ReadReply();
      if (reply.empty()) {
        break;
      }
      if (reply == ya::kRefusal) {
        DebugLog::Write("YaesuRead: %s refused", letters.c_str());
        return {Outcome::kRefused, {}};
      }
      if (ya::IsAnswer(reply, letters)) {
        return {Outcome::kAnswer, ya::ReplyValue(reply, letters)};
      }
      DebugLog::Write("YaesuRead: %s skipped %s", letters.c_str(), reply.c_str());
    }
    link_.Purge();
  }
  DebugLog::Write("YaesuRead: no answer to %s", letters.c_str());
  return {};
}

}  // namespace tavlorin
