// PythonServer: a test server written in Python (the scripts in tests/fixtures/), run with
// Debian's /usr/bin/python3 on a free port of 127.0.0.1. The script prints its port as its
// first line and may report events as further lines, which the test reads with WaitForEvents.
//
// The child is stopped when the object goes away. Used from one test thread.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "support/child_process.h"

namespace tavlorin::testing {

class PythonServer {
 public:
  // `script` is a file name in tests/fixtures/.
  PythonServer(const std::string& script, const std::vector<std::string>& args);

  // 0 when the server did not start within 20 s.
  int port() const { return port_; }
  // "127.0.0.1:PORT".
  std::string address() const { return "127.0.0.1:" + std::to_string(port_); }
  // The event lines so far, waiting (at most `limit`) until there are at least `count`.
  std::vector<std::string> WaitForEvents(size_t count, std::chrono::milliseconds limit);

 private:
  ChildProcess child_;
  int port_ = 0;
};

// The path of a file in tests/fixtures/.
std::string FixturePath(const std::string& name);

}  // namespace tavlorin::testing
