#include "radio/kenwood/kenwood_driver.h"

#include "radio/cat_radio.h"
#include "radio/demo/demo_kenwood.h"
#include "radio/kenwood/kenwood_codec.h"
#include "radio/kenwood/kenwood_transaction.h"
#include "radio/radio_model_properties.h"

namespace tavlorin {
namespace {

constexpr std::chrono::milliseconds kPowerWait{250};
constexpr int kPowerUpReads = 16;
constexpr size_t kFrequencyDigits = 11;

}  // namespace

bool KenwoodDriver::IsElecraft() const { return radio_.manufacturer == kElecraft; }

std::string KenwoodDriver::Read(std::string_view command) {
  if (radio_.isDemo) {
    return DemoKenwoodRead(DemoKenwoodRadio::Of(radio_.manufacturer, radio_.definition()),
                           radio_.values(), command);
  }
  KenwoodTransaction t(radio_.link(), radio_.clock(), radio_.abort);
  return IsElecraft() ? t.ElecraftRead(command) : t.KenwoodRead(command);
}

bool KenwoodDriver::Send(std::string_view command) {
  if (radio_.isDemo) {
    // One text may hold several commands ("FR1;FT1;"): each acts on its own.
    const DemoKenwoodRadio demo = DemoKenwoodRadio::Of(radio_.manufacturer, radio_.definition());
    const std::string all = kenwood::TerminatedCommand(command);
    for (size_t start = 0; start < all.size();) {
      const size_t end = all.find(kenwood::kTerminator, start);
      if (end > start) {
        DemoKenwoodWrite(demo, radio_.values(),
                         std::string_view(all).substr(start, end - start + 1));
      }
      start = end + 1;
    }
    return true;
  }
  KenwoodTransaction t(radio_.link(), radio_.clock(), radio_.abort);
  return IsElecraft() ? t.ElecraftSend(command) : t.KenwoodSend(command);
}

void KenwoodDriver::StartUp() {
  if (radio_.isDemo) {
    return;  // nothing to wake: the demonstration radio has no port
  }
  Send(IsElecraft() ? "AI0;K22;" : "AI0");
}

uint32_t KenwoodDriver::ReadFrequency(int vfo, Frequency* hz) {
  std::string text;
  if (vfo == 2 && !IsElecraft()) {
    text = Read("IF").substr(0, kFrequencyDigits);
  } else {
    text = Read(vfo == 1 ? "FB" : "FA");
  }
  *hz = kenwood::ParseValue(text);
  return *hz != 0 ? 1 : 0;
}

int KenwoodDriver::SetFrequency(int vfo, Frequency hz) {
  const char* letters = "FA";
  if (vfo == 1) {
    letters = "FB";
  } else if (vfo == 2 && !IsElecraft()) {
    letters = "FC";
  }
  Send(kenwood::FrequencyCommand(letters, hz));
  return 1;
}

uint8_t KenwoodDriver::ReadMode() {
  const RadioModel& model = radio_.definition();
  return kenwood::ParseMode(Read(model.Property(model_property::kModeCommand, "MD")),
                            model.Has(model_property::kModeLetters));
}

int KenwoodDriver::SetMode(uint8_t mode) {
  const RadioModel& model = radio_.definition();
  return Send(kenwood::ModeCommand(model.Property(model_property::kModeCommand, "MD"), mode,
                                   model.Has(model_property::kModeLetters)))
             ? 1
             : 0;
}

uint8_t KenwoodDriver::ReadSMeter() {
  if (IsElecraft()) {
    return kenwood::ElecraftMeterValue(kenwood::ParseValue(Read("BG")));
  }
  const RadioModel& model = radio_.definition();
  if (model.Has(model_property::kNoSMeter)) {
    return 0;
  }
  return static_cast<uint8_t>(
      kenwood::ParseValue(Read(model.Property(model_property::kSMeter, "SM"))));
}

uint32_t KenwoodDriver::ReadValue(const std::string& command) {
  return kenwood::ParseValue(Read(command));
}

int KenwoodDriver::SetValue(const std::string& command) { return Send(command) ? 1 : 0; }

std::string KenwoodDriver::ReadString(const std::string& command) { return Read(command); }

int KenwoodDriver::SwitchPower(bool on) {
  Clock& clock = radio_.clock();
  if (!on) {
    Send("PS0");
    clock.SleepFor(kPowerWait);
    return 1;
  }
  if (Read("PS") != "1") {
    Send(";;;;;");  // a sleeping radio misses the first characters: wake its receiver first
    clock.SleepFor(kPowerWait);
    Send("PS1");
    Read("PS");
    clock.SleepFor(kPowerWait);
  }
  for (int i = 0; i < kPowerUpReads; ++i) {
    if (Read("FA").size() == kFrequencyDigits) {
      break;
    }
    clock.SleepFor(kPowerWait);
  }
  return 1;
}

}  // namespace tavlorin
