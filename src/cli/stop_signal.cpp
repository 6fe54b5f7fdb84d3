#include "stop_signal.h"

#include <csignal>

namespace tavlorin::cli {
namespace {

std::atomic<bool> gStopRequested{false};
std::atomic<std::atomic<bool>*> gAbortFlag{nullptr};
static_assert(std::atomic<std::atomic<bool>*>::is_always_lock_free &&
                  std::atomic<bool>::is_always_lock_free,
              "touched from a signal handler");

void OnStopSignal(int) {
  gStopRequested = true;
  if (std::atomic<bool>* flag = gAbortFlag.load()) {
    flag->store(true);
  }
}

}  // namespace

const std::atomic<bool>& StopOnSignals() {
  std::signal(SIGINT, OnStopSignal);
  std::signal(SIGTERM, OnStopSignal);
  return gStopRequested;
}

const std::atomic<bool>& StopRequested() { return gStopRequested; }

void AbortOnSignals(std::atomic<bool>* flag) { gAbortFlag = flag; }

}  // namespace tavlorin::cli
