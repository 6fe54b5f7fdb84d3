// The stop flag of the long-running tavlorin-cli commands: Ctrl-C (SIGINT) or SIGTERM sets it,
// and the command's event loop looks at it and ends cleanly.
#pragma once

#include <atomic>

namespace tavlorin::cli {

// Installs the handlers (once) and returns the flag.
const std::atomic<bool>& StopOnSignals();

}  // namespace tavlorin::cli
