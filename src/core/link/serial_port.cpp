#include "link/serial_port.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "link/fd_io.h"

namespace tavlorin {
namespace {

speed_t SpeedConstant(int speed) {
  switch (speed) {
    case 300:
      return B300;
    case 600:
      return B600;
    case 1200:
      return B1200;
    case 2400:
      return B2400;
    case 4800:
      return B4800;
    case 9600:
      return B9600;
    case 19200:
      return B19200;
    case 38400:
      return B38400;
    case 57600:
      return B57600;
    case 115200:
      return B115200;
    case 230400:
      return B230400;
    case 460800:
      return B460800;
    case 921600:
      return B921600;
    default:
      return B0;
  }
}

std::string SystemText(int error) { return std::strerror(error); }

PortOpenFailure OpenFailureOf(int error) {
  switch (error) {
    case ENOENT:
    case ENODEV:
    case ENXIO:
      return PortOpenFailure::kMissing;
    case EBUSY:
      return PortOpenFailure::kInUse;
    case EACCES:
    case EPERM:
      return PortOpenFailure::kNoPermission;
    case EISDIR:
    case ENOTTY:
      return PortOpenFailure::kNotSerial;
    default:
      return PortOpenFailure::kOther;
  }
}

}  // namespace

std::unique_ptr<SerialPort> SerialPort::Open(const std::string& path, std::string* message,
                                             PortOpenFailure* why) {
  PortOpenFailure ignored;
  PortOpenFailure& failure = why != nullptr ? *why : ignored;
  failure = PortOpenFailure::kNone;
  int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    const int error = errno;
    *message = SystemText(error);
    failure = OpenFailureOf(error);
    return nullptr;
  }
  if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
    const int error = errno == EWOULDBLOCK ? EBUSY : errno;
    *message = SystemText(error);
    failure = OpenFailureOf(error);
    ::close(fd);
    return nullptr;
  }
  if (!::isatty(fd)) {
    *message = SystemText(ENOTTY);
    failure = PortOpenFailure::kNotSerial;
    ::close(fd);
    return nullptr;
  }
  // Exclusive mode may be refused on some devices; the advisory lock above still holds.
  ::ioctl(fd, TIOCEXCL);
  return std::unique_ptr<SerialPort>(new SerialPort(fd));
}

SerialPort::~SerialPort() {
  ::ioctl(fd_, TIOCNXCL);
  ::close(fd_);
}

Status SerialPort::Configure(const LineSettings& settings) {
  termios tio{};
  if (::tcgetattr(fd_, &tio) != 0) {
    return Status::Error(SystemText(errno));
  }
  ::cfmakeraw(&tio);
  tio.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | CSTOPB | CRTSCTS);
  tio.c_cflag |= CS8 | CLOCAL | CREAD;
  if (settings.stopBits == 2) {
    tio.c_cflag |= CSTOPB;
  }
  if (settings.ctsFlowControl) {
    tio.c_cflag |= CRTSCTS;
  }
  tio.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
  tio.c_cc[VMIN] = 0;
  tio.c_cc[VTIME] = 0;
  const speed_t speed = SpeedConstant(ParseSpeed(settings.speedText));
  if (speed == B0 || ::cfsetispeed(&tio, speed) != 0 || ::cfsetospeed(&tio, speed) != 0) {
    return Status::Error(SystemText(EINVAL));
  }
  if (::tcsetattr(fd_, TCSANOW, &tio) != 0) {
    return Status::Error(SystemText(errno));
  }
  return Status::Ok();
}

Status SerialPort::SetModemLines(ModemLine dtr, ModemLine rts) {
  int raise = 0;
  int drop = 0;
  (dtr == ModemLine::kRaise ? raise : drop) |= TIOCM_DTR;
  (rts == ModemLine::kRaise ? raise : drop) |= TIOCM_RTS;
  // A pseudo-terminal has no modem lines; that is not a reason to refuse the port.
  bool ok = true;
  if (raise != 0 && ::ioctl(fd_, TIOCMBIS, &raise) != 0 && errno != ENOTTY && errno != EINVAL) {
    ok = false;
  }
  if (drop != 0 && ::ioctl(fd_, TIOCMBIC, &drop) != 0 && errno != ENOTTY && errno != EINVAL) {
    ok = false;
  }
  return ok ? Status::Ok() : Status::Error(SystemText(errno));
}

void SerialPort::Purge() { ::tcflush(fd_, TCIOFLUSH); }

void SerialPort::DrainAndPurgeInput(std::chrono::milliseconds limit) {
  // TIOCOUTQ rather than tcdrain: a line held by CTS flow control would block tcdrain for good.
  const auto end = std::chrono::steady_clock::now() + limit;
  int queued = 0;
  while (::ioctl(fd_, TIOCOUTQ, &queued) == 0 && queued > 0 &&
         std::chrono::steady_clock::now() < end) {
    ::usleep(1000);
  }
  // Only the input: flushing the output of a pseudo-terminal would also drop what the far side
  // has not read yet.
  ::tcflush(fd_, TCIFLUSH);
}

IoOutcome SerialPort::ReadSome(uint8_t* buffer, size_t capacity,
                               std::chrono::milliseconds timeout) {
  return ReadWithTimeout(fd_, buffer, capacity, timeout, true);
}

IoOutcome SerialPort::Write(const uint8_t* data, size_t count, std::chrono::milliseconds timeout) {
  // A short write without failure: flow control held the bytes back, a time-out rather than a
  // lost port.
  return WriteWithTimeout(fd_, data, count, timeout);
}

}  // namespace tavlorin
