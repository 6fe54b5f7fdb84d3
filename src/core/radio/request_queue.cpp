#include "radio/request_queue.h"

#include <algorithm>

#include "radio/cat_radio.h"

namespace tavlorin {

bool RequestQueue::IsUserAction(uint32_t code) {
  return (code >= kPressButton && code <= kControlValue) || code == kRunMacro ||
         code == kSendTester;
}

void RequestQueue::Add(std::unique_ptr<RadioRequest> request, bool atFront) {
  const uint32_t code = request->code;
  if (IsUserAction(code) && request->radio != nullptr) {
    request->radio->abort = true;
  }
  switch (code) {
    case kReadFrequency:
    case kReadButtons:
    case kReadButtons2:
    case kReadDropdowns:
    case kReadRxMeters:
    case kReadStatusItems:
    case kReadTxMeters: {
      auto same = std::find_if(requests_.begin(), requests_.end(),
                               [code](const auto& r) { return r->code == code; });
      if (same != requests_.end()) {
        requests_.erase(same);
      }
      requests_.push_back(std::move(request));
      return;
    }
    case kSetFrequency:
    case kStepFrequency:
      while (!requests_.empty() && requests_.front()->code == code) {
        requests_.pop_front();
      }
      requests_.push_front(std::move(request));
      return;
    case kSetSlider:
      requests_.clear();
      requests_.push_back(std::move(request));
      return;
    case kPressButton:
    case kSelectDropdown:
    case kSetDropdownByCommand:
    case kControlValue:
    case kStopWorker:
      requests_.push_front(std::move(request));
      return;
    case 1:
    case 2:
    case 3:
    case 4:
    case 6:
      requests_.clear();
      requests_.push_back(std::move(request));
      return;
    default:
      if (atFront) {
        requests_.push_front(std::move(request));
      } else {
        requests_.push_back(std::move(request));
      }
  }
}

std::unique_ptr<RadioRequest> RequestQueue::TakeFront() {
  if (requests_.empty()) {
    return nullptr;
  }
  std::unique_ptr<RadioRequest> front = std::move(requests_.front());
  requests_.pop_front();
  return front;
}

std::vector<uint32_t> RequestQueue::Codes() const {
  std::vector<uint32_t> codes;
  codes.reserve(requests_.size());
  for (const auto& r : requests_) {
    codes.push_back(r->code);
  }
  return codes;
}

}  // namespace tavlorin
