// Reading and writing a non-blocking file descriptor with a time limit: the byte moving shared
// by the PortDevices that sit on a descriptor (a serial port, a pseudo-terminal).
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

#include "link/port_device.h"

namespace tavlorin {

// Waits up to `timeout` for input on `fd`, then reads what is there (up to capacity). With
// `endOfFileIsHangUp`, a read of zero bytes counts as the device gone (a tty hung up).
IoOutcome ReadWithTimeout(int fd, uint8_t* buffer, size_t capacity,
                          std::chrono::milliseconds timeout, bool endOfFileIsHangUp);

// Writes all bytes, waiting at most `timeout` while the device will not take more. Fewer bytes
// than asked and no failure means the time ran out (flow control, or nobody reading).
IoOutcome WriteWithTimeout(int fd, const uint8_t* data, size_t count,
                           std::chrono::milliseconds timeout);

}  // namespace tavlorin
