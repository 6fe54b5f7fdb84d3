#include "radio/radio_model_properties.h"

#include <charconv>

#include "link/manufacturer.h"

namespace tavlorin {
namespace {

namespace p = model_property;
using K = PropertyKind;

constexpr unsigned Family(Manufacturer code) { return 1u << code; }
constexpr unsigned kAny = 0;
constexpr unsigned kKenwoodFamilies = Family(kKenwood) | Family(kElecraft);

// clang-format off
constexpr ModelPropertySpec kProperties[] = {
    {p::kPower, kAny, K::kChoice, "ask|battery|quiet", 0, 0,
     "switched on and off by command; how switching off is confirmed"},
    {p::kWakeUp, kAny, K::kText, {}, 0, 0, "query sent before each connect attempt"},
    {p::kVfoAIsCurrent, kAny, K::kFlag, {}, 0, 0,
     "with both VFOs read, the first read is the VFO in use"},
    {p::kSlidersWriteOnly, kAny, K::kFlag, {}, 0, 0, "slider values read back are not shown"},
    {p::kStopBits, kAny, K::kNumber, {}, 1, 2, "stop bits of the serial line (default: the family's)"},
    {p::kIdentity, kKenwoodFamilies | Family(kYaesuAscii), K::kText, {}, 0, 0,
     "the answer to ID; that names this model"},
    {p::kSMeter, kKenwoodFamilies, K::kText, {}, 0, 0, "S-meter command (default SM)"},
    {p::kNoSMeter, kKenwoodFamilies, K::kFlag, {}, 0, 0, "no S-meter command"},
    {p::kSMeterScale, kKenwoodFamilies, K::kNumber, {}, 1, 255, "S-meter full scale (default 30)"},
    {p::kReceiverDigit, kKenwoodFamilies, K::kFlag, {}, 0, 0,
     "AG and SQ carry the receiver as a third character (AG0, SQ1)"},
    {p::kModeLetters, kKenwoodFamilies, K::kFlag, {}, 0, 0,
     "modes above 9 travel as the letters A to F (MDA;)"},
    {p::kHexFrequencies, Family(kTenTec), K::kFlag, {}, 0, 0,
     "VFOs as ?A / *A with eight hexadecimal digits of hertz (not ?AF / *AF in decimal)"},
    {p::kModeCommand, Family(kTenTec) | kKenwoodFamilies, K::kText, {}, 0, 0,
     "mode command letters"},
    {p::kFrequencyDigits, Family(kYaesuAscii), K::kNumber, {}, 8, 9,
     "digits of an FA/FB frequency (default 9)"},
    {p::kFrequencyRead, Family(kYaesu), K::kChoice, "slots|ft100|ft900|ft920|ft990|ft1000d|ft1000mp",
     0, 0, "how the frequency is read back"},
    {p::kDigits, Family(kYaesu), K::kChoice, "msb|lsb", 0, 0, "digit order of a set frequency"},
    {p::kVfoB8A, Family(kYaesu), K::kFlag, {}, 0, 0, "VFO B is set with opcode 8A"},
    {p::kNoResultByte, Family(kYaesu), K::kFlag, {}, 0, 0,
     "no result byte follows a set frequency"},
    {p::kClassicMode, Family(kYaesu), K::kFlag, {}, 0, 0,
     "mode set 00 00 00 m 0C; switches carry on/off in P4"},
    {p::kMeter, Family(kYaesu), K::kChoice, "status-byte|meter-read|ft100", 0, 0,
     "how the S-meter is read"},
    {p::kSMeterMask, Family(kYaesu), K::kHexByte, {}, 0, 0, "S-meter bits of the status byte"},
    {p::kModeByte, Family(kYaesu), K::kNumber, {}, 0, 31, "mode byte of the status update"},
    {p::kFilterByte, Family(kYaesu), K::kNumber, {}, 0, 31, "filter byte of the status update"},
    {p::kPreamble, Family(kYaesu), K::kHexByte, {}, 0, 0,
     "opcode sent after 00 00 00 00 00 before connecting"},
    {p::kSlots, Family(kYaesu), K::kChoice, "plain|ft817|ft847", 0, 0,
     "which frequency slot a VFO selector reads"},
    {p::kShortFlags, Family(kYaesu), K::kFlag, {}, 0, 0, "the status flags reply has 5 bytes"},
};
// clang-format on

bool IsChoice(std::string_view choices, std::string_view value) {
  while (!choices.empty()) {
    const size_t bar = choices.find('|');
    if (choices.substr(0, bar) == value) {
      return true;
    }
    if (bar == std::string_view::npos) {
      break;
    }
    choices.remove_prefix(bar + 1);
  }
  return false;
}

bool IsHexByte(std::string_view value) {
  unsigned byte = 0;
  auto [end, ec] = std::from_chars(value.data(), value.data() + value.size(), byte, 16);
  return value.size() == 2 && ec == std::errc() && end == value.data() + value.size();
}

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string CheckValue(const ModelPropertySpec& spec, std::string_view value) {
  const std::string name = Quoted(spec.name);
  switch (spec.kind) {
    case K::kFlag:
      return value.empty() ? "" : name + " takes no value";
    case K::kText:
      return value.empty() ? name + " needs a value" : "";
    case K::kNumber: {
      int n = 0;
      auto [end, ec] = std::from_chars(value.data(), value.data() + value.size(), n);
      if (ec != std::errc() || end != value.data() + value.size() || n < spec.min || n > spec.max) {
        return name + " takes a number from " + std::to_string(spec.min) + " to " +
               std::to_string(spec.max) + ", not " + Quoted(value);
      }
      return "";
    }
    case K::kHexByte:
      return IsHexByte(value) ? "" : name + " takes two hexadecimal digits, not " + Quoted(value);
    case K::kChoice:
      return IsChoice(spec.choices, value)
                 ? ""
                 : name + " takes one of " + std::string(spec.choices) + ", not " + Quoted(value);
  }
  return "";
}

}  // namespace

std::span<const ModelPropertySpec> ModelProperties() { return kProperties; }

const ModelPropertySpec* FindModelProperty(std::string_view name) {
  for (const ModelPropertySpec& spec : kProperties) {
    if (spec.name == name) {
      return &spec;
    }
  }
  return nullptr;
}

std::string CheckModelProperty(std::string_view name, std::string_view value, int family) {
  const ModelPropertySpec* spec = FindModelProperty(name);
  if (spec == nullptr) {
    return "unknown property " + Quoted(name);
  }
  if (spec->families != kAny && family != kDemonstration && family >= 0 && family < 32 &&
      (spec->families & (1u << family)) == 0) {
    return "property " + Quoted(name) + " does not belong to this family";
  }
  return CheckValue(*spec, value);
}

}  // namespace tavlorin
