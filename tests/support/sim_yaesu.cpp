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
  switch (op) {
    case 0x00:
      catOn_ = true;
      return {};
    case 0x80:
      catOn_ = false;
      return {};
    case 0xE7:
      return std::string(1, static_cast<char>(sMeter_));
    case 0xF7:
      return std::string(1, '\x03');
    default:
      break;
  }
  if (!ft847) {
    switch (op) {
      case 0x81:
        std::swap(frequency_[0], otherVfo_);
        return {};
      case 0x0F:
        powered_ = true;
        return {};
      case 0x8F:
        powered_ = false;
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

uint32_t SimYaesu::frequency(int slot) const {
  std::lock_guard lock(mutex_);
  return frequency_[static_cast<size_t>(slot)];
}

void SimYaesu::SetFrequency(int slot, uint32_t hz) {
  std::lock_guard lock(mutex_);
  frequency_[static_cast<size_t>(slot)] = hz;
}

uint8_t SimYaesu::mode(int slot) const {
  std::lock_guard lock(mutex_);
  return mode_[static_cast<size_t>(slot)];
}

void SimYaesu::SetSMeter(uint8_t level) {
  std::lock_guard lock(mutex_);
  sMeter_ = level;
}

uint8_t SimYaesu::Memory(uint16_t address) const {
  std::lock_guard lock(mutex_);
  auto it = memory_.find(address);
  return it == memory_.end() ? 0 : it->second;
}

void SimYaesu::SetMemory(uint16_t address, uint8_t value) {
  std::lock_guard lock(mutex_);
  memory_[address] = value;
}

bool SimYaesu::powered() const {
  std::lock_guard lock(mutex_);
  return powered_;
}

int SimYaesu::ignored() const {
  std::lock_guard lock(mutex_);
  return ignored_;
}

}  // namespace tavlorin::testing
