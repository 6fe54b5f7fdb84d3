// RadioRequestHandler: what the radio worker does for each radio request (codes 1000-1019):
// the CatRadio operations behind a poll, a tuning step or a control, and the result they fill.
//
// The requests about the panel's controls (1001-1010, 1013-1016) act on the controls of the
// radio's model as its family's control definitions give them (radio_controls.h): a request
// that names a control ("AF Gain", "VFO B") uses that control's read and set texts; a request
// whose text is not the name of one of the model's controls is taken as a command text of the
// family (with the value put in for "%u" and its kin), as other programs send them.
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
};

// The control requests (radio_control_requests.cpp): codes 1001-1010 and 1013-1016.
void RunControlRequest(const RadioRequest& request, RadioResult& result);

}  // namespace tavlorin
