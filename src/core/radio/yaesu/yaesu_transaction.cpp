#include "radio/yaesu/yaesu_transaction.h"

#include <algorithm>

#include "radio/cat_radio.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

const char* LinkError(RadioLink& link) {
  return link.lost() ? link.lostReason().c_str() : "Timeout";
}

}  // namespace

bool YaesuTransaction::Write(const YaesuCommand& command, [[maybe_unused]] const char* label) {
  RadioLink& link = radio_.link();
  if (!link.Write(command.data(), command.size())) {
    DebugLog::Write("YaesuSend error: %s", link.IsOpen() ? LinkError(link) : "Port not open");
    return false;
  }
  return true;
}

bool YaesuTransaction::ReadReply(std::span<uint8_t> reply, const char* label) {
  std::fill(reply.begin(), reply.end(), uint8_t{0});
  RadioLink& link = radio_.link();
  size_t got = 0;
  if (!link.Read(reply.data(), reply.size(), &got)) {
    DebugLog::Write("YaesuRead error: %s (%s)", LinkError(link), label);
    return false;
  }
  if (got == 0) {
    DebugLog::Write("YaesuRead error: %u / %u bytes read (%s)", 0u,
                    static_cast<unsigned>(reply.size()), label);
    return false;
  }
  return true;
}

bool YaesuTransaction::Exchange(const YaesuCommand& command, std::span<uint8_t> reply,
                                const char* label) {
  std::fill(reply.begin(), reply.end(), uint8_t{0});
  if (!Write(command, label)) {
    return false;
  }
  return ReadReply(reply, label);
}

}  // namespace tavlorin
