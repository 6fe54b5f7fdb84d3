// PortDevice: the raw byte device under a RadioLink (a serial port, a test double, later the
// remote link). RadioLink adds the buffering and the read rules on top; a device only moves
// bytes and applies line settings.
//
// Called by one thread at a time (the thread that owns the RadioLink). Implementations must not
// throw.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

#include "link/line_settings.h"
#include "shell/status.h"

namespace tavlorin {

// What one ReadSome or Write did.
struct IoOutcome {
  size_t count = 0;     // bytes moved (fewer than asked: the time-out ran out)
  bool failed = false;  // the device failed or vanished; `message` says why
  const char* message = "";
};

class PortDevice {
 public:
  virtual ~PortDevice() = default;

  // Applies speed, stop bits, flow control and modem lines. The message of a failure is the
  // system's text (the caller adds what it was doing).
  virtual Status Configure(const LineSettings& settings) = 0;
  virtual Status SetModemLines(ModemLine dtr, ModemLine rts) = 0;
  // Drops everything waiting in either direction.
  virtual void Purge() = 0;
  // Waits (at most `limit`) until everything written has left the port, then drops what is
  // waiting to be read. Used before closing: a command written just before the port closes
  // must still reach the radio, and on a slow line it may still be in the transmit queue.
  virtual void DrainAndPurgeInput(std::chrono::milliseconds /*limit*/) { Purge(); }
  // Waits up to `timeout` for at least one byte, then returns what is there (up to capacity).
  virtual IoOutcome ReadSome(uint8_t* buffer, size_t capacity,
                             std::chrono::milliseconds timeout) = 0;
  // Writes the bytes, waiting at most `timeout` for the device to take them all.
  virtual IoOutcome Write(const uint8_t* data, size_t count, std::chrono::milliseconds timeout) = 0;
};

}  // namespace tavlorin
