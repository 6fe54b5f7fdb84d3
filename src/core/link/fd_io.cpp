#include "link/fd_io.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace tavlorin {

IoOutcome ReadWithTimeout(int fd, uint8_t* buffer, size_t capacity,
                          std::chrono::milliseconds timeout, bool endOfFileIsHangUp) {
  IoOutcome out;
  pollfd p{fd, POLLIN, 0};
  int waited = ::poll(&p, 1, static_cast<int>(timeout.count()));
  if (waited < 0) {
    if (errno != EINTR) {
      out.failed = true;
      out.message = std::strerror(errno);
    }
    return out;
  }
  if (waited == 0) {
    return out;
  }
  ssize_t n = ::read(fd, buffer, capacity);
  if (n > 0) {
    out.count = static_cast<size_t>(n);
  } else if (n == 0 && endOfFileIsHangUp) {
    out.failed = true;
    out.message = "The device was disconnected";
  } else if (n < 0 && errno != EAGAIN && errno != EINTR) {
    // EIO from a tty: the cable or adapter is gone.
    out.failed = true;
    out.message = std::strerror(errno);
  }
  return out;
}

IoOutcome WriteWithTimeout(int fd, const uint8_t* data, size_t count,
                           std::chrono::milliseconds timeout) {
  IoOutcome out;
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (out.count < count) {
    ssize_t n = ::write(fd, data + out.count, count - out.count);
    if (n > 0) {
      out.count += static_cast<size_t>(n);
      continue;
    }
    if (n < 0 && errno != EAGAIN && errno != EINTR) {
      out.failed = true;
      out.message = std::strerror(errno);
      return out;
    }
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) {
      return out;
    }
    pollfd p{fd, POLLOUT, 0};
    ::poll(&p, 1, static_cast<int>(left.count()));
  }
  return out;
}

}  // namespace tavlorin
