#include "radio/yaesu/yaesu_driver.h"

#include "radio/cat_radio.h"
#include "radio/radio_models.h"

namespace tavlorin {
namespace {

// The status reads: label, command, reply length. The index is the buffer's kind.
struct StatusRead {
  const char* label;
  YaesuCommand command;
  size_t length;
};
enum StatusKind {
  kFt900Flags,
  kFt920Flags,
  kFt990Flags,
  kFt100Flags,
  kFt1000Flags,
  kFt900Update,
  kFt920Update,
  kFt990Update,
  kFt100Update,
  kFt1000Update,
};
constexpr StatusRead kStatusReads[] = {
    {"Read FT-900 status flags", {0, 0, 0, 0x00, 0xFA}, 5},
    {"Read FT-920 status flags", {0, 0, 0, 0x00, 0xFA}, 8},
    {"Read FT-990 status flags", {0, 0, 0, 0x00, 0xFA}, 5},
    {"Read FT-100 status flags", {0, 0, 0, 0x01, 0xFA}, 8},
    {"Read FT-1000 status flags", {0, 0, 0, 0x01, 0xFA}, 6},
    {"Read FT-900 status update", {0, 0, 0, 0x03, 0x10}, 18},
    {"Read FT-920 status update", {0, 0, 0, 0x03, 0x10}, 28},
    {"Read FT-990 status update", {0, 0, 0, 0x03, 0x10}, 32},
    {"Read FT-100 status update", {0, 0, 0, 0x00, 0x10}, 32},
    {"Read FT-1000 status update", {0, 0, 0, 0x03, 0x10}, 32},
};

struct StatusPair {
  StatusKind flags;
  StatusKind update;
};

StatusPair PairFor(YaesuFrequencyRead read) {
  switch (read) {
    case YaesuFrequencyRead::kFt100:
      return {kFt100Flags, kFt100Update};
    case YaesuFrequencyRead::kFt920:
      return {kFt920Flags, kFt920Update};
    case YaesuFrequencyRead::kFt990:
      return {kFt990Flags, kFt990Update};
    case YaesuFrequencyRead::kFt900:
      return {kFt900Flags, kFt900Update};
    default:
      return {kFt1000Flags, kFt1000Update};
  }
}

// The opcodes of the three frequency-and-mode slots: main, satellite receive, satellite
// transmit (FT-847); slot 1 is the FT-817's only one.
constexpr uint8_t kSlotOpcodes[] = {0x03, 0x13, 0x23};
constexpr const char* kSlotLabels[] = {"Read frequency and mode", "Read SAT RX frequency and mode",
                                       "Read SAT TX frequency and mode"};

constexpr YaesuCommand kVfoToggle = {0, 0, 0, 0, 0x81};

}  // namespace

const YaesuModelTraits& YaesuDriver::Traits() {
  const RadioModel& model = radio_.definition();
  if (traitsOf_ != &model) {
    traits_ = YaesuTraitsOf(model);
    traitsOf_ = &model;
  }
  return traits_;
}

bool YaesuDriver::Send(const YaesuCommand& command, const char* label) {
  return transaction_.Write(command, label);
}

void YaesuDriver::ReadResultByte() {
  std::array<uint8_t, 1> result{};
  transaction_.ReadReply(result, "Get result");
}

void YaesuDriver::ConnectPreamble() {
  const int preamble = Traits().preamble;
  if (preamble == 0) {
    return;
  }
  Send({0, 0, 0, 0, 0x00}, "Write 5 bytes");
  Send({0, 0, 0, 0, static_cast<uint8_t>(preamble)}, "Write 5 bytes");
}

bool YaesuDriver::ReadStatus(int kind) {
  const StatusRead& read = kStatusReads[kind];
  size_t length = read.length;
  if (kind == kFt1000Flags && Traits().shortFlags) {
    length = 5;
  }
  return transaction_.Exchange(read.command, std::span(status_[kind].data(), length), read.label);
}

Frequency YaesuDriver::DecodeFromStatus(const YaesuModelTraits& traits, int vfo) {
  const StatusPair pair = PairFor(traits.frequencyRead);
  const std::span<const uint8_t> flags = status_[pair.flags];
  const std::span<const uint8_t> u = status_[pair.update];
  switch (traits.frequencyRead) {
    case YaesuFrequencyRead::kFt100:
      return (BigEndian(u, 1, 4) * 5u) >> 2;
    case YaesuFrequencyRead::kFt1000Mp:
      return (BigEndian(u, vfo == 1 ? 17 : 1, 4) >> 4) * 10u;
    case YaesuFrequencyRead::kFt920:
      return BigEndian(u, (flags[0] & 0x10) != 0 ? 15 : 1, 4);
    case YaesuFrequencyRead::kFt990:
      return BigEndian(u, (flags[0] & 0x02) != 0 ? 17 : 1, 3) * 10u;
    case YaesuFrequencyRead::kFt1000D:
      return BigEndian(u, vfo == 1 ? 17 : 1, 3) * 10u;
    case YaesuFrequencyRead::kFt900:
      // Two 9-byte records, VFO A then VFO B; flag bit 0x40: VFO B in use.
      return BigEndian(u, (vfo == 1 || (flags[0] & 0x40) != 0) ? 10 : 1, 3) * 10u;
    case YaesuFrequencyRead::kSlots:
      break;
  }
  return 0;
}

uint32_t YaesuDriver::ReadSlot(int slot, Frequency* hz) {
  std::array<uint8_t, 5>& reply = slots_[static_cast<size_t>(slot - 1)];
  const YaesuCommand command = {0, 0, 0, 0, kSlotOpcodes[slot - 1]};
  if (!transaction_.Exchange(command, reply, kSlotLabels[slot - 1])) {
    return 0;
  }
  lastSlot_ = static_cast<uint8_t>(slot);
  *hz = DecodeYaesuBcdFrequency(reply).value_or(0);
  return *hz != 0 ? 1 : 0;
}

uint32_t YaesuDriver::ReadOtherVfo(Frequency* hz) {
  // The FT-817 reads only the VFO in use: swap A and B for the read, then swap back.
  if (!Send(kVfoToggle, "VFO A/B")) {
    return 0;
  }
  const uint32_t ok = ReadSlot(1, hz);
  Send(kVfoToggle, "VFO A/B");
  return ok;
}

uint32_t YaesuDriver::ReadFrequency(int vfo, Frequency* hz) {
  *hz = 0;
  const YaesuModelTraits& traits = Traits();
  if (traits.frequencyRead != YaesuFrequencyRead::kSlots) {
    const StatusPair pair = PairFor(traits.frequencyRead);
    if (!ReadStatus(pair.flags) || !ReadStatus(pair.update)) {
      return 0;
    }
    *hz = DecodeFromStatus(traits, vfo);
    return *hz != 0 ? 1 : 0;
  }
  switch (traits.slotRule) {
    case YaesuSlotRule::kFt817:
      return vfo == 1 ? ReadOtherVfo(hz) : ReadSlot(1, hz);
    case YaesuSlotRule::kFt847:
      if (!satellite_) {
        return vfo == 0 ? ReadSlot(1, hz) : 0;
      }
      if (vfo == 1) {
        return ReadSlot(3, hz);
      }
      {
        const uint32_t ok = ReadSlot(2, hz);
        satelliteHz_ = *hz;
        return ok;
      }
    case YaesuSlotRule::kPlain:
      break;
  }
  return vfo >= 0 && vfo <= 2 ? ReadSlot(vfo + 1, hz) : 0;
}

int YaesuDriver::SetFrequency(int vfo, Frequency hz) {
  const YaesuModelTraits& traits = Traits();
  const std::array<uint8_t, 4> digits = EncodeYaesuFrequency(hz, traits.digitOrder);
  uint8_t op = 0x01;
  if (traits.digitOrder == YaesuDigitOrder::kLeastSignificantFirst) {
    op = traits.vfoBOpcode8A && vfo != 0 ? 0x8A : 0x0A;
  } else if (traits.slotRule == YaesuSlotRule::kFt847) {
    op = satellite_ ? (vfo == 0 ? 0x11 : 0x21) : (vfo == 0 ? 0x01 : 0x11);
  }
  if (Send({digits[0], digits[1], digits[2], digits[3], op}, "Set frequency") &&
      traits.resultAfterSetFrequency) {
    ReadResultByte();
  }
  return 1;
}

bool YaesuDriver::ReadUpdateRecord(const YaesuModelTraits& traits) {
  return ReadStatus(PairFor(traits.frequencyRead).update);
}

uint8_t YaesuDriver::ReadMode() {
  const YaesuModelTraits& traits = Traits();
  if (traits.frequencyRead == YaesuFrequencyRead::kSlots) {
    Frequency hz = 0;
    const int slot = traits.slotRule == YaesuSlotRule::kFt847 && satellite_ ? 2 : 1;
    ReadSlot(slot, &hz);  // a failed read leaves the zeroed reply: mode 0
    return slots_[static_cast<size_t>(slot - 1)][4];
  }
  if (!ReadUpdateRecord(traits)) {
    return 0;
  }
  const uint8_t byte = status_[PairFor(traits.frequencyRead).update][traits.modeOffset];
  return traits.frequencyRead == YaesuFrequencyRead::kFt100 ? byte & 0x0F : byte;
}

uint8_t YaesuDriver::ReadFilter() {
  const YaesuModelTraits& traits = Traits();
  if (traits.frequencyRead == YaesuFrequencyRead::kSlots) {
    return (ReadMode() & 0x80) != 0 ? 1 : 0;  // FT-847: 82 CW(N), 84 AM(N), 88 FM(N)
  }
  if (traits.filterOffset < 0 || !ReadUpdateRecord(traits)) {
    return 0;
  }
  const uint8_t byte = status_[PairFor(traits.frequencyRead).update][traits.filterOffset];
  return traits.frequencyRead == YaesuFrequencyRead::kFt100 ? byte >> 4 : byte;
}

int YaesuDriver::SetMode(uint8_t mode) {
  const YaesuCommand command =
      Traits().classicMode ? YaesuCommand{0, 0, 0, mode, 0x0C} : YaesuCommand{mode, 0, 0, 0, 0x07};
  if (!Send(command, "Set mode")) {
    return 0;
  }
  ReadResultByte();
  return 1;
}

int YaesuDriver::SetCommandState(uint8_t command, uint8_t on) {
  const YaesuCommand bytes =
      Traits().classicMode
          ? YaesuCommand{0, 0, 0, on, command}
          : YaesuCommand{0, 0, 0, 0, static_cast<uint8_t>(on != 0 ? command : command | 0x80)};
  if (!Send(bytes, on != 0 ? "Set CMD On" : "Set CMD Off")) {
    return 0;
  }
  ReadResultByte();
  return 1;
}

uint8_t YaesuDriver::ReadSMeter(uint8_t meter) {
  const YaesuModelTraits& traits = Traits();
  switch (traits.meterRead) {
    case YaesuMeterRead::kFt100: {
      std::array<uint8_t, 9> reply{};
      transaction_.Exchange({0, 0, 0, 0, 0xF7}, reply, "Read FT-100 meters");
      return reply[0];
    }
    case YaesuMeterRead::kMeterRead: {
      std::array<uint8_t, 5> reply{};
      const uint8_t sub = meter == 1 ? 0x01 : 0x00;
      const char* label = meter == 1   ? "Read Yaesu sub meter"
                          : meter == 2 ? "Read TX meters"
                                       : "Read Yaesu main meter";
      transaction_.Exchange({0, 0, 0, sub, 0xF7}, reply, label);
      return reply[0];
    }
    case YaesuMeterRead::kStatusByte:
      break;
  }
  std::array<uint8_t, 1> reply{};
  if (meter == 2) {
    transaction_.Exchange({0, 0, 0, 0, 0xF7}, reply, "Read TX meters");
    return reply[0] & 0x0F;
  }
  transaction_.Exchange({0, 0, 0, 0, 0xE7}, reply, "Read Yaesu main meter");
  return reply[0] & traits.sMeterMask;
}

int YaesuDriver::SwitchPower(bool on) {
  if (on) {
    // A sleeping FT-817 needs a few bytes to wake its serial receiver before the command.
    Send({0, 0, 0, 0, 0x00}, "Write 5 bytes");
    return Send({0, 0, 0, 0, 0x0F}, "Power on") ? 1 : 0;
  }
  return Send({0, 0, 0, 0, 0x8F}, "Power off") ? 1 : 0;
}

}  // namespace tavlorin
