// TelnetDecoder: the telnet layer of a DX cluster connection, pure (bytes in, text and answers
// out; no I/O).
//
// Cluster nodes are telnet servers; a few open with option negotiation (IAC WILL ECHO, IAC DO
// NAWS). The client wants none of it and refuses every option politely: "DO x" is answered
// "WONT x" and "WILL x" is answered "DONT x"; "DONT"/"WONT" need no answer because every option
// is already off, so no negotiation can loop. Sub-negotiations are skipped, "IAC IAC" is a data
// byte 255. A sequence cut between two reads is finished by the next Feed.
//
// Thread: one connection's thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavlorin {

namespace telnet {
inline constexpr uint8_t kIac = 255;
inline constexpr uint8_t kDont = 254;
inline constexpr uint8_t kDo = 253;
inline constexpr uint8_t kWont = 252;
inline constexpr uint8_t kWill = 251;
inline constexpr uint8_t kSb = 250;
inline constexpr uint8_t kSe = 240;
}  // namespace telnet

class TelnetDecoder {
 public:
  // Appends the data bytes of `bytes` to *text and the negotiation answers to *reply.
  void Feed(std::string_view bytes, std::string* text, std::string* reply);

 private:
  enum class State { kData, kIac, kOption, kSub, kSubIac };
  State state_ = State::kData;
  uint8_t verb_ = 0;
};

// Doubles every byte 255 of outgoing text, as telnet requires.
std::string TelnetEscape(std::string_view text);

}  // namespace tavlorin
