#include "link/pseudo_terminal_port.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "link/fd_io.h"

namespace tavlorin {

std::unique_ptr<PseudoTerminalPort> PseudoTerminalPort::Create(std::string* message) {
  int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master < 0) {
    *message = std::strerror(errno);
    return nullptr;
  }
  char name[128] = {};
  int slave = -1;
  if (::grantpt(master) != 0 || ::unlockpt(master) != 0 ||
      ::ptsname_r(master, name, sizeof name) != 0 ||
      (slave = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC)) < 0) {
    *message = std::strerror(errno);
    ::close(master);
    return nullptr;
  }
  termios raw{};
  if (::tcgetattr(slave, &raw) == 0) {
    ::cfmakeraw(&raw);
    ::tcsetattr(slave, TCSANOW, &raw);
  }
  ::fcntl(master, F_SETFL, ::fcntl(master, F_GETFL) | O_NONBLOCK);
  return std::unique_ptr<PseudoTerminalPort>(new PseudoTerminalPort(master, slave, name));
}

PseudoTerminalPort::~PseudoTerminalPort() {
  ::close(slave_);
  ::close(master_);
}

Status PseudoTerminalPort::Configure(const LineSettings& settings) {
  termios tio{};
  if (::tcgetattr(slave_, &tio) != 0) {
    return Status::Error(std::strerror(errno));
  }
  ::cfmakeraw(&tio);
  tio.c_cflag &= ~static_cast<tcflag_t>(CSTOPB);
  if (settings.stopBits == 2) {
    tio.c_cflag |= CSTOPB;
  }
  if (::tcsetattr(slave_, TCSANOW, &tio) != 0) {
    return Status::Error(std::strerror(errno));
  }
  return Status::Ok();
}

Status PseudoTerminalPort::SetModemLines(ModemLine, ModemLine) { return Status::Ok(); }

void PseudoTerminalPort::Purge() {
  ::tcflush(master_, TCIOFLUSH);
  ::tcflush(slave_, TCIOFLUSH);
}

IoOutcome PseudoTerminalPort::ReadSome(uint8_t* buffer, size_t capacity,
                                       std::chrono::milliseconds timeout) {
  return ReadWithTimeout(master_, buffer, capacity, timeout, false);
}

IoOutcome PseudoTerminalPort::Write(const uint8_t* data, size_t count,
                                    std::chrono::milliseconds timeout) {
  // A short write means nobody reads the other side and its buffer is full.
  return WriteWithTimeout(master_, data, count, timeout);
}

}  // namespace tavlorin
