#include "support/sim_line_radios.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin::testing {
namespace {

// Takes the complete lines (ended by `end`) out of `pending`.
std::vector<std::string> Lines(std::string& pending, std::string_view bytes, char end) {
  pending.append(bytes);
  std::vector<std::string> lines;
  size_t at;
  while ((at = pending.find(end)) != std::string::npos) {
    std::string line = pending.substr(0, at);
    pending.erase(0, at + 1);
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) {
      line.pop_back();
    }
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

SimOrion::SimOrion() {
  table_ = {{"A", "00D6B0F0"}, {"B", "006BBA20"},      {"RMM", "0"},  {"S", "RM24S0"},
            {"RMF", "2400"},   {"V", "Version 2.062"}, {"RMP", "-50"}};
}

void SimOrion::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  std::lock_guard lock(mutex_);
  for (const std::string& line : Lines(pending_, bytes, '\r')) {
    if (line.size() < 2) {
      continue;
    }
    const std::string body = line.substr(1);
    if (line[0] == '?') {
      auto it = table_.find(body);
      if (it != table_.end()) {
        out.push_back({"@" + body + it->second + "\r", std::chrono::milliseconds(1)});
      }
    } else if (line[0] == '*') {
      // The longest known command that starts the line takes the rest as its value.
      for (size_t n = body.size(); n > 0; --n) {
        auto it = table_.find(body.substr(0, n));
        if (it != table_.end()) {
          it->second = body.substr(n);
          break;
        }
      }
    }
  }
}

std::string SimOrion::Get(const std::string& key) const {
  std::lock_guard lock(mutex_);
  auto it = table_.find(key);
  return it == table_.end() ? "" : it->second;
}

void SimOrion::Set(const std::string& key, const std::string& value) {
  std::lock_guard lock(mutex_);
  table_[key] = value;
}

void SimPcr1000::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  std::lock_guard lock(mutex_);
  for (const std::string& line : Lines(pending_, bytes, '\n')) {
    commands_.push_back(line);
    std::string reply = Answer(line);
    if (!reply.empty()) {
      out.push_back({reply + "\r\n", std::chrono::milliseconds(1)});
    }
  }
}

std::string SimPcr1000::Answer(const std::string& c) {
  if (c == "H1?") {
    return powered_ ? "H101" : "H100";
  }
  if (c == "H101") {
    powered_ = true;
    return "G000";
  }
  if (!powered_) {
    return {};  // switched off: only the power commands are heard
  }
  if (c == "H100") {
    powered_ = false;
    return "G000";
  }
  if (c == "I2?") {
    char text[8];
    std::snprintf(text, sizeof text, "I2%02X", level_);
    return text;
  }
  if (c.rfind("K0", 0) == 0 && c.size() == 18) {
    tuning_ = c;
    return "G000";
  }
  if (c == "G300" || c == "G105" || c.rfind("J", 0) == 0) {
    return "G000";
  }
  return "G001";
}

std::string SimPcr1000::lastTuning() const {
  std::lock_guard lock(mutex_);
  return tuning_;
}

bool SimPcr1000::powered() const {
  std::lock_guard lock(mutex_);
  return powered_;
}

std::vector<std::string> SimPcr1000::commands() const {
  std::lock_guard lock(mutex_);
  return commands_;
}

void SimPcr1000::SetLevel(int level) {
  std::lock_guard lock(mutex_);
  level_ = level;
}

void SimNrd535::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  std::lock_guard lock(mutex_);
  for (const std::string& line : Lines(pending_, bytes, '\r')) {
    if (line == "H1") {
      remote_ = true;
    } else if (!remote_) {
      continue;  // under local control the receiver ignores the computer
    } else if (line == "I1") {
      char text[32];
      std::snprintf(text, sizeof text, "IF%08uD%dB1G1\r", frequency_, mode_);
      out.push_back({text, std::chrono::milliseconds(1)});
    } else if (line == "Y1") {
      out.push_back({"S" + std::to_string(level_) + "\r", std::chrono::milliseconds(1)});
    } else if (line.size() == 9 && line[0] == 'F') {
      frequency_ = static_cast<uint32_t>(std::strtoul(line.c_str() + 1, nullptr, 10));
    } else if (line.size() == 2 && line[0] == 'D') {
      mode_ = line[1] - '0';
    }
  }
}

uint32_t SimNrd535::frequency() const {
  std::lock_guard lock(mutex_);
  return frequency_;
}

bool SimNrd535::remote() const {
  std::lock_guard lock(mutex_);
  return remote_;
}

void SimNrd535::SetLevel(int level) {
  std::lock_guard lock(mutex_);
  level_ = level;
}

}  // namespace tavlorin::testing
