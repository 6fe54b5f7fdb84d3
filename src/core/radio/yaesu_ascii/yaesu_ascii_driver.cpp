#include "radio/yaesu_ascii/yaesu_ascii_driver.h"

#include "radio/cat_radio.h"
#include "radio/demo/demo_yaesu_ascii.h"
#include "radio/kenwood/kenwood_codec.h"
#include "radio/radio_model_properties.h"
#include "radio/yaesu_ascii/yaesu_ascii_codec.h"
#include "radio/yaesu_ascii/yaesu_ascii_transaction.h"

namespace tavlorin {
namespace {

namespace ya = yaesu_ascii;

// The radio's serial receiver sleeps while it is off: the first command only wakes it, and
// "PS1;" must follow within the next second or two.
constexpr std::chrono::milliseconds kWakeUpWait{1000};
constexpr std::chrono::milliseconds kPowerUpWait{250};
constexpr int kPowerUpReads = 16;
constexpr uint8_t kMeterMax = 255;

}  // namespace

int YaesuAsciiDriver::FrequencyDigits() const {
  return radio_.definition().Number(model_property::kFrequencyDigits,
                                    ya::kDefaultFrequencyDigits);
}

std::string YaesuAsciiDriver::Read(std::string_view command) {
  if (radio_.isDemo) {
    return DemoYaesuAsciiRead(radio_.values(), command);
  }
  YaesuAsciiTransaction t(radio_.link(), radio_.abort);
  return t.Read(command).value;
}

bool YaesuAsciiDriver::Send(std::string_view command) {
  if (radio_.isDemo) {
    return DemoYaesuAsciiWrite(radio_.values(), command) != 0;
  }
  YaesuAsciiTransaction t(radio_.link(), radio_.abort);
  return t.Send(command);
}

void YaesuAsciiDriver::StartUp() {
  if (!radio_.isDemo) {
    Send("AI0");
  }
}

std::optional<std::string> YaesuAsciiDriver::ReadIdentity() {
  return ya::ParseIdentity(Read("ID"));
}

uint32_t YaesuAsciiDriver::ReadFrequency(int vfo, Frequency* hz) {
  const int digits = FrequencyDigits();
  std::optional<Frequency> value;
  if (vfo == 2) {
    if (std::optional<ya::Status> status = ya::ParseStatus(Read("IF"), digits)) {
      value = status->hz;
    }
  } else {
    value = ya::ParseFrequency(Read(vfo == 1 ? "FB" : "FA"), digits);
  }
  *hz = value.value_or(0);
  return *hz != 0 ? 1 : 0;
}

int YaesuAsciiDriver::SetFrequency(int vfo, Frequency hz) {
  const std::string command = ya::FrequencyCommand(vfo == 1 ? "FB" : "FA", hz, FrequencyDigits());
  if (!command.empty()) {
    Send(command);
  }
  return 1;
}

uint8_t YaesuAsciiDriver::ReadMode() {
  const std::string value = Read("MD0");
  std::optional<uint8_t> code = value.size() == 1 ? ya::ModeCode(value[0]) : std::nullopt;
  return code.value_or(0);
}

int YaesuAsciiDriver::SetMode(uint8_t mode) {
  const std::string command = ya::ModeCommand(0, mode);
  return !command.empty() && Send(command) ? 1 : 0;
}

uint8_t YaesuAsciiDriver::ReadSMeter() {
  const uint32_t level = kenwood::ParseValue(Read("SM0"));
  return static_cast<uint8_t>(level > kMeterMax ? kMeterMax : level);
}

uint32_t YaesuAsciiDriver::ReadValue(const std::string& command) {
  return kenwood::ParseValue(Read(command));
}

int YaesuAsciiDriver::SetValue(const std::string& command) { return Send(command) ? 1 : 0; }

std::string YaesuAsciiDriver::ReadString(const std::string& command) { return Read(command); }

int YaesuAsciiDriver::SwitchPower(bool on) {
  Clock& clock = radio_.clock();
  if (!on) {
    Send("PS0");
    return 1;
  }
  if (Read("PS") == "1") {
    return 1;
  }
  Send("PS");
  clock.SleepFor(kWakeUpWait);
  Send("PS1");
  for (int i = 0; i < kPowerUpReads; ++i) {
    clock.SleepFor(kPowerUpWait);
    if (ya::ParseFrequency(Read("FA"), FrequencyDigits())) {
      break;
    }
  }
  return 1;
}

}  // namespace tavlorin
