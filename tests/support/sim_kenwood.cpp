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

void SimKenwood::SetFrequencyA(uint32_t hz) {
  std::lock_guard lock(mutex_);
  frequencyA_ = hz;
}
uint32_t SimKenwood::frequencyA() const {
  std::lock_guard lock(mutex_);
  return frequencyA_;
}
uint32_t SimKenwood::frequencyB() const {
  std::lock_guard lock(mutex_);
  return frequencyB_;
}
void SimKenwood::SetMode(int mode) {
  std::lock_guard lock(mutex_);
  mode_ = mode;
}
int SimKenwood::mode() const {
  std::lock_guard lock(mutex_);
  return mode_;
}
void SimKenwood::SetMeter(int value) {
  std::lock_guard lock(mutex_);
  meter_ = value;
}
void SimKenwood::SetPowered(bool on) {
  std::lock_guard lock(mutex_);
  powered_ = on;
}
bool SimKenwood::powered() const {
  std::lock_guard lock(mutex_);
  return powered_;
}
void SimKenwood::RefuseNext(int count) {
  std::lock_guard lock(mutex_);
  refuse_ = count;
}
void SimKenwood::SetReplyDelay(std::chrono::milliseconds delay) {
  std::lock_guard lock(mutex_);
  delay_ = delay;
}
void SimKenwood::JunkBeforeNextReply(std::string junk) {
  std::lock_guard lock(mutex_);
  junk_ = std::move(junk);
}
void SimKenwood::StatusBeforeNextReply() {
  std::lock_guard lock(mutex_);
  statusFirst_ = true;
}
void SimKenwood::SetSilent(bool silent) {
  std::lock_guard lock(mutex_);
  silent_ = silent;
}
void SimKenwood::SetGarbled(bool garbled) {
  std::lock_guard lock(mutex_);
  garbled_ = garbled;
}
std::vector<std::string> SimKenwood::commands() const {
  std::lock_guard lock(mutex_);
  return commands_;
}

void SimKenwood::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  std::lock_guard lock(mutex_);
  for (char c : bytes) {
    pending_ += c;
    if (c != ';') {
      continue;
    }
    std::string command = std::move(pending_);
    pending_.clear();
    commands_.push_back(command);
    std::string reply = Answer(command);
    if (reply.empty() || silent_) {
      continue;
    }
    if (garbled_) {
      reply = "\x9c\xfe#" + std::string(reply.size() > 4 ? reply.size() - 4 : 0, '\x55') + ";";
    }
    if (statusFirst_) {
      reply = "IF" + StatusText() + ";" + reply;
      statusFirst_ = false;
    }
    out.push_back({junk_ + reply, delay_});
    junk_.clear();
  }
}

// The 35 characters after "IF": frequency, step, RIT, flags, memory, TX, mode, VFO, ...
std::string SimKenwood::StatusText() const {
  uint32_t hz = vfo_ == 1 ? frequencyB_ : frequencyA_;
  return Digits(hz, 11) + "     " + "+0000" + "000" + "00" + "0" + (transmitting_ ? "1" : "0") +
         std::to_string(mode_ % 10) + std::to_string(vfo_) + "0" + "0" + "00" + " ";
}

std::string SimKenwood::Answer(const std::string& command) {
  const std::string body = command.substr(0, command.size() - 1);
  if (body.empty()) {
    awake_ = true;  // ";" alone wakes the serial receiver of a switched-off radio
    return "";
  }
  if (!powered_) {
    if (body == "PS1" && awake_) {
      powered_ = true;
    }
    return "";
  }
  if (refuse_ > 0) {
    --refuse_;
    return "?;";
  }
  const std::string letters = body.substr(0, 2);
  const std::string value = body.substr(std::min<size_t>(2, body.size()));
  const bool k2 = flavour_ == Flavour::kElecraftK2;
  if (letters == "FA" || letters == "FB" || (letters == "FC" && !k2)) {
    uint32_t& hz = letters == "FB" ? frequencyB_ : frequencyA_;
    if (value.empty()) {
      return letters + Digits(hz, 11) + ";";
    }
    hz = static_cast<uint32_t>(std::strtoul(value.c_str(), nullptr, 10));
    return "";
  }
  if (letters == "MD") {
    if (value.empty()) {
      return "MD" + std::to_string(mode_) + ";";
    }
    mode_ = value[0] - '0';
    return "";
  }
  if (letters == "IF" && value.empty()) {
    return "IF" + StatusText() + ";";
  }
  if (letters == "PS") {
    if (value.empty()) {
      return "PS1;";
    }
    powered_ = value != "0";
    awake_ = false;
    return "";
  }
  if (letters == "AI" || letters == "TX" || letters == "RX" || (k2 && letters == "K2")) {
    transmitting_ = letters == "TX" ? true : (letters == "RX" ? false : transmitting_);
    return "";
  }
  if (!k2 && body == "SM0") {
    return "SM0" + Digits(static_cast<uint32_t>(meter_), 4) + ";";
  }
  if (!k2 && body == "SM") {
    return "SM" + Digits(static_cast<uint32_t>(meter_), 4) + ";";
  }
  if (k2 && body == "BG") {
    return "BG" + Digits(static_cast<uint32_t>(meter_), 2) + ";";
  }
  if (body == "ID") {
    return k2 ? "?;" : "ID019;";
  }
  return "?;";
}

}  // namespace tavlorin::testing
