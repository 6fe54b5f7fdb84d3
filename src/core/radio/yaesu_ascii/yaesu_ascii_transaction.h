// YaesuAsciiTransaction: one command and its reply over the link, with the read rules of
// Yaesu's ASCII command set.
//
//  - A read sends the command and reads up to 4 replies: a reply that does not start with the
//    command's letters (auto-information the radio still sends, the late answer to an earlier
//    command) is skipped; "?;" is the radio refusing the command and ends the read at once.
//  - No reply (the link's time-outs ran out, or only a fragment without ";" came) costs one of
//    3 attempts; both directions of the port are purged before the next one, so a late reply
//    cannot answer the next command.
//  - A set command is sent and not answered.
//
// Holds references to the radio's link and abort flag; made per operation by the family's
// driver and used on the radio's thread only. The abort flag (a user action is waiting) stops
// a read between attempts.
#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "link/radio_link.h"

namespace tavlorin {

class YaesuAsciiTransaction {
 public:
  enum class Outcome { kAnswer, kRefused, kNoAnswer };
  struct Reply {
    Outcome outcome = Outcome::kNoAnswer;
    std::string value;  // kAnswer: the text after the command letters, without ";"
  };

  YaesuAsciiTransaction(RadioLink& link, const std::atomic<bool>& abort)
      : link_(link), abort_(abort) {}

  // Sends `command` (";" appended when missing); true when the port took every byte.
  bool Send(std::string_view command);
  Reply Read(std::string_view command);

  static constexpr int kAttempts = 3;
  static constexpr int kRepliesPerAttempt = 4;

 private:
  // One reply up to ";"; empty when nothing or only an unterminated fragment arrived.
  std::string ReadReply();

  RadioLink& link_;
  const std::atomic<bool>& abort_;
};

}  // namespace tavlorin
