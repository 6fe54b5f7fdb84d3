#include "radio/civ/civ_driver.h"

#include <cstdio>

#include "radio/cat_radio.h"
#include "radio/civ/civ_codec.h"
#include "radio/radio_models.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

constexpr int kFrequencyAttempts = 4;
constexpr uint8_t kNoData = 0xFF;

}  // namespace

int CivDriver::FrequencyBytes() const { return radio_.definition().civFrequencyBytes; }

int CivDriver::ReadIdentification(std::string* identification) {
  transaction_.Reset();
  transaction_.SetFrequencyBytes(FrequencyBytes());
  CivFrame reply;
  if (!transaction_.Request({kCivIdentification, 0x00}, 0x00, &reply, "Read ID") || reply.IsAck() ||
      reply.size() < 7) {
    return 0;
  }
  // FE FE E0 ra 19 00 ra FD: the address is the last data byte.
  radio_.civReportedAddress = reply.bytes[reply.size() - 2];
  char text[4];
  std::snprintf(text, sizeof text, "%02X", radio_.civReportedAddress);
  if (identification != nullptr) {
    *identification = text;
  }
  return 1;
}

uint32_t CivDriver::ReadFrequency(Frequency* hz) {
  *hz = 0;
  const int bytes = FrequencyBytes();
  transaction_.SetFrequencyBytes(bytes);
  for (int attempt = 0; attempt < kFrequencyAttempts; ++attempt) {
    if (radio_.abort.load() || radio_.link().lost()) {
      break;
    }
    CivFrame reply;
    if (!transaction_.Request({kCivReadFrequency}, kCivAnySub, &reply, "Read frequency")) {
      continue;
    }
    // FE FE E0 ra 03 f0 f1 f2 f3 f4 FD: the end byte must sit right after the frequency.
    if (reply.size() != static_cast<size_t>(6 + bytes) || reply.IsAck()) {
      continue;
    }
    std::optional<Frequency> value = DecodeCivFrequency(reply.bytes.data() + 5, bytes);
    if (!value) {
      if (std::optional<uint64_t> wide = DecodeCivHertz(reply.bytes.data() + 5, bytes)) {
        DebugLog::Write("Read frequency: %llu Hz is beyond the 4.294.967.295 Hz the program holds",
                        static_cast<unsigned long long>(*wide));
        break;  // asking again gives the same answer
      }
      continue;
    }
    *hz = *value;
    radio_.unsolicitedData = false;
    return 0;
  }
  return 1;
}

int CivDriver::SetFrequency(Frequency hz) {
  const int bytes = FrequencyBytes();
  std::vector<uint8_t> payload{kCivSetFrequency};
  std::vector<uint8_t> digits = EncodeCivFrequency(hz, bytes);
  payload.insert(payload.end(), digits.begin(), digits.end());
  return transaction_.Command(payload, "Set frequency") ? 1 : 0;
}

bool CivDriver::ReadModeAndFilter() {
  CivFrame reply;
  if (!transaction_.Request({kCivReadMode}, kCivAnySub, &reply, "Read mode") || reply.IsAck() ||
      reply.size() < 7) {
    return false;
  }
  // FE FE E0 ra 04 mm [ff] FD, or the transceive mode broadcast FE FE 00 ra 01 mm [ff] FD.
  lastMode_ = reply.bytes[5];
  modeKnown_ = true;
  if (reply.size() >= 8) {
    lastFilter_ = reply.bytes[6];
  }
  return true;
}

uint8_t CivDriver::ReadMode() {
  ReadModeAndFilter();
  return lastMode_;
}

int CivDriver::SetMode(uint8_t mode) {
  ReadModeAndFilter();
  std::vector<uint8_t> payload{kCivSetMode, mode};
  if (lastFilter_) {
    payload.push_back(*lastFilter_);
  }
  if (!transaction_.Command(payload, "Set mode")) {
    return 0;
  }
  lastMode_ = mode;
  modeKnown_ = true;
  return 1;
}

int CivDriver::SetFilter(uint8_t filter) {
  if (!ReadModeAndFilter() && !modeKnown_) {
    return 0;  // sending a guessed mode would change more than the filter
  }
  if (!transaction_.Command({kCivSetMode, lastMode_, filter}, "Set filter")) {
    return 0;
  }
  lastFilter_ = filter;
  return 1;
}

int CivDriver::SendWithData(uint8_t command, uint8_t data, const char* label) {
  std::vector<uint8_t> payload{command};
  if (data != kNoData) {
    payload.push_back(data);
  }
  return transaction_.Command(payload, label) ? 1 : 0;
}

int CivDriver::SetVfo(uint8_t command, uint8_t data) {
  return SendWithData(command, data, "Set VFO");
}

int CivDriver::SetMemory(uint8_t command, uint8_t data) {
  return SendWithData(command, data, "Set memory");
}

uint8_t CivDriver::ReadSMeter() {
  CivFrame reply;
  if (!transaction_.Request({kCivReadMeter, kCivSMeterSub}, kCivSMeterSub, &reply,
                            "Read S-meter")) {
    return 0;
  }
  std::optional<uint32_t> level = DecodeCivSMeter(reply);
  if (!level) {
    return 0;
  }
  cache_[CivCacheKey({kCivReadMeter, kCivSMeterSub})] = *level;
  return static_cast<uint8_t>(*level > 255 ? 255 : *level);
}

std::optional<uint32_t> CivDriver::ReadStatus(uint8_t command, uint8_t sub) {
  std::vector<uint8_t> payload{command};
  if (sub != kCivAnySub) {
    payload.push_back(sub);
  }
  CivFrame reply;
  if (!transaction_.RequestExact(payload, &reply, "Read status") || reply.IsAck()) {
    return std::nullopt;
  }
  std::optional<uint32_t> value = DecodeCivReadValue(reply, payload.size());
  if (value) {
    cache_[CivCacheKey(payload)] = *value;
  }
  return value;
}

int CivDriver::SetState(uint8_t command, uint8_t sub, uint8_t value) {
  std::vector<uint8_t> payload{command};
  if (sub != kCivAnySub) {
    payload.push_back(sub);
  }
  std::vector<uint8_t> data = EncodeCivValue(value);
  payload.insert(payload.end(), data.begin(), data.end());
  return transaction_.Command(payload, "Set state") ? 1 : 0;
}

int CivDriver::SetLevel(uint8_t command, uint8_t sub, uint16_t value) {
  std::vector<uint8_t> payload{command};
  if (sub != kCivAnySub) {
    payload.push_back(sub);
  }
  const uint16_t level = value > 9999 ? 9999 : value;
  payload.push_back(static_cast<uint8_t>(((level / 1000) << 4) | (level / 100 % 10)));
  payload.push_back(static_cast<uint8_t>(((level / 10 % 10) << 4) | (level % 10)));
  return transaction_.Command(payload, "Set level") ? 1 : 0;
}

uint32_t CivDriver::ReadValue(const std::string& command) {
  return TryReadValue(command).value_or(0);
}

std::optional<uint32_t> CivDriver::TryReadValue(const std::string& command) {
  const CivCommandText text = ParseCivCommandText(command);
  const std::vector<uint8_t> payload = text.ReadPayload();
  CivFrame reply;
  if (!transaction_.RequestExact(payload, &reply, "Read value") || reply.IsAck()) {
    return std::nullopt;
  }
  std::optional<uint32_t> value = DecodeCivReadValue(reply, payload.size());
  if (value) {
    cache_[text.Key()] = *value;
  }
  return value;
}

int CivDriver::SetValue(const std::string& command) {
  const CivCommandText text = ParseCivCommandText(command);
  return transaction_.Command(text.WritePayload(), "Set value") ? 1 : 0;
}

std::optional<uint32_t> CivDriver::CachedValue(const std::string& key) const {
  auto it = cache_.find(key);
  if (it == cache_.end()) {
    return std::nullopt;
  }
  return it->second;
}

}  // namespace tavlorin
