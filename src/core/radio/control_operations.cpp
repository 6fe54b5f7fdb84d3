#include "radio/control_operations.h"

#include <charconv>

#include "radio/cat_radio.h"
#include "radio/civ/civ_codec.h"
#include "radio/kenwood/kenwood_codec.h"
#include "radio/radio_controls.h"
#include "radio/tentec/tentec_codec.h"
#include "radio/yaesu/yaesu_codec.h"

namespace tavlorin {
namespace {

using Op = ControlText::Op;

struct Word {
  std::string_view word;
  Op op;
  bool hasBytes;  // takes ":CC[-SS]"
  unsigned families;
  bool read;
  bool set;
};

constexpr unsigned Bit(int family) { return 1u << family; }
constexpr unsigned kAllFamilies = ~0u;
constexpr unsigned kModeSetFamilies =
    Bit(kIcom) | Bit(kElecraft) | Bit(kKenwood) | Bit(kYaesu) | Bit(kTenTec) | Bit(kYaesuAscii);
constexpr unsigned kTextReadFamilies = Bit(kIcom) | Bit(kElecraft) | Bit(kKenwood) |
                                       Bit(kTenTec) | Bit(kGeneral) | Bit(kNrd535) |
                                       Bit(kYaesuAscii);
constexpr unsigned kAsciiFamilies = Bit(kElecraft) | Bit(kKenwood) | Bit(kTenTec) |
                                    Bit(kGeneral) | Bit(kNrd535) | Bit(kYaesuAscii);

constexpr Word kWords[] = {
    {"mode", Op::kMode, false, kAllFamilies, true, false},
    {"mode", Op::kMode, false, kModeSetFamilies, false, true},
    {"filter", Op::kFilter, false, Bit(kIcom) | Bit(kYaesu), true, false},
    {"filter", Op::kFilter, false, Bit(kIcom), false, true},
    {"smeter", Op::kSMeter, false, kAllFamilies, true, false},
    {"status", Op::kStatus, true, Bit(kIcom), true, false},
    {"state", Op::kState, true, Bit(kIcom), false, true},
    {"level", Op::kLevel, true, Bit(kIcom), false, true},
    {"vfo", Op::kVfo, true, Bit(kIcom), false, true},
    {"memory", Op::kMemory, true, Bit(kIcom), false, true},
    {"cmd", Op::kCommandState, true, Bit(kYaesu), false, true},
};

bool In(unsigned families, int family) {
  return family >= 0 && family < 32 && (families & Bit(family)) != 0;
}

bool HexByte(std::string_view token, uint8_t* byte) {
  unsigned value = 0;
  auto [end, ec] = std::from_chars(token.data(), token.data() + token.size(), value, 16);
  if (token.empty() || token.size() > 2 || ec != std::errc() ||
      end != token.data() + token.size()) {
    return false;
  }
  *byte = static_cast<uint8_t>(value);
  return true;
}

bool Decimal(std::string_view text, size_t* value) {
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), *value);
  return !text.empty() && ec == std::errc() && end == text.data() + text.size();
}

// "CC" or "CC-SS": one or two hexadecimal bytes.
bool ParseBytes(std::string_view args, ControlText* out) {
  const size_t dash = args.find('-');
  if (!HexByte(args.substr(0, dash), &out->bytes[0])) {
    return false;
  }
  return dash == std::string_view::npos || HexByte(args.substr(dash + 1), &out->bytes[1]);
}

// A whole ICOM command text: hexadecimal tokens of one or two digits separated by "-".
bool IsCivText(std::string_view text) {
  size_t tokens = 0;
  while (true) {
    const size_t dash = text.find('-');
    uint8_t byte = 0;
    if (!HexByte(text.substr(0, dash), &byte)) {
      return false;
    }
    ++tokens;
    if (dash == std::string_view::npos) {
      return tokens <= 4;
    }
    text.remove_prefix(dash + 1);
  }
}

// "IF[26]" or "RA[0,2]": the command and the field of its reply.
bool SplitField(std::string_view text, ControlText* out, std::string* why) {
  const size_t open = text.find('[');
  if (open == std::string_view::npos) {
    out->command = std::string(text);
    return true;
  }
  if (text.back() != ']' || open == 0) {
    *why = "a field is written \"CMD[start]\", \"CMD[start,length]\" or \"CMD[start,char]\"";
    return false;
  }
  const std::string_view inside = text.substr(open + 1, text.size() - open - 2);
  const size_t comma = inside.find(',');
  out->fieldLength = 1;
  out->fieldIsCharacter = comma != std::string_view::npos && inside.substr(comma + 1) == "char";
  if (!Decimal(inside.substr(0, comma), &out->fieldStart) ||
      (!out->fieldIsCharacter && comma != std::string_view::npos &&
       (!Decimal(inside.substr(comma + 1), &out->fieldLength) || out->fieldLength == 0))) {
    *why = "the field \"" + std::string(inside) +
           "\" is not \"start\", \"start,length\" or \"start,char\"";
    return false;
  }
  out->command = std::string(text.substr(0, open));
  return true;
}

bool CheckCommand(int family, const ControlText& text, bool forSet, std::string* why) {
  if (!forSet && !In(kTextReadFamilies, family)) {
    *why = "this family reads controls only with the words mode, filter and smeter";
    return false;
  }
  if (text.fieldLength != 0 && !In(kAsciiFamilies, family)) {
    *why = "reply fields are for the ASCII command families";
    return false;
  }
  // A set text is checked as it will be sent, with a value in its place (one that %c takes).
  std::string sent = text.command;
  if (forSet) {
    std::optional<std::string> formatted = FormatControlCommand(text.command, '0');
    if (!formatted) {
      *why = "\"" + text.command + "\" has a \"%\" that is not %u, %d, %x, %X or %c";
      return false;
    }
    sent = *formatted;
  }
  if (family == kIcom && !IsCivText(sent)) {
    *why = "\"" + sent + "\" is not up to four hexadecimal bytes separated by \"-\"";
    return false;
  }
  if (family == kYaesu && sent.rfind("I-", 0) != 0 && !ParseYaesuCommandText(sent)) {
    *why = "\"" + sent + "\" is not five hexadecimal bytes separated by \"-\"";
    return false;
  }
  if (family == kYaesu && sent.rfind("I-", 0) == 0 && ParseYaesuEepromText(sent).empty()) {
    *why = "\"" + sent + "\" is not a memory bit command";
    return false;
  }
  return true;
}

// A number in an ASCII reply: the Kenwood reading for that family; else the whole text as a
// decimal with a sign or as hexadecimal (Ten-Tec "03e8", PCR-1000 levels), else the decimal
// digits it begins with (the Orion's "50R2S1.5": 50 watts forward).
std::optional<uint32_t> ReplyNumber(int family, const std::string& text) {
  if (family == kElecraft || family == kKenwood || family == kYaesuAscii) {
    return kenwood::ParseValue(text);
  }
  if (std::optional<int32_t> number = ParseTenTecNumber(text)) {
    return static_cast<uint32_t>(*number);
  }
  uint32_t leading = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), leading);
  if (ec != std::errc() || end == text.data()) {
    return std::nullopt;
  }
  return leading;
}

std::optional<uint32_t> ReadCommand(CatRadio& radio, const ControlText& text) {
  if (radio.manufacturer == kIcom) {
    return radio.civ().TryReadValue(text.command);
  }
  std::string reply = radio.ReadString(text.command);
  if (reply.empty()) {
    return std::nullopt;
  }
  if (text.fieldLength != 0) {
    if (text.fieldStart >= reply.size()) {
      return std::nullopt;
    }
    if (text.fieldIsCharacter) {
      return static_cast<unsigned char>(reply[text.fieldStart]);
    }
    reply = reply.substr(text.fieldStart, text.fieldLength);
  }
  return ReplyNumber(radio.manufacturer, reply);
}

}  // namespace

std::optional<ControlText> ParseControlText(int family, std::string_view text, bool forSet,
                                            std::string* why) {
  ControlText out;
  const size_t colon = text.find(':');
  const std::string_view word = text.substr(0, colon);
  bool known = false;
  for (const Word& w : kWords) {
    if (w.word != word || (colon != std::string_view::npos) != w.hasBytes) {
      continue;
    }
    known = true;
    if ((forSet ? w.set : w.read) && In(w.families, family)) {
      out.op = w.op;
      if (w.hasBytes && !ParseBytes(text.substr(colon + 1), &out)) {
        *why = "\"" + std::string(text.substr(colon + 1)) +
               "\" is not one or two hexadecimal bytes (\"16\", \"16-02\")";
        return std::nullopt;
      }
      return out;
    }
  }
  if (word == "smeter" && colon != std::string_view::npos && !forSet) {
    size_t meter = 0;
    if (!Decimal(text.substr(colon + 1), &meter) || meter > 2) {
      *why = "the meter of \"smeter:N\" is 0, 1 or 2";
      return std::nullopt;
    }
    out.op = Op::kSMeter;
    out.bytes[0] = static_cast<uint8_t>(meter);
    return out;
  }
  if (known) {
    *why = "\"" + std::string(word) + "\" cannot " + (forSet ? "set" : "read") +
           " a control of this family";
    return std::nullopt;
  }
  if (!SplitField(text, &out, why) || !CheckCommand(family, out, forSet, why)) {
    return std::nullopt;
  }
  return out;
}

std::optional<uint32_t> ReadControlText(CatRadio& radio, const ControlText& text) {
  switch (text.op) {
    case Op::kCommand:
      return ReadCommand(radio, text);
    case Op::kMode: {
      const uint8_t mode = radio.ReadMode();
      // The Kenwood families number their modes from 1: 0 is a read that failed.
      if (mode == 0 && (radio.manufacturer == kKenwood || radio.manufacturer == kElecraft ||
                        radio.manufacturer == kYaesuAscii)) {
        return std::nullopt;
      }
      return mode;
    }
    case Op::kFilter:
      if (radio.manufacturer == kIcom) {
        radio.ReadMode();
        return radio.civ().lastFilter();
      }
      return radio.ReadValue("filter", "filter");
    case Op::kSMeter:
      return radio.ReadSMeter(text.bytes[0]);
    case Op::kStatus:
      return radio.manufacturer == kIcom ? radio.civ().ReadStatus(text.bytes[0], text.bytes[1])
                                         : std::nullopt;
    default:
      return std::nullopt;
  }
}

bool SetControlText(CatRadio& radio, const ControlText& text, uint32_t value,
                    const std::string& label) {
  const bool icom = radio.manufacturer == kIcom;
  switch (text.op) {
    case Op::kCommand: {
      std::optional<std::string> command = FormatControlCommand(text.command, value);
      return command && radio.SetValue(*command, label) != 0;
    }
    case Op::kMode:
      return radio.SetMode(static_cast<uint8_t>(value)) != 0;
    case Op::kFilter:
      return radio.SetFilter(static_cast<uint8_t>(value)) != 0;
    case Op::kState:
      return icom && radio.civ().SetState(text.bytes[0], text.bytes[1],
                                          static_cast<uint8_t>(value > 255 ? 255 : value)) != 0;
    case Op::kLevel:
      return icom && radio.civ().SetLevel(text.bytes[0], text.bytes[1],
                                          static_cast<uint16_t>(value > 9999 ? 9999 : value)) != 0;
    case Op::kVfo:
      return radio.SetVfo(text.bytes[0], text.bytes[1]) != 0;
    case Op::kMemory:
      return radio.SetMemory(text.bytes[0], text.bytes[1]) != 0;
    case Op::kCommandState:
      return radio.SetCommandState(text.bytes[0], value != 0 ? 1 : 0) != 0;
    default:
      return false;
  }
}

}  // namespace tavlorin
