// RefusingPort: a TCP port of 127.0.0.1 that is taken but never listens, so every connection to
// it is refused at once, for the tests of what a client does when no server is there. Held
// until the object goes away, so no other test can start a server on it meanwhile.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tavlorin::testing {

class RefusingPort {
 public:
  RefusingPort() {
    fd_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (fd_ >= 0 && ::bind(fd_, reinterpret_cast<sockaddr*>(&address), length) == 0 &&
        ::getsockname(fd_, reinterpret_cast<sockaddr*>(&address), &length) == 0) {
      port_ = ntohs(address.sin_port);
    }
  }
  ~RefusingPort() {
    if (fd_ >= 0) {
      ::close(fd_);
    }
  }
  RefusingPort(const RefusingPort&) = delete;
  RefusingPort& operator=(const RefusingPort&) = delete;

  // 0 when no port could be taken.
  int port() const { return port_; }

 private:
  int fd_ = -1;
  int port_ = 0;
};

}  // namespace tavlorin::testing
