// ChildProcess: runs a program (the command-line tool, an outside peer such as rigctl) for an
// end-to-end test, with its standard output and error captured and a hard time limit, so a
// hanging child fails the test instead of hanging it.
//
// Used from one test thread.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

namespace tavlorin::testing {

struct ProcessResult {
  int exitCode = -1;  // -1 when it was killed or did not start
  bool timedOut = false;
  std::string out;
  std::string err;
};

// Runs `argv` to the end (at most `limit`; then it is killed). `input` is its standard input.
ProcessResult RunProcess(const std::vector<std::string>& argv, std::chrono::milliseconds limit,
                         const std::string& input = {});

// A child left running while the test talks to it; killed (SIGTERM, then SIGKILL) when the
// object goes away.
class ChildProcess {
 public:
  explicit ChildProcess(const std::vector<std::string>& argv);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  bool started() const { return pid_ > 0; }
  // Reads standard output until it holds `count` lines (or `limit` passes); returns all so far.
  std::string WaitForLines(size_t count, std::chrono::milliseconds limit);
  // Sends `signal` and waits (at most `limit`) for the end; the exit code, -1 when killed.
  int Stop(int signal, std::chrono::milliseconds limit);
  const std::string& out() const { return out_; }
  // Standard error so far (read when the child has ended).
  const std::string& err() const { return err_; }

 private:
  void Drain(int fd, std::string& into, std::chrono::milliseconds wait);

  pid_t pid_ = -1;
  int outFd_ = -1;
  int errFd_ = -1;
  std::string out_;
  std::string err_;
};

}  // namespace tavlorin::testing
