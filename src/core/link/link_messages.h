// Messages of the connection that callers add to what the link reports.
#pragma once

#include "link/serial_port.h"

namespace tavlorin {

// Shown when a port cannot be opened; "%s" is the port name.
inline constexpr const char* kPortInUseAdvice =
    "Check that port %s is not in use by another program, for example a personal organiser or "
    "mobile phone.";
inline constexpr const char* kPortMissingAdvice =
    "There is no port %s: check its name and that the radio's cable or adapter is plugged in.";
inline constexpr const char* kPortPermissionAdvice =
    "Your user may not open %s: add it to the group that owns the port (usually \"dialout\": "
    "sudo usermod -aG dialout $USER), then log in again.";
inline constexpr const char* kPortNotSerialAdvice =
    "%s is not a serial port: name the radio's serial device (such as /dev/ttyUSB0).";

// The advice that fits why a port could not be opened ("%s" is the port name), or nullptr
// when there is nothing to add to the system's reason.
inline const char* PortOpenAdvice(PortOpenFailure why) {
  switch (why) {
    case PortOpenFailure::kInUse:
      return kPortInUseAdvice;
    case PortOpenFailure::kMissing:
      return kPortMissingAdvice;
    case PortOpenFailure::kNoPermission:
      return kPortPermissionAdvice;
    case PortOpenFailure::kNotSerial:
      return kPortNotSerialAdvice;
    case PortOpenFailure::kNone:
    case PortOpenFailure::kOther:
      break;
  }
  return nullptr;
}

}  // namespace tavlorin
