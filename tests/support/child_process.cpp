#include "support/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <thread>

namespace tavlorin::testing {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

pid_t Spawn(const std::vector<std::string>& argv, int* in, int* out, int* err) {
  int inPipe[2];
  int outPipe[2];
  int errPipe[2];
  if (::pipe2(inPipe, O_CLOEXEC) != 0 || ::pipe2(outPipe, O_CLOEXEC) != 0 ||
      ::pipe2(errPipe, O_CLOEXEC) != 0) {
    return -1;
  }
  pid_t pid = ::fork();
  if (pid == 0) {
    ::dup2(inPipe[0], 0);
    ::dup2(outPipe[1], 1);
    ::dup2(errPipe[1], 2);
    ::setpgid(0, 0);
    std::vector<char*> args;
    for (const std::string& a : argv) {
      args.push_back(const_cast<char*>(a.c_str()));
    }
    args.push_back(nullptr);
    ::execvp(args[0], args.data());
    ::_exit(127);
  }
  ::close(inPipe[0]);
  ::close(outPipe[1]);
  ::close(errPipe[1]);
  *in = inPipe[1];
  *out = outPipe[0];
  *err = errPipe[0];
  return pid;
}

// Reads what is there from `fd` into `into`; false at end of file.
bool ReadSome(int fd, std::string& into) {
  char buffer[4096];
  ssize_t n = ::read(fd, buffer, sizeof buffer);
  if (n > 0) {
    into.append(buffer, size_t(n));
    return true;
  }
  return n < 0 && (errno == EINTR || errno == EAGAIN);
}

int WaitExit(pid_t pid, milliseconds limit, bool* timedOut) {
  const auto end = Clock::now() + limit;
  int status = 0;
  for (;;) {
    pid_t done = ::waitpid(pid, &status, WNOHANG);
    if (done == pid) {
      return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    if (Clock::now() >= end) {
      *timedOut = true;
      ::kill(-pid, SIGKILL);
      ::waitpid(pid, &status, 0);
      return -1;
    }
    std::this_thread::sleep_for(milliseconds(5));
  }
}

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& argv, milliseconds limit,
                         const std::string& input) {
  ProcessResult result;
  int in = -1;
  int out = -1;
  int err = -1;
  pid_t pid = Spawn(argv, &in, &out, &err);
  if (pid < 0) {
    return result;
  }
  std::thread writer([in, input] {
    size_t done = 0;
    while (done < input.size()) {
      ssize_t n = ::write(in, input.data() + done, input.size() - done);
      if (n <= 0) {
        break;
      }
      done += size_t(n);
    }
    ::close(in);
  });
  const auto end = Clock::now() + limit;
  bool outOpen = true;
  bool errOpen = true;
  while ((outOpen || errOpen) && Clock::now() < end) {
    pollfd fds[2] = {{outOpen ? out : -1, POLLIN, 0}, {errOpen ? err : -1, POLLIN, 0}};
    auto left = std::chrono::duration_cast<milliseconds>(end - Clock::now());
    if (::poll(fds, 2, int(std::max<int64_t>(1, left.count()))) <= 0) {
      continue;
    }
    if (fds[0].revents != 0) {
      outOpen = ReadSome(out, result.out);
    }
    if (fds[1].revents != 0) {
      errOpen = ReadSome(err, result.err);
    }
  }
  if (outOpen || errOpen) {
    ::kill(-pid, SIGKILL);  // its output never ended: it hangs
  }
  result.exitCode = WaitExit(
      pid, std::max(milliseconds(1), std::chrono::duration_cast<milliseconds>(end - Clock::now())),
      &result.timedOut);
  result.timedOut = result.timedOut || outOpen || errOpen;
  writer.join();
  ::close(out);
  ::close(err);
  return result;
}

ChildProcess::ChildProcess(const std::vector<std::string>& argv) {
  int in = -1;
  pid_ = Spawn(argv, &in, &outFd_, &errFd_);
  if (pid_ > 0) {
    ::close(in);
  }
}

ChildProcess::~ChildProcess() {
  if (pid_ > 0) {
    Stop(SIGTERM, milliseconds(5000));
  }
  if (outFd_ >= 0) {
    ::close(outFd_);
  }
  if (errFd_ >= 0) {
    ::close(errFd_);
  }
}

void ChildProcess::Drain(int fd, std::string& into, milliseconds wait) {
  pollfd p{fd, POLLIN, 0};
  if (fd >= 0 && ::poll(&p, 1, int(wait.count())) > 0) {
    ReadSome(fd, into);
  }
}

std::string ChildProcess::WaitForLines(size_t count, milliseconds limit) {
  const auto end = Clock::now() + limit;
  while (size_t(std::count(out_.begin(), out_.end(), '\n')) < count && Clock::now() < end) {
    Drain(outFd_, out_, milliseconds(20));
  }
  return out_;
}

int ChildProcess::Stop(int signal, milliseconds limit) {
  if (pid_ <= 0) {
    return -1;
  }
  ::kill(pid_, signal);
  bool timedOut = false;
  int code = WaitExit(pid_, limit, &timedOut);
  pid_ = -1;
  for (int i = 0; i < 50; ++i) {
    std::string before = out_ + err_;
    Drain(outFd_, out_, milliseconds(1));
    Drain(errFd_, err_, milliseconds(1));
    if (before == out_ + err_) {
      break;
    }
  }
  return timedOut ? -1 : code;
}

}  // namespace tavlorin::testing
