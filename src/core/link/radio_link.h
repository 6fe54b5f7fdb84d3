// RadioLink: the byte transport under a CatRadio.
//
// Owns the PortDevice (a serial port, or a test double attached with Attach) and implements the
// read rules every protocol driver relies on:
//  - Read(count): waits up to multiplier x count + constant for the first byte, then at most the
//    read interval between bytes, and returns as soon as `count` bytes are there;
//  - ReadUntil(max, terminator): reads byte by byte, each byte waiting at most multiplier +
//    constant, and stops after the terminator. Bytes behind the terminator stay buffered for the
//    next read, exactly as if they were still in the port; Purge drops them.
// Reads never wait out a time-out once what they asked for has arrived.
//
// When the device vanishes (a USB adapter pulled, a pseudo-terminal closed) the link is marked
// lost: every later operation fails at once, so no caller hangs on a dead port.
//
// Used by one thread at a time (the radio worker while polling, the connecting thread during
// Connect). Not copyable.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/line_settings.h"
#include "link/port_device.h"
#include "link/serial_port.h"
#include "shell/clock.h"

namespace tavlorin {

class RadioLink {
 public:
  explicit RadioLink(Clock& clock = SystemClock());
  ~RadioLink();
  RadioLink(const RadioLink&) = delete;
  RadioLink& operator=(const RadioLink&) = delete;

  // The open procedure: closes what is open, opens the serial device `portName`, applies
  // `settings`, sets the modem lines, purges, and logs each step. On failure the port is closed
  // again and *message holds the reason ("Error setting port status - %s", or the system's text
  // when the device cannot be opened).
  bool Open(const std::string& portName, const LineSettings& settings, std::string* message);
  // Takes an already open device (a test double, an emulated or remote port) and applies
  // `settings` to it the same way.
  bool Attach(std::unique_ptr<PortDevice> device, const LineSettings& settings,
              std::string* message);
  // Applies new line settings to the open port (the PCR-1000 moves to 38 400 bit/s).
  bool Reconfigure(const LineSettings& settings, std::string* message);
  // Drops DTR and RTS, purges and closes. Safe in any state.
  void Close();

  bool IsOpen() const { return device_ != nullptr; }
  // True when the last Open failed because the device itself could not be opened (missing,
  // in use, no permission, not a serial port), as opposed to a setting it refused;
  // openFailure() says which.
  bool deviceRefused() const { return openFailure_ != PortOpenFailure::kNone; }
  PortOpenFailure openFailure() const { return openFailure_; }
  // True once the device failed under a read or write; the reason is lostReason().
  bool lost() const { return lost_; }
  const std::string& lostReason() const { return lostReason_; }
  const LineSettings& settings() const { return settings_; }
  Clock& clock() { return clock_; }

  bool Purge();
  bool SetModemLines(ModemLine dtr, ModemLine rts);
  // Reads up to `count` bytes; true when the read itself worked (even if it timed out early).
  bool Read(uint8_t* buffer, size_t count, size_t* got);
  // True when at least one byte was read. With a `deadline` (on clock()), no byte is waited
  // for past it: a reader with a reply window of its own never overstays it.
  bool ReadUntil(uint8_t* buffer, size_t maxCount, uint8_t terminator, size_t* got,
                 std::optional<Clock::TimePoint> deadline = std::nullopt);
  bool Write(const uint8_t* data, size_t count);
  bool Write(std::string_view text) {
    return Write(reinterpret_cast<const uint8_t*>(text.data()), text.size());
  }

 private:
  bool Apply(const LineSettings& settings, std::string* message);
  // Moves bytes from the device into the buffer, waiting at most `timeout` for the first.
  bool Fill(std::chrono::milliseconds timeout);
  void MarkLost(const char* reason);
  size_t Buffered() const { return buffer_.size() - head_; }

  Clock& clock_;
  std::unique_ptr<PortDevice> device_;
  LineSettings settings_;
  std::vector<uint8_t> buffer_;
  size_t head_ = 0;
  bool lost_ = false;
  PortOpenFailure openFailure_ = PortOpenFailure::kNone;
  std::string lostReason_;
};

}  // namespace tavlorin
