// CivTransaction: one CI-V exchange over the radio's link: write a frame, then read frames for
// up to the 200 ms reply window until the awaited one arrives.
//
// Read rules, in the order a frame is judged once its 0xFD has arrived:
//  - the frame we just wrote coming back (a CI-V bus echoes every frame; many radios on a USB
//    cable do not) is skipped and the window starts again, so both kinds of radio answer at
//    full speed without waiting out a time-out; whether echoes arrive is learnt per connection;
//  - a broadcast (to 0x00) sets `transceiveSeen` and `unsolicitedData`; a transceive frequency
//    (command 00) is handed to the radio window at once through PostUnsolicitedFrequency. While
//    03 is awaited it also becomes the candidate answer, as a transceive mode (01) does while 04
//    is awaited: the radio's direct reply still wins when it comes within the window (broadcasts
//    left in the line from before our request would be older), else the window ends with the
//    latest candidate as the answer. Any other broadcast is dropped and the window starts again;
//  - a frame from the radio to the computer is the answer when its command is the awaited one
//    and its sub-command matches (or any is allowed), or when it is an acknowledge (FB FD); a
//    refusal (FA FD) ends the read at once;
//  - everything else (frames for other addresses, cut frames, noise) is dropped.
// A read gives up early when the radio's `abort` flag is raised (a user action is waiting).
//
// Owned by the CivDriver of one CatRadio; used on that radio's thread only.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "radio/civ/civ_frame.h"

namespace tavlorin {

class CatRadio;

// Whether the frames we send come back to us on this connection.
enum class CivEcho { kUnknown, kEchoes, kNoEcho };

class CivTransaction {
 public:
  static constexpr std::chrono::milliseconds kReplyWindow{200};
  // The longest one read may take, however many echoes and broadcasts restart its window.
  static constexpr std::chrono::milliseconds kReadDeadline{1000};

  explicit CivTransaction(CatRadio& radio) : radio_(radio) {}

  // Writes one frame from the computer to the radio's `civAddress` (CivSend). True when the
  // whole frame was written.
  bool Send(const std::vector<uint8_t>& payload, const char* label);
  // Reads until a frame with `command` (and `sub`, unless kCivAnySub) or an acknowledge arrives
  // (CivReadReply). True for a match or an acknowledge; *reply gets the frame.
  bool ReadReply(uint8_t command, uint8_t sub, CivFrame* reply, const char* label);
  // Reads until an acknowledge or a refusal arrives (CivReadAckNoack); true for FB FD.
  bool ReadAckNoack(const char* label);

  // Send, then ReadReply for the payload's command and `sub`.
  bool Request(const std::vector<uint8_t>& payload, uint8_t sub, CivFrame* reply,
               const char* label);
  // Send, then read the reply that repeats the whole payload (command and every sub-command
  // byte) before its data: a value read, where a late reply to 1A 05 00 41 must not answer
  // 1A 05 00 40.
  bool RequestExact(const std::vector<uint8_t>& payload, CivFrame* reply, const char* label);
  // Send, then ReadAckNoack: a set command.
  bool Command(const std::vector<uint8_t>& payload, const char* label);

  // Frequency bytes of the model (5; the IC-735 4): how long a transceive frequency frame is.
  void SetFrequencyBytes(int count) { frequencyBytes_ = count; }
  int frequencyBytes() const { return frequencyBytes_; }

  CivEcho echo() const { return echo_; }
  // Forgets what was learnt about the connection (a new Connect).
  void Reset() { echo_ = CivEcho::kUnknown; }

 private:
  enum class Verdict { kSkip, kAccept, kRefused };
  struct Awaited {
    uint8_t command;
    uint8_t sub;
    bool ackOnly;
    const std::vector<uint8_t>* prefix = nullptr;  // the reply must begin with these bytes
  };

  bool ReadUntilAnswer(const Awaited& awaited, CivFrame* reply, const char* label);
  Verdict Judge(const CivFrame& frame, const Awaited& awaited, bool* restartWindow);
  Verdict JudgeBroadcast(const CivFrame& frame, const Awaited& awaited);
  void Learn(bool echoSeen);

  CatRadio& radio_;
  CivFrame lastSent_;
  std::optional<CivFrame> candidate_;
  bool echoSeen_ = false;
  int frequencyBytes_ = 5;
  CivEcho echo_ = CivEcho::kUnknown;
};

}  // namespace tavlorin
