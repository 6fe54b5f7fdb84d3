// Connecting, disconnecting and switching the power of a CatRadio.
#include <cstdio>
#include <cstdlib>

#include "radio/cat_radio.h"
#include "radio/demo/demo_defaults.h"
#include "radio/radio_identity.h"
#include "radio/radio_model_properties.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

constexpr int kConnectAttempts = 3;
constexpr std::chrono::milliseconds kAttemptWait{250};

namespace p = model_property;

constexpr const char* kBatteryQuestion =
    "Switch off your FT-817?\n\nNote:\nDo not use this command when using Alkaline batteries\nor "
    "the optional FNB-72 Ni-Cd battery Pack.";
constexpr const char* kPowerQuestion = "Switch off your Radio?";

}  // namespace

bool CatRadio::OpenPort(std::string* message) {
  LineSettings settings = FamilyLineSettings(manufacturer, speedText, useCts != 0, useDtr != 0,
                                             useRts != 0, commsRxTimeoutMs);
  // Within a family some models want two stop bits and others one (Yaesu's ASCII radios).
  if (const int stopBits = definition().Number(p::kStopBits, 0); stopBits != 0) {
    settings.stopBits = stopBits;
    settings.text = settings.speedText + ",n,8," + std::to_string(stopBits);
  }
  return link_.Open(portName, settings, message);
}

int CatRadio::Connect(const ConnectParams& params, std::string* identification,
                      std::string* message) {
  manufacturer = params.company;
  useCts = params.cts;
  useDtr = params.dtr;
  useRts = params.rts;
  civAddressText = params.civAddress;
  portName = params.port;
  modelName = params.model;
  speedText = params.speed;
  isDemo = 0;
  civReportedAddress = 0;
  abort = false;  // left raised by a window's last action before a reconnect
  identity.clear();
  identityReport.clear();

  if (params.company != kDemonstration && portName == "remote") {
    std::string chosen = selectRemote_ ? selectRemote_() : std::string();
    if (chosen.empty()) {
      *message = "User abort";
      return 0;
    }
    portName = chosen;
  }

  if (params.company == kDemonstration) {
    // The family of the model it imitates; a PCR-1000's table ("freq", "mode", "filter")
    // answers through the receiver's own driver.
    manufacturer = ResolvedFamily(definition());
  }
  isPcr1000 = manufacturer == kGeneral;
  civAddress = static_cast<uint8_t>(std::strtoul(civAddressText.c_str(), nullptr, 16));

  if (params.company != kDemonstration && !OpenPort(message)) {
    return 0;
  }
  if (!FamilyStartUp(params, identification, message)) {
    return 0;
  }
  if (!ReadFrequencyWithRetries(params, message)) {
    return 0;
  }
  ReadIdentity();
  return 1;
}

void CatRadio::ReadIdentity() {
  switch (manufacturer) {
    case kIcom:
      if (civReportedAddress != 0) {
        char text[4];
        std::snprintf(text, sizeof text, "%02X", civReportedAddress);
        identity = text;
      }
      break;
    case kElecraft:
    case kKenwood:
      identity = kenwood_.ReadString("ID");
      break;
    case kYaesuAscii:
      identity = yaesuAscii_.ReadIdentity().value_or("");
      break;
    default:
      return;
  }
  if (identity.empty()) {
    return;
  }
  identityReport =
      IdentityReport(FoundModel(AllRadioModels(), definition(), manufacturer, identity), modelName);
  DebugLog::Write("Radio identity %s%s%s", identity.c_str(), identityReport.empty() ? "" : ": ",
                  identityReport.c_str());
}

bool CatRadio::FamilyStartUp(const ConnectParams& params, std::string* identification,
                             std::string* message) {
  switch (params.company) {
    case kIcom:
      civ_.ReadIdentification(identification);
      break;
    case kElecraft:
    case kKenwood:
      kenwood_.StartUp();
      break;
    case kYaesuAscii:
      yaesuAscii_.StartUp();
      break;
    case kDemonstration:
      isDemo = 1;
      LoadDemonstrationDefaults(manufacturer, values_);
      break;
    case kGeneral:
      if (pcr1000_.StartUp(message) == 0) {
        link_.Close();
        return false;
      }
      break;
    case kNrd535:
      nrd535_.StartUp();
      break;
    default:
      break;
  }
  return true;
}

bool CatRadio::ReadFrequencyWithRetries(const ConnectParams& params, std::string* message) {
  for (int attempt = 0; attempt < kConnectAttempts; ++attempt) {
    if (attempt > 0) {
      clock_.SleepFor(kAttemptWait * attempt);
    }
    if (abort.load()) {
      *message = "User abort";
      link_.Close();
      return false;
    }
    if (attempt == 0 && manufacturer == kYaesu) {
      yaesu_.ConnectPreamble();
    }
    if (params.switchOn) {
      SwitchPower(modelName, true);
    }
    if (manufacturer == kElecraft || manufacturer == kKenwood) {
      kenwood_.StartUp();
    } else if (manufacturer == kYaesuAscii) {
      yaesuAscii_.StartUp();
    }
    if (std::string_view wakeUp = definition().Property(p::kWakeUp); !wakeUp.empty() && !isDemo) {
      ReadString(std::string(wakeUp));  // the answer does not matter: the radio is listening
    }
    Frequency hz = 0;
    std::string text;
    ReadFrequency(0, &hz, &text);
    if (!IsNoRadioFrequency(hz)) {
      *message = "Frequency = " + text;
      return true;
    }
    if (link_.lost()) {
      break;  // the port is gone: further attempts cannot succeed
    }
  }
  *message = abort.load() ? "User abort" : "Failed to read frequency";
  return false;
}

void CatRadio::Disconnect() {
  if (link_.IsOpen()) {
    link_.Close();
  }
}

int CatRadio::SwitchPower(const std::string& model, bool on) {
  const RadioModel& definition = RadioModelOrDefault(model);
  const std::string_view power = definition.Property(p::kPower);
  if (isDemo || power.empty()) {
    return 0;
  }
  // A PCR-1000 is switched off without a question: it has no front panel to switch it on.
  if (!on && power != kPowerQuiet) {
    const char* text = power == kPowerBattery ? kBatteryQuestion : kPowerQuestion;
    if (!(ask_ && ask_("Closing...", text))) {
      return 0;
    }
  }
  switch (manufacturer) {
    case kElecraft:
    case kKenwood:
      return kenwood_.SwitchPower(on);
    case kYaesu:
      return yaesu_.SwitchPower(on);
    case kYaesuAscii:
      return yaesuAscii_.SwitchPower(on);
    case kGeneral:
      return pcr1000_.SwitchPower(on);
    default:
      return 0;
  }
}

}  // namespace tavlorin
