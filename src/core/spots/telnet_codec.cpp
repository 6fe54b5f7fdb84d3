#include "spots/telnet_codec.h"

namespace tavlorin {

void TelnetDecoder::Feed(std::string_view bytes, std::string* text, std::string* reply) {
  using namespace telnet;
  for (char c : bytes) {
    const uint8_t b = static_cast<uint8_t>(c);
    switch (state_) {
      case State::kData:
        if (b == kIac) {
          state_ = State::kIac;
        } else {
          *text += c;
        }
        break;
      case State::kIac:
        if (b == kIac) {
          *text += c;
          state_ = State::kData;
        } else if (b == kDo || b == kDont || b == kWill || b == kWont) {
          verb_ = b;
          state_ = State::kOption;
        } else if (b == kSb) {
          state_ = State::kSub;
        } else {
          state_ = State::kData;  // a two-byte command (NOP, GA, ...): nothing to do
        }
        break;
      case State::kOption:
        if (verb_ == kDo || verb_ == kWill) {
          *reply += static_cast<char>(kIac);
          *reply += static_cast<char>(verb_ == kDo ? kWont : kDont);
          *reply += c;
        }
        state_ = State::kData;
        break;
      case State::kSub:
        if (b == kIac) {
          state_ = State::kSubIac;
        }
        break;
      case State::kSubIac:
        state_ = b == kSe ? State::kData : State::kSub;
        break;
    }
  }
}

std::string TelnetEscape(std::string_view text) {
  std::string out;
  for (char c : text) {
    out += c;
    if (static_cast<uint8_t>(c) == telnet::kIac) {
      out += c;
    }
  }
  return out;
}

}  // namespace tavlorin
