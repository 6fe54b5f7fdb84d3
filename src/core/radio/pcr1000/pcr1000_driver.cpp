#include "radio/pcr1000/pcr1000_driver.h"

#include <cstdio>
#include <cstdlib>

#include "link/line_settings.h"
#include "radio/cat_radio.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

constexpr int kPowerOnTries = 4;
constexpr const char* kFastSpeed = "38400";
constexpr std::chrono::milliseconds kSpeedChangeWait{100};
// What the receiver is tuned to before anything else is known: 14.225 MHz USB, 2.8 kHz.
constexpr const char* kStartFrequency = "0014225000";
constexpr const char* kStartMode = "01";
constexpr const char* kStartFilter = "00";

uint32_t Number(const std::string& text, int base) {
  return static_cast<uint32_t>(std::strtoul(text.c_str(), nullptr, base));
}

std::string TwoDigits(const std::string& value) {
  char text[8];
  std::snprintf(text, sizeof text, "%02u", Number(value, 10) % 100);
  return text;
}

}  // namespace

bool Pcr1000Driver::SendLogged(const std::string& command) {
  DebugLog::Write("Send PCR-1000 %s", command.c_str());
  return line_.Send(command);
}

std::optional<std::string> Pcr1000Driver::QueryLogged(const std::string& command,
                                                      const std::string& prefix) {
  DebugLog::Write("Send PCR-1000 %s", command.c_str());
  std::optional<std::string> reply = line_.Query(command, prefix);
  DebugLog::Write("Read PCR-1000 %s", reply ? (prefix + *reply).c_str() : "");
  return reply;
}

bool Pcr1000Driver::SetCommand(const std::string& command) {
  if (radio_.isDemo) {
    return true;
  }
  std::optional<std::string> status = QueryLogged(command, "G0");
  return status && *status == "00";
}

int Pcr1000Driver::StartUp(std::string* message) {
  std::optional<std::string> power = QueryLogged("H1?", "H1");
  for (int i = 0; i < kPowerOnTries && power.value_or("") != "01"; ++i) {
    SendLogged("H101");
    SendLogged("G300");
    power = QueryLogged("H1?", "H1");
  }
  if (power.value_or("") != "01") {
    *message = "Failed to connect to radio.";
    return 0;
  }
  SendLogged("G105");
  // Let the command leave the port at the old speed before the port changes speed under it.
  radio_.clock().SleepFor(kSpeedChangeWait);
  LineSettings fast =
      FamilyLineSettings(kGeneral, kFastSpeed, false, true, true, radio_.commsRxTimeoutMs);
  if (!radio_.link().Reconfigure(fast, message)) {
    return 0;
  }
  radio_.link().Purge();  // whatever the receiver said at the old speed is noise now
  radio_.values().Set("freq", kStartFrequency);
  radio_.values().Set("mode", kStartMode);
  radio_.values().Set("filter", kStartFilter);
  Tune();
  return 1;
}

int Pcr1000Driver::SwitchPower(bool on) {
  if (!on) {
    SendLogged("H100");
  }
  return 1;
}

bool Pcr1000Driver::Tune() {
  const std::string command = "K0" + radio_.values().Get("freq") +
                              TwoDigits(radio_.values().Get("mode")) +
                              TwoDigits(radio_.values().Get("filter")) + "00";
  return SetCommand(command);
}

uint32_t Pcr1000Driver::ReadFrequency(Frequency* hz) {
  *hz = Number(radio_.values().Get("freq"), 10);
  return *hz != 0 ? 1 : 0;
}

int Pcr1000Driver::SetFrequency(Frequency hz) {
  char text[24];
  std::snprintf(text, sizeof text, "freq%-10.10u", hz);
  return SetValue(text);
}

uint8_t Pcr1000Driver::ReadMode() {
  return static_cast<uint8_t>(Number(radio_.values().Get("mode"), 10));
}

uint8_t Pcr1000Driver::ReadSMeter() {
  if (radio_.isDemo) {
    return static_cast<uint8_t>(Number(radio_.values().Get("I2"), 16));
  }
  std::optional<std::string> level = QueryLogged("I2?", "I2");
  return level ? static_cast<uint8_t>(Number(*level, 16)) : 0;
}

uint32_t Pcr1000Driver::ReadValue(const std::string& command) {
  return Number(ReadString(command), 16);
}

int Pcr1000Driver::SetValue(const std::string& command) {
  for (const char* key : {"freq", "mode", "filter"}) {
    const std::string k = key;
    if (command.compare(0, k.size(), k) == 0) {
      const std::string before = radio_.values().Get(k);
      radio_.values().Set(k, command.substr(k.size()));
      if (Tune()) {
        return 1;
      }
      radio_.values().Set(k, before);  // the receiver refused: it still has the old state
      return 0;
    }
  }
  if (radio_.isDemo) {
    return 1;
  }
  return SetCommand(command) ? 1 : 0;
}

std::string Pcr1000Driver::ReadString(const std::string& command) {
  if (radio_.isDemo) {
    return radio_.values().Get(command);
  }
  // A query is the command letters and "?"; the reply repeats the letters.
  const std::string letters = command.substr(0, command.find('?'));
  return QueryLogged(letters + "?", letters).value_or(std::string());
}

}  // namespace tavlorin
