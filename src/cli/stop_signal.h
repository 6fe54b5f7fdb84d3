// The stop flag of the long-running tavlorin-cli commands: Ctrl-C (SIGINT) or SIGTERM sets it,
// and the command's event loop looks at it and ends cleanly.
#pragma once

#include <atomic>

namespace tavlorin::cli {

// Installs the handlers (once) and returns the flag.
const std::atomic<bool>& StopOnSignals();
// The flag alone, for loops that look at it often (the handlers must be installed already).
const std::atomic<bool>& StopRequested();
// While registered, a signal also raises this flag (a radio's abort flag), so that a connect or
// read in progress gives up at its next check instead of running to its time-out. nullptr
// forgets it; the caller unregisters before the flag goes away.
void AbortOnSignals(std::atomic<bool>* flag);

}  // namespace tavlorin::cli
