#include "support/sim_kenwood.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin::testing {
namespace {

std::string Digits(uint32_t value, int width) {
  char text[32];
  std::snprintf(text, sizeof text, "%0*u", width, value);
  return text;
}

}  // namespace

std::vector<std::string> SimKenwood::commands() const {
  std::lock_guard lock(mutex_);
  return commands_;
}

void SimKenwood::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  for (char c : bytes) {
    pending_ += c;
    if (c != ';') {
      continue;
    }
    std::string command = std::move(pending_);
    pending_.clear();
    {
      std::lock_guard lock(mutex_);
      commands_.push_back(command);
    }
    std::string reply = Answer(command);
    if (reply.empty() || silent_) {
      continue;
    }
    if (garbled_) {
      reply = "\x9c\xfe#" + std::string(reply.size() > 4 ? reply.size() - 4 : 0, '\x55') + ";";
    }
    out.push_back({reply, delay_});
  }
}

std::string SimKenwood::Answer(const std::string& command) {
  const std::string body = command.substr(0, command.size() - 1);
  if (refuse_ > 0) {
    --refuse_;
    return "?;";
  }
  const std::string letters = body.substr(0, 2);
  const std::string value = body.substr(std::min<size_t>(2, body.size()));
  const bool k2 = flavour_ == Flavour::kElecraftK2;
  if (letters == "FA" || letters == "FB" || (letters == "FC" && !k2)) {
    std::atomic<uint32_t>& hz = letters == "FB" ? frequencyB_ : frequencyA_;
    if (value.empty()) {
      return letters + Digits(hz, 11) + ";";
    }
    hz = static_cast<uint32_t>(std::strtoul(value.c_str(), nullptr, 10));
    return "";
  }
  if (letters == "MD") {
    const std::string prefix = receiverInMode_ ? "MD0" : "MD";
    const std::string mode = body.substr(std::min(prefix.size(), body.size()));
    if (body.compare(0, prefix.size(), prefix) != 0) {
      return "?;";
    }
    if (mode.empty()) {
      const int m = mode_;
      return prefix + (m < 10 ? std::string(1, char('0' + m)) : std::string(1, char('A' + m - 10))) +
             ";";
    }
    mode_ = mode[0] >= 'A' ? 10 + (mode[0] - 'A') : mode[0] - '0';
    return "";
  }
  if (body == "ID") {
    std::lock_guard lock(mutex_);
    return identity_.empty() ? "?;" : "ID" + identity_ + ";";
  }
  if (letters == "FR" || letters == "FT") {
    std::atomic<int>& vfo = letters == "FR" ? receiveVfo_ : transmitVfo_;
    if (value.empty()) {
      return letters + std::to_string(vfo) + ";";
    }
    vfo = value[0] - '0';
    if (letters == "FR") {
      transmitVfo_ = vfo.load();  // choosing the receive VFO chooses the transmit VFO too
    }
    return "";
  }
  if ((body == "TX" || body == "RX") && !k2) {
    transmitting_ = body == "TX";
    return "";
  }
  if (body == "IF") {
    // frequency of the receive VFO (11), step (5), RIT/XIT offset (5), RIT, XIT, memory
    // channel (3), TX at 26, mode at 27, receive VFO at 28, scan, split at 30, tone (4)
    const uint32_t hz = receiveVfo_ == 1 ? frequencyB_.load() : frequencyA_.load();
    return "IF" + Digits(hz, 11) + "     +000000000" + (transmitting_ ? "1" : "0") +
           std::to_string(mode_ % 10) + std::to_string(receiveVfo_) + "0" +
           (receiveVfo_ != transmitVfo_ ? "1" : "0") + "0000;";
  }
  if (k2 && body == "K2") {
    return "K22;";  // the extended command set is on
  }
  if (letters == "AI" || (k2 && letters == "K2")) {
    return "";
  }
  if (!k2 && (body == "SM0" || body == "SM")) {
    return body + Digits(static_cast<uint32_t>(meter_), 4) + ";";
  }
  if (k2 && body == "BG") {
    return "BG" + Digits(static_cast<uint32_t>(meter_), 2) + ";";
  }
  return "?;";
}

}  // namespace tavlorin::testing
