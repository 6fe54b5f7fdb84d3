// Messages of the connection that callers add to what the link reports.
#pragma once

#include <string>

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

// The advice that fits why `port` could not be opened, or "" when there is nothing to add to
// the system's reason.
inline std::string PortOpenAdvice(PortOpenFailure why, const std::string& port) {
  const char* advice = nullptr;
  switch (why) {
    case PortOpenFailure::kInUse:
      advice = kPortInUseAdvice;
      break;
    case PortOpenFailure::kMissing:
      advice = kPortMissingAdvice;
      break;
    case PortOpenFailure::kNoPermission:
      advice = kPortPermissionAdvice;
      break;
    case PortOpenFailure::kNotSerial:
      advice = kPortNotSerialAdvice;
      break;
    case PortOpenFailure::kNone:
    case PortOpenFailure::kOther:
      return {};
  }
  std::string text = advice;
  if (const size_t at = text.find("%s"); at != std::string::npos) {
    text.replace(at, 2, port);
  }
  return text;
}

}  // namespace tavlorin
