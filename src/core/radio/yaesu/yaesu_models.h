// YaesuModelTraits: how the Yaesu models differ, read from the properties of their radio
// definitions ("TVR Radio Definitions.txt").
//
// The radios of this family share the 5-byte command form but differ in how the frequency is
// read back (status update records or the frequency-and-mode read), the byte order of a set
// frequency, whether a result byte follows a set, the mode command and the meter reads. Models
// that borrow another's command set (FT-857 -> FT-817) inherit its properties. A model without
// properties gets the defaults of the newer radios (FT-817 style). Pure; any thread.
#pragma once

#include <string_view>

#include "radio/radio_models.h"
#include "radio/yaesu/yaesu_codec.h"

namespace tavlorin {

// How the frequency is read.
enum class YaesuFrequencyRead {
  kFt100,     // FT-100 flags + update: bytes 1-4 big-endian, x 1.25
  kFt1000Mp,  // FT-1000 flags + update: bytes 1-4 (VFO B 17-20), >> 4, x 10
  kFt920,     // FT-920 flags + update: bytes 1-4 (15-18 when flags[0] & 0x10), hertz
  kFt990,     // FT-990 flags + update: bytes 1-3 (17-19 when flags[0] & 0x02), x 10
  kFt1000D,   // FT-1000 flags + update: bytes 1-3 (VFO B 17-19), x 10
  kFt900,     // FT-900 flags + update: two 9-byte records, bytes 1-3 / 10-12, x 10
  kSlots,     // the frequency-and-mode read, one opcode per VFO slot
};

// How the S-meter is read.
enum class YaesuMeterRead {
  kStatusByte,  // 00 00 00 00 E7 (receive) / F7 (transmit): one status byte
  kMeterRead,   // 00 00 00 0s F7: s = 0 main, 1 sub; five bytes, the first is the level
  kFt100,       // 00 00 00 00 F7: the FT-100's meter block
};

// Which slot of the frequency-and-mode read a VFO selector means.
enum class YaesuSlotRule {
  kPlain,  // selectors 0, 1, 2 read slots 1, 2, 3
  kFt817,  // 0 slot 1; 1 the other VFO (A/B swapped for the read and back)
  kFt847,  // "SAT" on: 0 slot 2, 1 slot 3; off: 0 slot 1, 1 nothing
};

struct YaesuModelTraits {
  YaesuFrequencyRead frequencyRead = YaesuFrequencyRead::kSlots;        // frequency-read
  YaesuDigitOrder digitOrder = YaesuDigitOrder::kMostSignificantFirst;  // digits
  bool vfoBOpcode8A = false;            // vfo-b-8a: "set frequency" for VFO B is 8A (FT-1000MP MkV)
  bool resultAfterSetFrequency = true;  // cleared by no-result-byte
  bool classicMode = false;  // classic-mode: mode set 00 00 00 m 0C; toggles carry on/off in P4
  YaesuMeterRead meterRead = YaesuMeterRead::kStatusByte;  // meter
  uint8_t sMeterMask = 0x0F;  // s-meter-mask: bits of the status byte that hold the S-meter
  int modeOffset = -1;        // mode-byte: in the update record; -1 for the slot reads
  int filterOffset = -1;      // filter-byte: in the update record; -1 when not known
  int preamble = 0;           // preamble: start-up opcode before connecting, 0 none
  YaesuSlotRule slotRule = YaesuSlotRule::kPlain;  // slots
  bool shortFlags = false;  // short-flags: the FT-1000 flags reply has 5 bytes, not 6
};

// The traits a model's properties give.
YaesuModelTraits YaesuTraitsOf(const RadioModel& model);

}  // namespace tavlorin
