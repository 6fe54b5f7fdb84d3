// ExchangeProgress: what a long logbook exchange (ADIF import and export, Cabrillo export)
// tells its caller while it runs, and how the caller stops it.
//
// A dialog runs the operation on a worker thread: the callbacks are called on that worker
// thread (the dialog forwards them to its own thread, e.g. by queued calls), and the dialog's
// Cancel button sets the flag from its thread. Every callback is optional. The object must
// outlive the operation.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <string>

namespace tavlorin {

struct ExchangeProgress {
  // A status-line text ("Extracting ADIF data...", "Saving to database...").
  std::function<void(const std::string& text)> status;
  // Progress of the current step: `done` of `total` (total 0: not known).
  std::function<void(size_t done, size_t total)> step;
  // Set (by any thread) to stop the operation; it then ends with "Cancelled".
  const std::atomic<bool>* cancel = nullptr;

  void Status(const std::string& text) const {
    if (status) {
      status(text);
    }
  }
  void Step(size_t done, size_t total) const {
    if (step) {
      step(done, total);
    }
  }
  bool Cancelled() const { return cancel != nullptr && cancel->load(std::memory_order_relaxed); }
};

}  // namespace tavlorin
