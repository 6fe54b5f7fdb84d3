// The vocabulary of model properties: every quirk a line of "TVR Radio Definitions.txt" may
// give a model, with the family it belongs to and the values it takes. Code reads a property
// by its constant here, never by a retyped name, and the definitions reader refuses a name or
// value outside this table, so a typing mistake in the file is reported instead of ignored.
//
// A new quirk is a row of kModelProperties plus the code that reads it; a new model with known
// quirks is a line of data only. Immutable; any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tavlorin {

namespace model_property {
// Any family.
inline constexpr std::string_view kPower = "power";  // ask | battery | quiet
inline constexpr std::string_view kWakeUp = "wake-up";
inline constexpr std::string_view kVfoAIsCurrent = "vfo-a-is-current";
inline constexpr std::string_view kSlidersWriteOnly = "sliders-write-only";
inline constexpr std::string_view kStopBits = "stop-bits";
// Kenwood, Elecraft and Yaesu ASCII: the answer to "ID;" that names the model.
inline constexpr std::string_view kIdentity = "identity";
// Kenwood and Elecraft.
inline constexpr std::string_view kSMeter = "s-meter";
inline constexpr std::string_view kNoSMeter = "no-s-meter";
inline constexpr std::string_view kSMeterScale = "s-meter-scale";
inline constexpr std::string_view kReceiverDigit = "receiver-digit";
inline constexpr std::string_view kModeLetters = "mode-letters";
// Ten-Tec, Kenwood and Elecraft.
inline constexpr std::string_view kModeCommand = "mode-command";
// Ten-Tec: VFOs read and set with "?A" / "*A" and eight hexadecimal digits of hertz instead of
// the Orion's "?AF" / "*AF" in decimal.
inline constexpr std::string_view kHexFrequencies = "hex-frequencies";
// Yaesu (ASCII commands).
inline constexpr std::string_view kFrequencyDigits = "frequency-digits";
// Yaesu (5-byte commands).
inline constexpr std::string_view kFrequencyRead = "frequency-read";
inline constexpr std::string_view kDigits = "digits";
inline constexpr std::string_view kVfoB8A = "vfo-b-8a";
inline constexpr std::string_view kNoResultByte = "no-result-byte";
inline constexpr std::string_view kClassicMode = "classic-mode";
inline constexpr std::string_view kMeter = "meter";
inline constexpr std::string_view kSMeterMask = "s-meter-mask";
inline constexpr std::string_view kModeByte = "mode-byte";
inline constexpr std::string_view kFilterByte = "filter-byte";
inline constexpr std::string_view kPreamble = "preamble";
inline constexpr std::string_view kSlots = "slots";
inline constexpr std::string_view kShortFlags = "short-flags";
}  // namespace model_property

// The values of the "power" property: how the user is asked before the radio is switched off.
inline constexpr std::string_view kPowerAsk = "ask";          // "Switch off your Radio?"
inline constexpr std::string_view kPowerBattery = "battery";  // the FT-817's battery warning
inline constexpr std::string_view kPowerQuiet = "quiet";      // no question (no front panel)

enum class PropertyKind {
  kFlag,     // no value
  kText,     // any non-empty text without "," or "|"
  kNumber,   // decimal, within min..max
  kHexByte,  // two hexadecimal digits
  kChoice,   // one of the words in `choices` (separated by "|")
};

struct ModelPropertySpec {
  std::string_view name;
  unsigned families;  // bit (1 << code) per family the property belongs to; 0 = any family
  PropertyKind kind;
  std::string_view choices;  // kChoice only
  int min = 0;               // kNumber only
  int max = 0;
  std::string_view what;  // one line for the file's own documentation and error messages
};

std::span<const ModelPropertySpec> ModelProperties();
const ModelPropertySpec* FindModelProperty(std::string_view name);

// Empty when `value` is a valid value of property `name` on a model of `family` (a
// demonstration model may carry any family's properties); otherwise the reason, for the
// reader's message ("unknown property \"s-meters\"").
std::string CheckModelProperty(std::string_view name, std::string_view value, int family);

}  // namespace tavlorin
