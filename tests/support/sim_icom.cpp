#include "support/sim_icom.h"

#include <algorithm>

namespace tavlorin::testing {
namespace {

constexpr uint8_t kController = 0xE0;

uint8_t Bcd(uint32_t two) { return static_cast<uint8_t>(((two / 10) << 4) | (two % 10)); }

}  // namespace

std::string SimIcom::Frame(uint8_t to, uint8_t from, const std::vector<uint8_t>& payload) {
  std::string f{'\xFE', '\xFE', static_cast<char>(to), static_cast<char>(from)};
  for (uint8_t b : payload) {
    f += static_cast<char>(b);
  }
  f += '\xFD';
  return f;
}

void SimIcom::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  std::lock_guard lock(mutex_);
  for (char c : bytes) {
    const uint8_t b = static_cast<uint8_t>(c);
    if (pending_.empty() && b != 0xFE) {
      continue;
    }
    pending_.push_back(b);
    if (b == 0xFD) {
      std::vector<uint8_t> frame;
      frame.swap(pending_);
      Answer(frame, out);
    }
  }
}

std::vector<uint8_t> SimIcom::FrequencyPayload(uint8_t command) const {
  std::vector<uint8_t> out{command};
  for (uint64_t hz = frequency_; out.size() < 1 + size_t(options_.frequencyBytes); hz /= 100) {
    out.push_back(Bcd(static_cast<uint32_t>(hz % 100)));
  }
  return out;
}

void SimIcom::Answer(const std::vector<uint8_t>& frame, std::vector<Emission>& out) {
  if (options_.echo) {
    out.push_back({std::string(frame.begin(), frame.end()), std::chrono::milliseconds(0)});
  }
  // Every radio on the bus answers 19 00 sent to the broadcast address with its own address.
  const bool identityQuery = frame.size() >= 7 && frame[2] == 0x00 && frame[4] == 0x19;
  if (frame.size() < 6 || (frame[2] != options_.address && !identityQuery) || options_.silent) {
    return;
  }
  std::string reply = Reply(std::vector<uint8_t>(frame.begin() + 4, frame.end() - 1));
  if (reply.empty()) {
    return;
  }
  if (options_.unswappedReplies) {
    std::swap(reply[2], reply[3]);
  }
  out.push_back({reply, std::chrono::milliseconds(1)});
  for (int i = 0; i < options_.broadcastsAfterReply; ++i) {
    out.push_back(
        {Frame(0x00, options_.address, FrequencyPayload(0x00)), std::chrono::milliseconds(2 + i)});
  }
}

std::string SimIcom::Reply(const std::vector<uint8_t>& p) {
  const uint8_t me = options_.address;
  const std::string ack = Frame(kController, me, {0xFB});
  const std::string refusal = Frame(kController, me, {0xFA});
  switch (p[0]) {
    case 0x19:
      return Frame(kController, me, {0x19, 0x00, me});
    case 0x03:
      return Frame(kController, me, FrequencyPayload(0x03));
    case 0x04:
      return Frame(kController, me, {0x04, mode_, filter_});
    case 0x15:
      if (p.size() == 2 && p[1] == 0x02) {
        return Frame(kController, me, {0x15, 0x02, Bcd(sMeter_ / 100), Bcd(sMeter_ % 100)});
      }
      if (values_.count(p) == 0) {
        return refusal;
      }
      break;  // the other meters come from the value table
    case 0x05:
    case 0x06:
      if (options_.refuseSets || p.size() < 2) {
        return refusal;
      }
      sets_.push_back(p);
      if (p[0] == 0x05) {
        uint64_t hz = 0;
        for (size_t i = p.size() - 1; i >= 1; --i) {
          hz = hz * 100 + (p[i] >> 4) * 10 + (p[i] & 0x0F);
        }
        frequency_ = hz;
      } else {
        mode_ = p[1];
        if (p.size() > 2) {
          filter_ = p[2];
        }
      }
      return ack;
    default:
      break;
  }
  if (auto it = values_.find(p); it != values_.end()) {
    std::vector<uint8_t> payload = p;
    payload.insert(payload.end(), it->second.begin(), it->second.end());
    return Frame(kController, me, payload);
  }
  if (options_.refuseSets) {
    return refusal;
  }
  sets_.push_back(p);
  // A set of something the table holds (0F 01 for split, 14 01 01 28 for the AF gain) changes
  // what a later read of it answers.
  for (auto& [key, data] : values_) {
    if (p.size() > key.size() && std::equal(key.begin(), key.end(), p.begin())) {
      data.assign(p.begin() + static_cast<long>(key.size()), p.end());
    }
  }
  return ack;
}

}  // namespace tavlorin::testing
