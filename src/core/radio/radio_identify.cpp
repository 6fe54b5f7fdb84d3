#include "radio/radio_identify.h"

#include <cctype>
#include <memory>
#include <span>

#include "link/line_settings.h"
#include "link/manufacturer.h"
#include "radio/cat_radio.h"
#include "radio/radio_identity.h"

namespace tavlorin {
namespace {

const char* const kAsciiSpeeds[] = {"115200", "57600", "38400", "19200", "9600", "4800"};
const char* const kCivSpeeds[] = {"115200", "19200", "9600", "4800", "1200", "300"};

// Elecraft radios answer "ID017;" like the TS-570 they imitate; "K2;" tells them apart.
constexpr std::string_view kElecraftIdentity = "017";

struct Guess {
  int family = 0;
  std::string identity;
  std::string address;
};

bool AllDigits(const std::string& text) {
  for (char c : text) {
    if (!std::isdigit(static_cast<unsigned char>(c))) {
      return false;
    }
  }
  return !text.empty();
}

// A radio on `port` at `speed` set up for `family`'s line, or nullptr when the port refused.
std::unique_ptr<CatRadio> OpenProbe(const std::string& port, int family, const char* speed,
                                    int commsRxTimeoutMs, std::string* why) {
  auto radio = std::make_unique<CatRadio>();
  radio->manufacturer = family;
  LineSettings settings = FamilyLineSettings(family, speed, false, false, false, commsRxTimeoutMs);
  settings.stopBits = 2;  // an extra stop bit costs a radio that wants one nothing
  if (!radio->link().Open(port, settings, why)) {
    return nullptr;
  }
  return radio;
}

std::optional<Guess> ProbeAscii(CatRadio& radio) {
  const std::string id = radio.yaesuAscii().ReadString("ID");
  if (!AllDigits(id) || (id.size() != 3 && id.size() != 4)) {
    return std::nullopt;
  }
  Guess guess{id.size() == 4 ? kYaesuAscii : kKenwood, id, {}};
  if (id == kElecraftIdentity && radio.yaesuAscii().ReadString("K2").size() == 1) {
    guess.family = kElecraft;
  }
  return guess;
}

std::optional<Guess> ProbeCiv(CatRadio& radio) {
  radio.civAddress = kCivBroadcastAddress;
  std::string address;
  if (radio.civ().ReadIdentification(&address) == 0) {
    return std::nullopt;
  }
  return Guess{kIcom, address, address};
}

// The model a guess names, or the family's stand-in.
std::string ModelOf(const Guess& guess) {
  static const RadioModel kNone;
  std::string found = FoundModel(AllRadioModels(), kNone, guess.family, guess.identity);
  if (!found.empty()) {
    return found;
  }
  switch (guess.family) {
    case kElecraft:
      return "K3";
    case kYaesuAscii:
      return "FT-991A";
    case kIcom:
      return "IC-7300";
    default:
      return "TS-480";
  }
}

std::optional<IdentifiedRadio> Confirm(const std::string& port, const char* speed,
                                       const Guess& guess, int commsRxTimeoutMs,
                                       std::string* message) {
  const std::string model = ModelOf(guess);
  ConnectParams params;
  params.company = guess.family;
  params.model = model;
  params.port = port;
  params.speed = speed;
  params.civAddress = guess.address;
  CatRadio radio;
  radio.commsRxTimeoutMs = commsRxTimeoutMs;
  std::string id;
  const bool connected = radio.Connect(params, &id, message) != 0;
  radio.Disconnect();
  if (!connected) {
    return std::nullopt;
  }
  return IdentifiedRadio{model, speed, guess.address, guess.identity,
                         radio.identityReport};
}

}  // namespace

std::optional<IdentifiedRadio> IdentifyRadio(
    const std::string& port, int commsRxTimeoutMs,
    const std::function<void(const std::string&)>& progress) {
  auto say = [&](const std::string& line) {
    if (progress) {
      progress(line);
    }
  };
  struct Probe {
    const char* what;
    int family;
    std::span<const char* const> speeds;
    std::optional<Guess> (*ask)(CatRadio&);
  };
  const Probe probes[] = {{"ID;", kYaesuAscii, kAsciiSpeeds, ProbeAscii},
                          {"CI-V 19 00", kIcom, kCivSpeeds, ProbeCiv}};
  for (const Probe& probe : probes) {
    for (const char* speed : probe.speeds) {
      std::string why;
      std::unique_ptr<CatRadio> radio = OpenProbe(port, probe.family, speed, commsRxTimeoutMs, &why);
      if (!radio) {
        say("Cannot open port " + port + ": " + why);
        return std::nullopt;
      }
      std::optional<Guess> guess = probe.ask(*radio);
      radio->Disconnect();
      const std::string tried = std::string(probe.what) + " at " + speed + " bit/s: ";
      if (!guess) {
        say(tried + "no answer");
        continue;
      }
      say(tried + "identity " + guess->identity);
      std::string message;
      if (auto found = Confirm(port, speed, *guess, commsRxTimeoutMs, &message)) {
        say(found->model + ": " + message);
        return found;
      }
      say(ModelOf(*guess) + ": " + message);
    }
  }
  return std::nullopt;
}

std::string IdentifiedPreset(const IdentifiedRadio& radio, const std::string& port) {
  std::string preset = radio.model + "," + port + "," + radio.speed;
  if (!radio.address.empty()) {
    preset += ",Addr:" + radio.address;
  }
  return preset;
}

}  // namespace tavlorin
