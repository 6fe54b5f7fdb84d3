// Messages of the connection that callers add to what the link reports.
#pragma once

namespace tavlorin {

// Shown when a port cannot be opened; "%s" is the port name.
inline constexpr const char* kPortInUseAdvice =
    "Check that port %s is not in use by another program, for example a personal organiser or "
    "mobile phone.";

}  // namespace tavlorin
