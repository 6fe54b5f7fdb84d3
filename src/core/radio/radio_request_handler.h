// RadioRequestHandler: what the radio worker does for each radio request (codes 1000-1019):
// the CatRadio operations behind a poll, a tuning step or a control, and the result they fill.
//
// Stateless; called on the worker thread only. REQUIRES: request.radio is connected (or at
// least constructed: operations on a closed radio fail and leave the result's values unread).
#pragma once

#include "radio/radio_request.h"

namespace tavlorin {

class RadioRequestHandler {
 public:
  // Runs `request` and fills `result` (result.code is set by the caller).
  static void Run(const RadioRequest& request, RadioResult& result);

 private:
  static void ReadFrequencies(CatRadio& radio, const std::string& model, uint32_t selector,
                              RadioResult& result);
  static void ReadMeters(CatRadio& radio, uint8_t meter, RadioResult& result);
  static void ReadDropdowns(CatRadio& radio, RadioResult& result);
  static void SetFrequency(const RadioRequest& request, RadioResult& result);
  static void StepFrequency(const RadioRequest& request, RadioResult& result);
  static void SetControl(const RadioRequest& request, RadioResult& result, bool readBack);
  static void RunMacro(const RadioRequest& request);
};

}  // namespace tavlorin
