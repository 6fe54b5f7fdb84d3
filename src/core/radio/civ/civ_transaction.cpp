#include "radio/civ/civ_transaction.h"

#include <algorithm>

#include "radio/cat_radio.h"
#include "radio/civ/civ_codec.h"
#include "radio/civ/civ_frame_assembler.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

constexpr size_t kReadChunk = 256;

}  // namespace

bool CivTransaction::Send(const std::vector<uint8_t>& payload, const char* label) {
  lastSent_ = MakeCivFrame(radio_.civAddress, radio_.civControllerAddress, payload);
  echoSeen_ = false;
  if (!radio_.link().Write(lastSent_.bytes.data(), lastSent_.size())) {
    DebugLog::Write("CIVSend error (%s): %s", label, lastSent_.Hex().c_str());
    return false;
  }
  return true;
}

bool CivTransaction::ReadReply(uint8_t command, uint8_t sub, CivFrame* reply, const char* label) {
  return ReadUntilAnswer({command, sub, false}, reply, label);
}

bool CivTransaction::ReadAckNoack(const char* label) {
  CivFrame reply;
  if (!ReadUntilAnswer({0, kCivAnySub, true}, &reply, label)) {
    return false;
  }
  const size_t n = reply.size();
  DebugLog::Write("CIVReadAckNoack %02X %02X\n", reply.bytes[n - 2], reply.bytes[n - 1]);
  return true;
}

bool CivTransaction::Request(const std::vector<uint8_t>& payload, uint8_t sub, CivFrame* reply,
                             const char* label) {
  return Send(payload, label) && ReadReply(payload[0], sub, reply, label);
}

bool CivTransaction::RequestExact(const std::vector<uint8_t>& payload, CivFrame* reply,
                                  const char* label) {
  return Send(payload, label) &&
         ReadUntilAnswer({payload[0], kCivAnySub, false, &payload}, reply, label);
}

bool CivTransaction::Command(const std::vector<uint8_t>& payload, const char* label) {
  return Send(payload, label) && ReadAckNoack(label);
}

bool CivTransaction::ReadUntilAnswer(const Awaited& awaited, CivFrame* reply, const char* label) {
  Clock& clock = radio_.clock();
  RadioLink& link = radio_.link();
  const auto begin = clock.Now();
  auto windowStart = begin;
  CivFrameAssembler assembler;
  uint8_t buffer[kReadChunk];
  candidate_.reset();
  // Echoes and broadcasts start the reply window again, but never past the read's own deadline:
  // a radio that broadcasts all the time must not hold a read (and the worker) for ever.
  const auto deadline = begin + kReadDeadline;
  while (clock.Now() - windowStart < kReplyWindow && clock.Now() < deadline) {
    if (radio_.abort.load()) {
      DebugLog::Write("CIVReadReply: User abort (%s)", label);
      return false;
    }
    size_t got = 0;
    link.ReadUntil(buffer, sizeof buffer, kCivEnd, &got,
                   std::min(windowStart + kReplyWindow, deadline));
    if (link.lost()) {
      return false;
    }
    for (size_t i = 0; i < got; ++i) {
      if (!assembler.Add(buffer[i])) {
        continue;
      }
      bool restart = false;
      const Verdict verdict = Judge(assembler.frame(), awaited, &restart);
      if (verdict == Verdict::kAccept) {
        *reply = assembler.frame();
        if (!reply->IsBroadcast()) {
          Learn(echoSeen_);  // a broadcast may overtake our echo: learn from real replies
        }
        return true;
      }
      if (verdict == Verdict::kRefused) {
        DebugLog::Write("Read reply rejected (%s)", assembler.frame().Hex().c_str());
        Learn(echoSeen_);
        return false;
      }
      if (restart) {
        windowStart = clock.Now();
      }
    }
  }
  if (candidate_) {
    *reply = *candidate_;  // no direct reply: the latest broadcast is the answer
    return true;
  }
  if (awaited.ackOnly && !assembler.frame().bytes.empty() && !assembler.frame().complete()) {
    DebugLog::Write("CIVReadAckNoack() Not FD at end\n");
  }
  const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(clock.Now() - begin);
  DebugLog::Write(
      awaited.ackOnly ? "CIVReadAckNoack() Timeout\n" : "CIVReadReply: Timeout after %d ms\n",
      static_cast<int>(waited.count()));
  DebugLog::Write("Timeout\n");
  return false;
}

CivTransaction::Verdict CivTransaction::Judge(const CivFrame& frame, const Awaited& awaited,
                                              bool* restartWindow) {
  if (frame.bytes == lastSent_.bytes) {
    echoSeen_ = true;  // our own frame, back from the bus
    *restartWindow = true;
    return Verdict::kSkip;
  }
  if (frame.IsBroadcast()) {
    // A broadcast that carries what is awaited becomes the candidate answer and does not
    // stretch the window; any other broadcast starts the window again.
    const bool carriesAnswer = JudgeBroadcast(frame, awaited) == Verdict::kAccept;
    if (carriesAnswer) {
      candidate_ = frame;
    }
    *restartWindow = !carriesAnswer;
    return Verdict::kSkip;
  }
  // Most radios answer with the two addresses swapped (to us, from the radio); some radios and
  // interfaces repeat the header as we sent it. Both are the radio talking to us; anything else
  // is between other stations on the bus.
  const uint8_t radio = radio_.civAddress;
  const uint8_t us = radio_.civControllerAddress;
  const bool swapped = frame.destination() == us && (radio == 0 || frame.source() == radio);
  const bool asSent = frame.source() == us && (radio == 0 || frame.destination() == radio);
  if (!swapped && !asSent) {
    return Verdict::kSkip;
  }
  if (frame.IsRefusal()) {
    return Verdict::kRefused;
  }
  if (frame.IsAck()) {
    return Verdict::kAccept;
  }
  // With the header as sent, only data after what we sent tells an answer from an echo that was
  // not byte for byte ours (an earlier frame of ours still on the line).
  if (asSent && !swapped && frame.size() <= lastSent_.size()) {
    return Verdict::kSkip;
  }
  if (awaited.ackOnly) {
    // Some radios answer a set they cannot carry out with data instead of FA: not taken.
    DebugLog::Write("CIVReadAckNoack() Not FA FD or FB FD at end\n");
    return Verdict::kSkip;
  }
  if (awaited.prefix != nullptr) {
    const std::vector<uint8_t>& p = *awaited.prefix;
    const bool repeats =
        frame.size() >= 5 + p.size() && std::equal(p.begin(), p.end(), frame.bytes.begin() + 4);
    return repeats ? Verdict::kAccept : Verdict::kSkip;
  }
  if (frame.command() == awaited.command &&
      (awaited.sub == kCivAnySub || frame.sub() == awaited.sub)) {
    return Verdict::kAccept;
  }
  return Verdict::kSkip;
}

CivTransaction::Verdict CivTransaction::JudgeBroadcast(const CivFrame& frame,
                                                       const Awaited& awaited) {
  radio_.transceiveSeen = true;
  radio_.unsolicitedData = true;
  const size_t dataBytes = frame.size() - 6;
  if (frame.command() == kCivTransceiveFrequency &&
      dataBytes == static_cast<size_t>(frequencyBytes_)) {
    std::optional<Frequency> hz = DecodeCivFrequency(frame.bytes.data() + 5, frequencyBytes_);
    if (!hz) {
      return Verdict::kSkip;
    }
    radio_.PostUnsolicitedFrequency(*hz);
    if (!awaited.ackOnly && awaited.command == kCivReadFrequency) {
      return Verdict::kAccept;
    }
    return Verdict::kSkip;
  }
  if (frame.command() == kCivTransceiveMode && (dataBytes == 1 || dataBytes == 2) &&
      !awaited.ackOnly && awaited.command == kCivReadMode) {
    return Verdict::kAccept;
  }
  return Verdict::kSkip;
}

void CivTransaction::Learn(bool echoSeen) {
  const CivEcho now = echoSeen ? CivEcho::kEchoes : CivEcho::kNoEcho;
  if (now != echo_) {
    DebugLog::Write(echoSeen ? "CI-V: the radio's line echoes our frames"
                             : "CI-V: the radio's line does not echo our frames");
    echo_ = now;
  }
}

}  // namespace tavlorin
