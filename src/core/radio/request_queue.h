// RequestQueue: the radio worker's waiting requests and the rules that place a new one.
//
// Polls never pile up (at most one waiting request of each poll kind), tuning jumps the queue
// and the latest tuning supersedes older ones, a dragged slider discards everything waiting,
// and user actions go to the front. Queueing a user action also raises the radio's abort flag,
// so that a read in progress can give up early.
//
// Not thread-safe by itself: RadioWorker holds it under its lock. Owns the requests it holds.
#pragma once

#include <deque>
#include <memory>
#include <vector>

#include "radio/radio_request.h"

namespace tavlorin {

class RequestQueue {
 public:
  // Places `request` by its code's rule; `atFront` asks for the front where the rule appends.
  void Add(std::unique_ptr<RadioRequest> request, bool atFront = false);
  // Takes the front request; nullptr when empty.
  std::unique_ptr<RadioRequest> TakeFront();
  size_t size() const { return requests_.size(); }
  bool empty() const { return requests_.empty(); }
  // The codes waiting, front first (for tests and diagnostics).
  std::vector<uint32_t> Codes() const;
  const RadioRequest& at(size_t i) const { return *requests_[i]; }

  static bool IsUserAction(uint32_t code);

 private:
  std::deque<std::unique_ptr<RadioRequest>> requests_;
};

}  // namespace tavlorin
