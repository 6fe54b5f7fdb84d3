// RadioRequest and RadioResult: the records that carry work from a radio window to the radio
// worker and the outcome back.
//
// A request is built by the window (on its thread), owned by the worker's queue until the
// worker takes it, and freed by the worker. The worker allocates a result for every request it
// runs and hands it to the request's target; the target's window frees it after handling. When
// the window is gone (its target expired) the worker frees the result itself.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;
struct RadioResult;

// Request codes. 1..9 are the worker's own control codes.
enum RequestCode : uint32_t {
  kJobFirst = 1,
  kJobLast = 8,
  kStopWorker = 9,
  kReadFrequency = 1000,
  kReadButtons = 1001,
  kReadButtons2 = 1002,
  kReadDropdowns = 1003,
  kReadRxMeters = 1004,
  kReadStatusItems = 1005,
  kReadSlider = 1006,
  kReadTxMeters = 1007,
  kStartOfPolling = 1008,
  kPhase3Read = 1009,
  kPressButton = 1010,
  kSetFrequency = 1011,
  kStepFrequency = 1012,
  kSelectDropdown = 1013,
  kSetSlider = 1014,
  kSetDropdownByCommand = 1015,
  kControlValue = 1016,
  kClose = 1017,
  kRunMacro = 1018,
  kSendTester = 1019,
};

// Bit 31 of a VFO selector: read both VFOs.
inline constexpr uint32_t kReadBothVfos = 0x80000000u;
// Value 2 of a set-frequency request: bit 0 read the meters too, bits 2-3 the VFO.
inline constexpr uint32_t kSetReadsMeters = 0x1u;

// Where a radio window receives results. The worker calls these on its own thread: an
// implementation only posts the value to the window's thread.
class RadioResultTarget {
 public:
  virtual ~RadioResultTarget() = default;
  // `pending` is how many requests were still waiting when the worker took this one.
  virtual void PostRadioData(int pending, std::unique_ptr<RadioResult> result) = 0;
  // A frequency the radio sent unasked (wParam -1 of the radio-data message).
  virtual void PostUnsolicitedFrequency(Frequency hz) = 0;
};

struct RadioRequest {
  uint32_t code = 0;
  std::weak_ptr<RadioResultTarget> target;  // the window that receives the result
  CatRadio* radio = nullptr;
  std::string modelName;      // whose definition's quirks the frequency read follows
  std::string text;           // a control name, command text or macro
  uint32_t value1 = 0;        // frequency, VFO selector or control value, per code
  uint32_t value2 = 0;        // second value; 1006 and 1014: the slider's identifier
  std::function<void()> job;  // codes 1..8: the work to run on the worker thread
};

struct MeterReading {
  std::array<int, 3> numbers{};  // shown only when the third is non-zero
  std::string text;
};

struct RadioResult {
  uint32_t code = 0;         // the request's code (1015 is reported as 1003)
  Frequency frequencyA = 0;  // 0 = not read
  Frequency frequencyB = 0;
  Frequency frequencyCurrent = 0;
  uint32_t vfoSelector = 0;  // as sent; bit 31 when both VFOs were read
  MeterReading mainMeter;    // 1004, 1007: the first meter of the model's set; numbers are the
  MeterReading subMeter;     // value, the full scale and 1 (shown); sub: the second meter
  std::vector<std::pair<std::string, int>> meters;  // 1004, 1007: every meter read, by name
  uint32_t value = 0xFFFFFFFFu;  // codes 1006, 1014: the value read back (all ones = failed)
  uint32_t sliderId = 0;         // codes 1006, 1014: the slider that asked (value 2 of the request)
  // 1001, 1002, 1005, 1008, 1009, 1010: control name, on/off (buttons and status items)
  std::vector<std::pair<std::string, bool>> states;
  // 1003, 1008, 1009, 1015: drop-down name, the value read (a ControlChoice's value)
  std::vector<std::pair<std::string, int>> dropdowns;
  std::string textA, textB, textCurrent;  // FormatFrequency of the three
  std::string text;                       // the request's text parameter; 1019: the radio's reply
  bool linkLost = false;                  // the radio's port failed during this request
  std::string linkLostReason;
};

}  // namespace tavlorin
