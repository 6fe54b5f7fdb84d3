#include "support/sim_yaesu_ascii.h"

#include <cstdio>
#include <cstdlib>

namespace tavlorin::testing {
namespace {

bool IsModeCharacter(char c) { return (c >= '1' && c <= '9') || (c >= 'A' && c <= 'E'); }

bool AllDigits(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

}  // namespace

std::string SimYaesuAscii::Identity(Model model) {
  switch (model) {
    case Model::kFt991A:
      return "0570";
    case Model::kFtdx101D:
      return "0681";
    case Model::kFtdx3000:
      return "0462";
  }
  return {};
}

int SimYaesuAscii::Digits(Model model) { return model == Model::kFtdx3000 ? 8 : 9; }

std::string SimYaesuAscii::Frequency(uint32_t hz) const {
  char text[16];
  std::snprintf(text, sizeof text, "%0*u", Digits(model_), hz);
  return text;
}

void SimYaesuAscii::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  for (char c : bytes) {
    pending_ += c;
    if (c != ';') {
      continue;
    }
    std::string body = pending_.substr(0, pending_.size() - 1);
    pending_.clear();
    std::lock_guard lock(mutex_);
    commands_.push_back(body + ";");
    if (silent_) {
      continue;
    }
    std::string reply = Answer(body);
    if (!reply.empty()) {
      out.push_back({reply, delay_});
    }
  }
}

std::string SimYaesuAscii::Answer(const std::string& body) {
  if (refuse_ > 0) {
    --refuse_;
    return "?;";
  }
  const std::string letters = body.substr(0, std::min<size_t>(2, body.size()));
  const std::string value = body.size() > 2 ? body.substr(2) : std::string();
  const size_t digits = static_cast<size_t>(Digits(model_));
  if (body == "ID") {
    return "ID" + Identity(model_) + ";";
  }
  if (letters == "FA" || letters == "FB") {
    uint32_t& hz = letters == "FA" ? frequencyA_ : frequencyB_;
    if (value.empty()) {
      return letters + Frequency(hz) + ";";
    }
    if (value.size() != digits || !AllDigits(value)) {
      return "?;";
    }
    hz = static_cast<uint32_t>(std::strtoul(value.c_str(), nullptr, 10));
    return "";
  }
  if (letters == "MD" && !value.empty()) {
    // The FT-991A and FTDX3000 have one receiver: MD1 is refused there.
    const bool sub = value[0] == '1';
    if ((value[0] != '0' && value[0] != '1') || (sub && model_ != Model::kFtdx101D)) {
      return "?;";
    }
    char& mode = sub ? modeB_ : modeA_;
    if (value.size() == 1) {
      return body + mode + ";";
    }
    if (value.size() != 2 || !IsModeCharacter(value[1])) {
      return "?;";
    }
    mode = value[1];
    return "";
  }
  if (body == "IF") {  // memory channel, frequency, clarifier, flags, mode, VFO, tone, 00, shift
    return "IF001" + Frequency(vfo_ == 0 ? frequencyA_ : frequencyB_) + "+000000" +
           (vfo_ == 0 ? modeA_ : modeB_) + "00000;";
  }
  if (body == "SM0") {
    char text[8];
    std::snprintf(text, sizeof text, "%03d", meter_);
    return std::string("SM0") + text + ";";
  }
  struct Switch {
    const char* letters;
    int* state;
    bool* flag;
    char max;
  };
  int transmit = transmit_ ? 1 : 0;
  const Switch switches[] = {{"TX", &transmit, &transmit_, '1'},
                             {"VS", &vfo_, nullptr, '1'},
                             {"FT", &split_, nullptr, '1'}};
  for (const Switch& s : switches) {
    if (letters != s.letters) {
      continue;
    }
    if (value.empty()) {
      return letters + std::to_string(*s.state) + ";";
    }
    if (value.size() != 1 || value[0] < '0' || value[0] > s.max) {
      return "?;";
    }
    *s.state = value[0] - '0';
    if (s.flag != nullptr) {
      *s.flag = *s.state != 0;
    }
    return "";
  }
  if (body == "AI0" || body == "PS1") {
    return "";
  }
  if (body == "PS") {
    return "PS1;";
  }
  return "?;";
}

}  // namespace tavlorin::testing
