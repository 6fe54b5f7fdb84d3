#include "radio/emulation/kenwood_emulation_answerer.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "radio/frequency.h"
#include "radio/kenwood/kenwood_codec.h"

namespace tavlorin {
namespace {

using Kind = EmulationAction::Kind;

bool AllDigits(std::string_view text) {
  if (text.empty()) {
    return false;
  }
  for (char c : text) {
    if (!std::isdigit(static_cast<unsigned char>(c))) {
      return false;
    }
  }
  return true;
}

EmulationAnswer Refuse() { return {std::string(kEmulationRefusal), std::nullopt}; }

EmulationAnswer Reply(std::string text) { return {std::move(text), std::nullopt}; }

EmulationAnswer Act(Kind kind, uint32_t value, int vfo = 0) {
  return {std::string(), EmulationAction{kind, vfo, value}};
}

uint32_t FrequencyOf(const EmulatedRadioState& s, int vfo) {
  if (vfo == 1 && s.frequencyB != 0) {
    return s.frequencyB;
  }
  return s.frequencyA;
}

EmulationAnswer FrequencyAnswer(char vfoLetter, std::string_view value,
                                const EmulatedRadioState& s) {
  const int vfo = vfoLetter == 'B' ? 1 : 0;
  const std::string letters = std::string("F") + vfoLetter;
  if (value.empty()) {
    return Reply(kenwood::FrequencyCommand(letters, FrequencyOf(s, vfo)));
  }
  // Eleven digits, as the radio takes them; a value beyond what can be typed is refused.
  if (value.size() != 11 || !AllDigits(value)) {
    return Refuse();
  }
  const unsigned long long hz = std::strtoull(std::string(value).c_str(), nullptr, 10);
  if (hz == 0 || hz > kMaxTypedFrequency) {
    return Refuse();
  }
  return Act(Kind::kSetFrequency, static_cast<uint32_t>(hz), vfo);
}

// A one-digit set-or-query command: "FR;" answers, "FR1;" acts.
EmulationAnswer OneDigit(std::string_view letters, std::string_view value, int current, Kind kind,
                         std::string_view allowed) {
  if (value.empty()) {
    return Reply(std::string(letters) + std::to_string(current) + ";");
  }
  if (value.size() != 1 || allowed.find(value[0]) == std::string_view::npos) {
    return Refuse();
  }
  return Act(kind, static_cast<uint32_t>(value[0] - '0'));
}

EmulationAnswer Meter(std::string_view value, const EmulatedRadioState& s) {
  if (!value.empty() && value != "0") {
    return Refuse();
  }
  char text[16];
  std::snprintf(text, sizeof text, "SM%.*s%04d;", static_cast<int>(value.size()), value.data(),
                s.sMeter);
  return Reply(text);
}

}  // namespace

std::string EmulatedStatusText(const EmulatedRadioState& s) {
  const uint32_t hz = FrequencyOf(s, s.receiveVfo);
  std::string text = kenwood::FrequencyDigits(hz);
  text += "     +000000000";  // blanks, RIT/XIT offset, RIT, XIT, memory bank and channel
  text += s.transmitting ? '1' : '0';
  text += static_cast<char>('0' + (s.mode >= 0 && s.mode <= 9 ? s.mode : 0));
  text += static_cast<char>('0' + (s.receiveVfo == 1 ? 1 : 0));
  text += '0';                                        // scan
  text += s.receiveVfo != s.transmitVfo ? '1' : '0';  // split
  text += "0000";                                     // tone, tone number, shift
  return text;
}

EmulationAnswer AnswerKenwoodCommand(std::string_view command, const EmulatedRadioState& s) {
  if (command.size() < 3 || command.back() != ';') {
    return Refuse();
  }
  std::string letters;
  letters += static_cast<char>(std::toupper(static_cast<unsigned char>(command[0])));
  letters += static_cast<char>(std::toupper(static_cast<unsigned char>(command[1])));
  const std::string_view value = command.substr(2, command.size() - 3);
  if (letters == "FA" || letters == "FB") {
    return FrequencyAnswer(letters[1], value, s);
  }
  if (letters == "MD") {
    return OneDigit(letters, value, s.mode, Kind::kSetMode, "12345679");
  }
  if (letters == "FR") {
    return OneDigit(letters, value, s.receiveVfo, Kind::kSetReceiveVfo, "01");
  }
  if (letters == "FT") {
    return OneDigit(letters, value, s.transmitVfo, Kind::kSetTransmitVfo, "01");
  }
  if (letters == "IF" && value.empty()) {
    return Reply("IF" + EmulatedStatusText(s) + ";");
  }
  if (letters == "ID" && value.empty()) {
    return Reply("ID" + std::string(kEmulatedRadioId) + ";");
  }
  if (letters == "PS") {
    return value.empty() ? Reply("PS1;") : (value == "0" || value == "1" ? Reply("") : Refuse());
  }
  if (letters == "AI") {
    return value.empty() ? Reply("AI0;") : (AllDigits(value) ? Reply("") : Refuse());
  }
  if (letters == "TX" && (value.empty() || value == "0" || value == "1")) {
    return Act(Kind::kTransmit, 1);
  }
  if (letters == "RX" && value.empty()) {
    return Act(Kind::kTransmit, 0);
  }
  if (letters == "SM") {
    return Meter(value, s);
  }
  return Refuse();
}

}  // namespace tavlorin
