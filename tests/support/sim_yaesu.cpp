#include "support/sim_yaesu.h"

namespace tavlorin::testing {
namespace {

uint8_t Bcd(uint32_t two) { return static_cast<uint8_t>(((two / 10) << 4) | (two % 10)); }
uint32_t FromBcd(uint8_t b) { return (b >> 4) * 10u + (b & 0x0Fu); }

}  // namespace

void SimYaesu::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  std::lock_guard lock(mutex_);
  pending_.append(bytes);
  while (pending_.size() >= 5) {
    std::array<uint8_t, 5> c{};
    for (size_t i = 0; i < 5; ++i) {
      c[i] = static_cast<uint8_t>(pending_[i]);
    }
    pending_.erase(0, 5);
    std::string reply = Answer(c);
    if (!reply.empty()) {
      out.push_back({reply, std::chrono::milliseconds(1)});
    }
  }
}

std::string SimYaesu::Slot(int slot) const {
  const uint32_t tens = frequency_[static_cast<size_t>(slot)] / 10;
  return {static_cast<char>(Bcd(tens / 1000000 % 100)), static_cast<char>(Bcd(tens / 10000 % 100)),
          static_cast<char>(Bcd(tens / 100 % 100)), static_cast<char>(Bcd(tens % 100)),
          static_cast<char>(mode_[static_cast<size_t>(slot)])};
}

std::string SimYaesu::Answer(const std::array<uint8_t, 5>& c) {
  const uint8_t op = c[4];
  const std::string result = ack_ ? std::string(1, '\0') : std::string();
  const bool ft847 = model_ == SimYaesuModel::kFt847;
  if (ft847 && !catOn_ && op != 0x00) {
    ++ignored_;
    return {};
  }
  const int slot = (op >> 4) & 0x0F;  // 0x, 1x, 2x: main, SAT RX, SAT TX
  const uint8_t low = op & 0x0F;
  const int slots = ft847 ? 3 : 1;
  if (slot < slots && (low == 0x03 || low == 0x01 || low == 0x07)) {
    const size_t s = static_cast<size_t>(slot);
    if (low == 0x03) {
      return Slot(slot);
    }
    if (low == 0x01) {
      frequency_[s] =
          (FromBcd(c[0]) * 1000000 + FromBcd(c[1]) * 10000 + FromBcd(c[2]) * 100 + FromBcd(c[3])) *
          10;
    } else {
      mode_[s] = c[0];
    }
    return result;
  }
  if (op == 0x00) {
    catOn_ = true;
    return {};
  }
  if (op == 0xE7) {
    return std::string(1, static_cast<char>(sMeter_));
  }
  if (!ft847) {
    switch (op) {
      case 0x81:
        std::swap(frequency_[0], otherVfo_);
        return {};
      case 0xBB: {
        const uint16_t a = static_cast<uint16_t>(c[0] << 8 | c[1]);
        return {static_cast<char>(memory_[a]), static_cast<char>(memory_[uint16_t(a + 1)])};
      }
      case 0xBC: {
        const uint16_t a = static_cast<uint16_t>(c[0] << 8 | c[1]);
        memory_[a] = c[2];
        memory_[uint16_t(a + 1)] = c[3];
        return {};
      }
      default:
        break;
    }
  }
  ++ignored_;  // a command the radio does not know: silence
  return {};
}

}  // namespace tavlorin::testing
