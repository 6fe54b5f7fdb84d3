// KenwoodTransaction: one command and its reply over the link, with each family's read rules.
//
//  - Kenwood: up to 3 attempts; each sends the command and reads up to 5 replies, skipping
//    those that are not the answer (auto-information, late replies, "E;"/"O;", malformed
//    "FA"/"FB"). "?;" ends the read at once, except for "FA"/"FB", where it is skipped.
//  - Elecraft: up to 5 attempts, 200 ms apart from the third on; "?;" costs one attempt.
// Between attempts both directions of the port are purged so a late reply cannot answer the
// next command. A reply counts only when it ends in ";", so a read returns as soon as the ";"
// arrives and never waits out a time-out for a complete reply.
//
// Holds references to the radio's link, clock and abort flag; owned by the KenwoodDriver and
// used on the radio's thread only. The abort flag (set by the window's thread when a user
// action is queued) stops a read between attempts.
#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "link/radio_link.h"
#include "shell/clock.h"

namespace tavlorin {

class KenwoodTransaction {
 public:
  KenwoodTransaction(RadioLink& link, Clock& clock, const std::atomic<bool>& abort)
      : link_(link), clock_(clock), abort_(abort) {}

  // Both families send alike: ";" appended when missing, at most 252 characters. True when
  // the port took every byte.
  bool KenwoodSend(std::string_view command);
  bool ElecraftSend(std::string_view command) { return KenwoodSend(command); }
  // Send `command` and return the reply's value text (after the command letters, without
  // ";"); empty when no acceptable reply came.
  std::string KenwoodRead(std::string_view command);
  std::string ElecraftRead(std::string_view command);

  static constexpr int kKenwoodAttempts = 3;
  static constexpr int kKenwoodRepliesPerAttempt = 5;
  static constexpr int kElecraftAttempts = 5;
  static constexpr std::chrono::milliseconds kElecraftRetryWait{200};

 private:
  // One reply up to ";"; empty when nothing or only an unterminated fragment arrived.
  std::string ReadReply();
  // The inner loop of a Kenwood attempt: the reply the search ended with, or empty.
  std::string FindKenwoodCandidate(std::string_view letters);

  RadioLink& link_;
  Clock& clock_;
  const std::atomic<bool>& abort_;
};

}  // namespace tavlorin
