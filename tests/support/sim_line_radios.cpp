#include "support/sim_line_radios.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin::testing {

ConnectParams PtyParams(int company, const std::string& model, const PtyRadio& pty,
                        const std::string& speed) {
  ConnectParams p;
  p.company = company;
  p.model = model;
  p.port = pty.path();
  p.speed = speed;
  return p;
}

LockedLineSimulator::LockedLineSimulator(char end)
    : LineSimulator(end, [this](const std::string& text) {
        std::string line = text;
        while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) {
          line.pop_back();
        }
        std::lock_guard lock(mutex_);
        return Answer(line);
      }) {}

SimOrion::SimOrion() : LockedLineSimulator('\r') {
  table_ = {{"AF", "14070000"}, {"BF", "7060000"},      {"RMM", "0"},  {"S", "RM24S0"},
            {"RMF", "2400"},    {"V", "Version 2.062"}, {"RMP", "-50"}};
}

std::string SimOrion::Answer(const std::string& line) {
  const std::string body = line.size() < 2 ? "" : line.substr(1);
  if (line[0] == '?') {
    auto it = table_.find(body);
    return it == table_.end() ? "" : "@" + body + it->second + "\r";
  }
  // The longest known command that starts a set takes the rest as its value.
  for (size_t n = body.size(); line[0] == '*' && n > 0; --n) {
    if (auto it = table_.find(body.substr(0, n)); it != table_.end()) {
      it->second = body.substr(n);
      break;
    }
  }
  return {};
}

std::string SimPcr1000::Answer(const std::string& line) {
  commands_.push_back(line);
  const std::string reply = Reply(line);
  return reply.empty() ? "" : reply + "\r\n";
}

std::string SimPcr1000::Reply(const std::string& c) {
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

std::string SimNrd535::Answer(const std::string& line) {
  if (line == "H1") {
    remote_ = true;
  } else if (!remote_) {
    return {};  // under local control the receiver ignores the computer
  } else if (line == "I1") {
    char text[32];
    std::snprintf(text, sizeof text, "IF%08uD%dB1G1\r", frequency_, mode_);
    return text;
  } else if (line == "Y1") {
    return "S" + std::to_string(level_) + "\r";
  } else if (line.size() == 9 && line[0] == 'F') {
    frequency_ = static_cast<uint32_t>(std::strtoul(line.c_str() + 1, nullptr, 10));
  } else if (line.size() == 2 && line[0] == 'D') {
    mode_ = line[1] - '0';
  }
  return {};
}

}  // namespace tavlorin::testing
