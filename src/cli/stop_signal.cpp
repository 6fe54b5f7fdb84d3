#include "stop_signal.h"

#include <csignal>

namespace tavlorin::cli {
namespace {

std::atomic<bool> gStopRequested{false};

void OnStopSignal(int) { gStopRequested = true; }

}  // namespace

const std::atomic<bool>& StopOnSignals() {
  std::signal(SIGINT, OnStopSignal);
  std::signal(SIGTERM, OnStopSignal);
  return gStopRequested;
}

}  // namespace tavlorin::cli
