// SerialPort: a PortDevice on a POSIX serial device (termios).
//
// The port is opened for this program alone: TIOCEXCL refuses other opens of the device, and
// an exclusive advisory lock (flock) on it also stops a second program (or a second window of
// this one) that runs as root, which TIOCEXCL does not. Owned by the RadioLink that opened it;
// used by one thread at a time.
#pragma once

#include <memory>
#include <string>

#include "link/port_device.h"

namespace tavlorin {

// Why a device could not be opened, so that the user gets the advice that fits.
enum class PortOpenFailure { kNone, kMissing, kInUse, kNoPermission, kNotSerial, kOther };

class SerialPort final : public PortDevice {
 public:
  // Opens `path` for reading and writing. On failure returns nullptr and sets *message to the
  // system's error text ("No such file or directory", "Device or resource busy", ...) and
  // *why (when given) to the kind of failure.
  static std::unique_ptr<SerialPort> Open(const std::string& path, std::string* message,
                                          PortOpenFailure* why = nullptr);
  ~SerialPort() override;
  SerialPort(const SerialPort&) = delete;
  SerialPort& operator=(const SerialPort&) = delete;

  Status Configure(const LineSettings& settings) override;
  Status SetModemLines(ModemLine dtr, ModemLine rts) override;
  void Purge() override;
  void DrainAndPurgeInput(std::chrono::milliseconds limit) override;
  IoOutcome ReadSome(uint8_t* buffer, size_t capacity, std::chrono::milliseconds timeout) override;
  IoOutcome Write(const uint8_t* data, size_t count, std::chrono::milliseconds timeout) override;

 private:
  explicit SerialPort(int fd) : fd_(fd) {}
  int fd_;
};

}  // namespace tavlorin
