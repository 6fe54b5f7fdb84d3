#include "radio/yaesu/yaesu_models.h"

namespace tavlorin {
namespace {

using R = YaesuFrequencyRead;
using M = YaesuMeterRead;
constexpr YaesuDigitOrder kLsb = YaesuDigitOrder::kLeastSignificantFirst;
constexpr YaesuDigitOrder kMsb = YaesuDigitOrder::kMostSignificantFirst;

// Mode and filter offsets are those of the VFO-A record of each radio's status update, as
// its CAT documentation lays it out (FT-1000 family and FT-990: 16-byte records with the mode
// at 7 and the IF filter at 8; FT-920: 14-byte records, mode at 7; FT-900 and FT-600: 9-byte
// records, mode at 6; FT-100: mode in the low nibble of byte 5, bandwidth in the high one).
// clang-format off
constexpr YaesuModelTraits kTable[] = {
    // name           read           order  8A     result classic meter         mask  mode filt pre  slots
    {"FT-100",        R::kFt100,     kLsb, false, false, true,  M::kFt100,      0x00, 5,   5,   0x0F, YaesuSlotRule::kPlain},
    {"FT-600",        R::kFt900,     kLsb, false, false, true,  M::kMeterRead,  0x00, 6,   -1,  0, YaesuSlotRule::kPlain},
    {"FT-900",        R::kFt900,     kLsb, false, false, true,  M::kMeterRead,  0x00, 6,   -1,  0, YaesuSlotRule::kPlain},
    {"FT-920",        R::kFt920,     kLsb, false, false, true,  M::kMeterRead,  0x00, 7,   8,   0, YaesuSlotRule::kPlain},
    {"FT-990",        R::kFt990,     kLsb, false, false, true,  M::kMeterRead,  0x00, 7,   8,   0, YaesuSlotRule::kPlain},
    {"FT-1000D",      R::kFt1000D,   kLsb, true,  false, true,  M::kMeterRead,  0x00, 7,   8,   0, YaesuSlotRule::kPlain},
    {"FT-1000MP MkV", R::kFt1000Mp,  kLsb, true,  false, true,  M::kMeterRead,  0x00, 7,   8,   0x0F, YaesuSlotRule::kPlain},
    {"FT-847",        R::kSlots,     kMsb, false, false, false, M::kStatusByte, 0x1F, -1,  -1,  0x88, YaesuSlotRule::kFt847},
    {"FT-817",        R::kSlots,     kMsb, false, true,  false, M::kStatusByte, 0x0F, -1,  -1,  0, YaesuSlotRule::kFt817},
};

constexpr YaesuModelTraits kDefault = {
    "", R::kSlots, kMsb, false, true, false, M::kStatusByte, 0x0F, -1, -1, 0, YaesuSlotRule::kPlain};
// clang-format on

}  // namespace

const YaesuModelTraits& YaesuTraitsFor(std::string_view commandSet) {
  for (const YaesuModelTraits& t : kTable) {
    if (t.name == commandSet) {
      return t;
    }
  }
  return kDefault;
}

}  // namespace tavlorin
