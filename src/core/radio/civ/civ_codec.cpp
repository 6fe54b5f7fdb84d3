#include "radio/civ/civ_codec.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin {
namespace {

uint8_t PackPair(uint32_t tens, uint32_t units) {
  return static_cast<uint8_t>((tens << 4) | units);
}

}  // namespace

std::string CivFrame::Hex() const {
  std::string text;
  char pair[4];
  for (uint8_t b : bytes) {
    std::snprintf(pair, sizeof pair, "%02X", b);
    if (!text.empty()) {
      text += ' ';
    }
    text += pair;
  }
  return text;
}

CivFrame MakeCivFrame(uint8_t to, uint8_t from, const std::vector<uint8_t>& payload) {
  CivFrame frame;
  frame.bytes.reserve(payload.size() + 5);
  frame.bytes = {kCivPreamble, kCivPreamble, to, from};
  frame.bytes.insert(frame.bytes.end(), payload.begin(), payload.end());
  frame.bytes.push_back(kCivEnd);
  return frame;
}

std::vector<uint8_t> EncodeCivFrequency(Frequency hz, int byteCount) {
  std::vector<uint8_t> out;
  uint32_t rest = hz;
  for (int i = 0; i < byteCount; ++i) {
    const uint32_t units = rest % 10;
    rest /= 10;
    const uint32_t tens = rest % 10;
    rest /= 10;
    out.push_back(PackPair(tens, units));
  }
  return out;
}

std::optional<uint32_t> DecodeBcdByte(uint8_t byte) {
  const uint32_t high = byte >> 4;
  const uint32_t low = byte & 0x0F;
  if (high > 9 || low > 9) {
    return std::nullopt;
  }
  return high * 10 + low;
}

std::optional<uint64_t> DecodeCivHertz(const uint8_t* data, int byteCount) {
  uint64_t hz = 0;
  for (int i = byteCount - 1; i >= 0; --i) {
    std::optional<uint32_t> pair = DecodeBcdByte(data[i]);
    if (!pair) {
      return std::nullopt;
    }
    hz = hz * 100 + *pair;
  }
  return hz;
}

std::optional<Frequency> DecodeCivFrequency(const uint8_t* data, int byteCount) {
  std::optional<uint64_t> hz = DecodeCivHertz(data, byteCount);
  if (!hz || *hz > 0xFFFFFFFFu) {
    return std::nullopt;
  }
  return static_cast<Frequency>(*hz);
}

std::optional<uint32_t> DecodeCivValue(const std::vector<uint8_t>& data) {
  uint64_t value = 0;
  for (uint8_t b : data) {
    std::optional<uint32_t> pair = DecodeBcdByte(b);
    if (!pair) {
      return std::nullopt;
    }
    value = value * 100 + *pair;
    if (value > 0xFFFFFFFFu) {
      return std::nullopt;
    }
  }
  return static_cast<uint32_t>(value);
}

std::vector<uint8_t> EncodeCivValue(uint32_t value) {
  if (value == kCivNoValue) {
    return {};
  }
  if (value <= 99) {
    return {PackPair(value / 10, value % 10)};
  }
  const uint32_t v = value % 10000;
  return {PackPair(v / 1000, (v / 100) % 10), PackPair((v / 10) % 10, v % 10)};
}

CivCommandText ParseCivCommandText(const std::string& text) {
  CivCommandText command;
  size_t count = 0;
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find('-', start);
    if (end == std::string::npos) {
      end = text.size();
    }
    if (count < 4) {
      const std::string token = text.substr(start, end - start);
      command.bytes[count] = static_cast<uint8_t>(std::strtoul(token.c_str(), nullptr, 16));
    }
    ++count;
    start = end + 1;
  }
  command.fourBytes = count == 4;
  if (!command.fourBytes) {
    command.bytes[3] = 0;
  }
  return command;
}

std::vector<uint8_t> CivCommandText::ReadPayload() const {
  if (fourBytes) {
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
  }
  if (bytes[1] == 0) {
    return {bytes[0]};
  }
  if (bytes[2] == 0) {
    return {bytes[0], bytes[1]};
  }
  return {bytes[0], bytes[1], bytes[2]};
}

std::vector<uint8_t> CivCommandText::WritePayload(uint32_t value) const {
  std::vector<uint8_t> payload;
  if (fourBytes) {
    payload = {bytes[0], bytes[1], bytes[2], bytes[3]};
  } else {
    payload.push_back(bytes[0]);
    for (int i = 1; i <= 2; ++i) {
      if (bytes[i] != 0) {
        payload.push_back(bytes[i]);
      }
    }
  }
  std::vector<uint8_t> data = EncodeCivValue(value);
  payload.insert(payload.end(), data.begin(), data.end());
  return payload;
}

std::string CivCommandText::Key() const {
  return CivCacheKey(fourBytes ? std::vector<uint8_t>{bytes[0], bytes[1], bytes[2], bytes[3]}
                               : std::vector<uint8_t>{bytes[0], bytes[1], bytes[2]});
}

std::string CivCacheKey(const std::vector<uint8_t>& payload) {
  std::string key;
  char pair[4];
  for (size_t i = 0; i < payload.size() && i < 4; ++i) {
    std::snprintf(pair, sizeof pair, "%02X", payload[i]);
    if (i > 0) {
      key += '-';
    }
    key += pair;
  }
  return key;
}

std::optional<uint32_t> DecodeCivSMeter(const CivFrame& reply) {
  const std::vector<uint8_t>& b = reply.bytes;
  if (b.size() == 9 && b[8] == kCivEnd) {
    std::optional<uint32_t> low = DecodeBcdByte(b[7]);
    if (!low || (b[6] & 0x0F) > 9) {
      return std::nullopt;
    }
    return (b[6] & 0x0Fu) * 100 + *low;
  }
  if (b.size() == 8 && b[7] == kCivEnd) {
    return DecodeBcdByte(b[6]);
  }
  return std::nullopt;
}

std::optional<uint32_t> DecodeCivReadValue(const CivFrame& reply, size_t sentCount) {
  const size_t first = 4 + sentCount;
  if (!reply.complete() || reply.size() < first + 1) {
    return std::nullopt;
  }
  return DecodeCivValue(
      std::vector<uint8_t>(reply.bytes.begin() + static_cast<long>(first), reply.bytes.end() - 1));
}

}  // namespace tavlorin
