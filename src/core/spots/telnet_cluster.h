// TelnetCluster: a live connection to a telnet DX cluster node, kept open and reopened with
// back-off, collecting the node's "DX de" spot lines.
//
// On connecting it answers the node's login prompt ("login:", "Please enter your call:") with
// the callsign and a password prompt with the password; telnet options are refused. Each spot
// line is kept (the newest `keepSpots`) and reported; every other line is reported too. When the
// connection fails or the node drops it, the next attempt follows after firstRetry, doubling up
// to longestRetry; a session that got as far as the login starts the wait afresh.
//
// Thread: the connection runs on a thread of its own, started by the constructor; the
// callbacks are called on that thread (post them on to a window's thread). SpotBody and Send
// may be called from any thread. The destructor closes the connection and joins the thread.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "shell/status.h"

struct addrinfo;

namespace tavlorin {

struct TelnetClusterConfig {
  std::string host;
  uint16_t port = 7300;
  std::string callsign;
  std::string password;  // sent only when the node asks for one
  std::chrono::milliseconds firstRetry{2000};
  std::chrono::milliseconds longestRetry{60000};
  std::chrono::milliseconds connectTimeout{10000};
  size_t keepSpots = 500;
};

class TelnetCluster {
 public:
  struct Callbacks {
    std::function<void(const std::string& line)> spotLine;  // a new "DX de" line
    std::function<void(const std::string& line)> otherLine;
    std::function<void(const std::string& text)> status;  // "Connected to ...", "Cannot ..."
  };

  // REQUIRES: config.host and config.callsign are not empty.
  TelnetCluster(TelnetClusterConfig config, Callbacks callbacks);
  ~TelnetCluster();
  TelnetCluster(const TelnetCluster&) = delete;
  TelnetCluster& operator=(const TelnetCluster&) = delete;

  // The kept spot lines, newest first, joined with "\n".
  std::string SpotBody() const;
  // Sends one command line to the node; fails when no session is logged in.
  Status Send(std::string_view line);
  bool loggedIn() const { return loggedIn_; }
  const TelnetClusterConfig& config() const { return config_; }

 private:
  struct Resolution;
  void Run();
  Status Resolve(std::unique_ptr<addrinfo, void (*)(addrinfo*)>* found);
  Status Connect(int* fd);
  // Runs one session on `fd`; returns why it ended.
  std::string Session(int fd);
  enum class Prompt { kNone, kAnswered, kFailed };
  bool HandleText(int fd, const std::string& text, std::string* partial, std::string* ended);
  Prompt AnswerPrompt(int fd, const std::string& text, std::string* ended);
  void HandleLine(const std::string& line);
  bool WriteAll(int fd, std::string_view bytes);
  // Waits `duration` or until woken; false when stopping.
  bool Wait(std::chrono::milliseconds duration);
  void Report(const std::string& text);
  void Wake();
  void DrainWake();

  const TelnetClusterConfig config_;
  const Callbacks callbacks_;
  int wakeRead_ = -1;
  int wakeWrite_ = -1;
  std::atomic<bool> stopping_{false};
  std::atomic<bool> loggedIn_{false};
  bool sentCall_ = false;
  bool sentPassword_ = false;
  mutable std::mutex mutex_;
  std::deque<std::string> spotLines_;  // newest first
  std::string outgoing_;
  std::thread thread_;
};

}  // namespace tavlorin
