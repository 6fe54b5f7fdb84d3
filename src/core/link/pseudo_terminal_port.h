// PseudoTerminalPort: a PortDevice on a pseudo-terminal this program creates, so another
// program on the same computer can open path() as if it were a radio's serial port.
//
// This side holds the master; it also keeps the slave open itself, so the line stays up while
// no program has it open and a program may close and reopen it between sessions without this
// side seeing a hang-up. The slave starts in raw mode (no echo, no line editing), as a radio's
// port would be. Line settings have no effect on the wire of a pseudo-terminal; they are
// applied to the slave so a program that reads them back sees sensible values.
//
// Owned by the RadioLink it is attached to; used by one thread at a time.
#pragma once

#include <memory>
#include <string>

#include "link/port_device.h"

namespace tavlorin {

class PseudoTerminalPort final : public PortDevice {
 public:
  // Creates a pseudo-terminal. On failure returns nullptr and sets *message to the system's
  // error text.
  static std::unique_ptr<PseudoTerminalPort> Create(std::string* message);
  ~PseudoTerminalPort() override;
  PseudoTerminalPort(const PseudoTerminalPort&) = delete;
  PseudoTerminalPort& operator=(const PseudoTerminalPort&) = delete;

  // The device another program opens (/dev/pts/N).
  const std::string& path() const { return path_; }

  Status Configure(const LineSettings& settings) override;
  Status SetModemLines(ModemLine dtr, ModemLine rts) override;
  void Purge() override;
  IoOutcome ReadSome(uint8_t* buffer, size_t capacity, std::chrono::milliseconds timeout) override;
  IoOutcome Write(const uint8_t* data, size_t count, std::chrono::milliseconds timeout) override;

 private:
  PseudoTerminalPort(int master, int slave, std::string path)
      : master_(master), slave_(slave), path_(std::move(path)) {}

  int master_;
  int slave_;
  std::string path_;
};

}  // namespace tavlorin
