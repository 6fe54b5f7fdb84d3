#include "radio/demo/demo_yaesu_ascii.h"

#include <cstdio>

#include "radio/kenwood/kenwood_codec.h"
#include "radio/yaesu_ascii/yaesu_ascii_codec.h"

namespace tavlorin {
namespace {

namespace ya = yaesu_ascii;

// Where the frequency and the mode of VFO A sit in the "IF" value of a nine-digit radio.
constexpr size_t kIfFrequencyAt = 3;
constexpr size_t kIfModeAt = 3 + ya::kDefaultFrequencyDigits + 5 + 2;
// The meter climbs this much per frequency read, so a polled window shows it sweep 0 to 255.
constexpr unsigned kMeterStep = 17;

void Patch(ValueMap& values, size_t at, std::string_view text) {
  std::string status = values.Get("IF");
  if (status.size() < at + text.size()) {
    return;  // a table without a whole "IF" keeps it as it is
  }
  status.replace(at, text.size(), text);
  values.Set("IF", status);
}

void PatchFrequency(ValueMap& values, std::string_view frequency) {
  if (frequency.size() == ya::kDefaultFrequencyDigits) {
    Patch(values, kIfFrequencyAt, frequency);
  }
}

std::string KeyOf(const ValueMap& values, std::string_view letters) {
  for (size_t length = letters.size(); length >= 2; --length) {
    if (values.Has(letters.substr(0, length))) {
      return std::string(letters.substr(0, length));
    }
  }
  return std::string(letters.substr(0, 2));
}

}  // namespace

std::string DemoYaesuAsciiRead(ValueMap& values, std::string_view command) {
  const std::string_view key = ya::CommandLetters(command);
  if (key == "FA") {
    char meter[8];
    std::snprintf(meter, sizeof meter, "%03u",
                  (kenwood::ParseValue(values.Get("SM0")) + kMeterStep) % 256u);
    values.Set("SM0", meter);
  }
  return values.Get(key);
}

int DemoYaesuAsciiWrite(ValueMap& values, std::string_view command) {
  const std::string_view letters = ya::CommandLetters(command);
  if (letters == "SV" || letters == "AB" || letters == "BA") {
    const std::string a = values.Get("FA");
    const std::string b = values.Get("FB");
    values.Set("FA", letters == "AB" ? a : b);
    values.Set("FB", letters == "BA" ? b : a);
    PatchFrequency(values, values.Get("FA"));
    return 1;
  }
  const std::string key = KeyOf(values, letters);
  const std::string value(letters.substr(key.size()));
  if (key == "FA") {
    PatchFrequency(values, value);
  } else if (key == "MD0" && value.size() == 1) {
    Patch(values, kIfModeAt, value);
  }
  values.Set(key, value);
  return 1;
}

}  // namespace tavlorin
