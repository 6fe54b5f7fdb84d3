#include "radio/yaesu/yaesu_models.h"

#include "radio/radio_model_properties.h"

namespace tavlorin {
namespace {

namespace p = model_property;

template <class T>
struct Word {
  std::string_view word;
  T value;
};

// The value named by `word`; `fallback` for a word the table does not hold (the definitions
// reader has refused such words already).
template <class T, size_t N>
T Lookup(const Word<T> (&table)[N], std::string_view word, T fallback) {
  for (const Word<T>& w : table) {
    if (w.word == word) {
      return w.value;
    }
  }
  return fallback;
}

constexpr Word<YaesuFrequencyRead> kReads[] = {
    {"slots", YaesuFrequencyRead::kSlots},       {"ft100", YaesuFrequencyRead::kFt100},
    {"ft900", YaesuFrequencyRead::kFt900},       {"ft920", YaesuFrequencyRead::kFt920},
    {"ft990", YaesuFrequencyRead::kFt990},       {"ft1000d", YaesuFrequencyRead::kFt1000D},
    {"ft1000mp", YaesuFrequencyRead::kFt1000Mp},
};
constexpr Word<YaesuMeterRead> kMeters[] = {
    {"status-byte", YaesuMeterRead::kStatusByte},
    {"meter-read", YaesuMeterRead::kMeterRead},
    {"ft100", YaesuMeterRead::kFt100},
};
constexpr Word<YaesuSlotRule> kSlotRules[] = {
    {"plain", YaesuSlotRule::kPlain},
    {"ft817", YaesuSlotRule::kFt817},
    {"ft847", YaesuSlotRule::kFt847},
};

}  // namespace

YaesuModelTraits YaesuTraitsOf(const RadioModel& model) {
  YaesuModelTraits t;
  t.frequencyRead = Lookup(kReads, model.Property(p::kFrequencyRead), t.frequencyRead);
  if (model.Property(p::kDigits) == "lsb") {
    t.digitOrder = YaesuDigitOrder::kLeastSignificantFirst;
  }
  t.vfoBOpcode8A = model.Has(p::kVfoB8A);
  t.resultAfterSetFrequency = !model.Has(p::kNoResultByte);
  t.classicMode = model.Has(p::kClassicMode);
  t.meterRead = Lookup(kMeters, model.Property(p::kMeter), t.meterRead);
  t.sMeterMask = static_cast<uint8_t>(model.Number(p::kSMeterMask, t.sMeterMask));
  t.modeOffset = model.Number(p::kModeByte, t.modeOffset);
  t.filterOffset = model.Number(p::kFilterByte, t.filterOffset);
  t.preamble = model.Number(p::kPreamble, t.preamble);
  t.slotRule = Lookup(kSlotRules, model.Property(p::kSlots), t.slotRule);
  t.shortFlags = model.Has(p::kShortFlags);
  return t;
}

}  // namespace tavlorin
