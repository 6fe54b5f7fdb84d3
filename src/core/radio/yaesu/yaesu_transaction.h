// YaesuTransaction: the one exchange every Yaesu read goes through: write a 5-byte command,
// read a reply of fixed length.
//
// The reply buffer is zeroed first. A failed write logs "YaesuSend error: %s", a failed read
// "YaesuRead error: %s (%s)", an empty reply "YaesuRead error: %u / %u bytes read (%s)"; each
// returns false. A reply shorter than asked but not empty counts as success, the missing bytes
// staying zero: the older radios end some replies early, and the callers decode from zeros.
// Nothing is purged before a command: a purge also drops output the port has not sent yet,
// and the radios answer no set command, so it would swallow the set written just before.
//
// Owned by the YaesuDriver of one CatRadio; used on that radio's thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "radio/yaesu/yaesu_codec.h"

namespace tavlorin {

class CatRadio;

class YaesuTransaction {
 public:
  explicit YaesuTransaction(CatRadio& radio) : radio_(radio) {}

  // Writes the command with the debug label; false (and the log line) when the write fails.
  bool Write(const YaesuCommand& command, const char* label);
  // Write, then read reply.size() bytes into `reply`.
  bool Exchange(const YaesuCommand& command, std::span<uint8_t> reply, const char* label);
  // Reads `reply.size()` bytes without writing (a result byte after a set).
  bool ReadReply(std::span<uint8_t> reply, const char* label);

 private:
  CatRadio& radio_;
};

}  // namespace tavlorin
