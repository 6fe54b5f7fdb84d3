#include "radio/radio_request_handler.h"

#include <sstream>

#include "radio/cat_radio.h"
#include "radio/radio_model_properties.h"

namespace tavlorin {
namespace {

constexpr uint32_t kSelectorMask = ~kReadBothVfos;
constexpr uint32_t kMemorySelector = 3;

// The VFO argument of ReadFrequency for a poll selector: memory (3) is read from the status
// reply, which is VFO 2 of the Kenwood family.
int ReadVfoFor(uint32_t selector) { return selector == kMemorySelector ? 2 : int(selector); }

void ReadFrequencies(CatRadio& radio, const std::string& model, uint32_t selector,
                     RadioResult& result) {
  const uint32_t vfo = selector & kSelectorMask;
  result.vfoSelector = selector;
  if ((selector & kReadBothVfos) == 0) {
    Frequency hz = 0;
    radio.ReadFrequency(ReadVfoFor(vfo), &hz);
    result.frequencyCurrent = hz;
    (vfo == 1 ? result.frequencyB : result.frequencyA) = hz;
  } else {
    radio.ReadFrequency(ReadVfoFor(vfo == 1 ? 0 : vfo), &result.frequencyA);
    radio.ReadFrequency(1, &result.frequencyB);
    result.frequencyCurrent = vfo == 1 ? result.frequencyB : result.frequencyA;
    // A radio that reads the other VFO by swapping (the FT-817) has read the VFO in use first.
    if (RadioModelOrDefault(model).Has(model_property::kVfoAIsCurrent)) {
      result.frequencyCurrent = result.frequencyA;
    }
  }
  result.textA = FormatFrequency(result.frequencyA);
  result.textB = FormatFrequency(result.frequencyB);
  result.textCurrent = FormatFrequency(result.frequencyCurrent);
}

void SetFrequency(const RadioRequest& request, RadioResult& result) {
  CatRadio& radio = *request.radio;
  const uint32_t vfo = (request.value2 >> 2) & 0x3u;
  radio.SetFrequency(int(vfo), request.value1);
  ReadFrequencies(radio, request.modelName, vfo | (request.value2 & kReadBothVfos), result);
  if (request.value2 & kSetReadsMeters) {
    RadioRequest meters = request;
    meters.code = kReadRxMeters;
    RunControlRequest(meters, result);
  }
}

void StepFrequency(const RadioRequest& request, RadioResult& result) {
  CatRadio& radio = *request.radio;
  const int vfo = int(request.value2 & 0x1u);
  Frequency hz = 0;
  radio.ReadFrequency(vfo, &hz);
  if (hz == 0) {
    return;
  }
  const int64_t target = int64_t(hz) + int64_t(int32_t(request.value1));
  if (target <= 0 || target > int64_t(kMaxTypedFrequency)) {
    return;
  }
  radio.SetFrequency(vfo, Frequency(target));
  ReadFrequencies(radio, request.modelName, uint32_t(vfo), result);
}

void RunMacro(const RadioRequest& request) {
  // A macro is one command text a line, sent in order.
  std::istringstream lines(request.text);
  std::string line;
  while (std::getline(lines, line)) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    if (!line.empty()) {
      request.radio->SetValue(line, "Macro");
    }
  }
}

}  // namespace

void RadioRequestHandler::Run(const RadioRequest& request, RadioResult& result) {
  CatRadio& radio = *request.radio;
  result.text = request.text;
  result.sliderId = request.value2;
  switch (request.code) {
    case kReadFrequency:
      ReadFrequencies(radio, request.modelName, request.value1, result);
      break;
    case kSetFrequency:
      SetFrequency(request, result);
      break;
    case kStepFrequency:
      StepFrequency(request, result);
      break;
    case kRunMacro:
      RunMacro(request);
      break;
    case kSendTester:
      result.text = radio.manufacturer == kIcom || radio.manufacturer == kYaesu
                        ? std::to_string(radio.SetValue(request.text, "Tester"))
                        : radio.ReadString(request.text);
      break;
    case kClose:
      break;  // touches no radio
    default:
      RunControlRequest(request, result);
      break;
  }
  if (radio.link().lost()) {
    result.linkLost = true;
    result.linkLostReason = radio.link().lostReason();
  }
}

}  // namespace tavlorin
