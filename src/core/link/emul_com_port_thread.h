// CEmulComPortThread: one emulated port through which another program talks to this one as if
// it were a radio speaking Kenwood commands.
//
// The port is either a serial device the user names (a null-modem cable or a virtual pair,
// opened at "57600,n,8,1") or a pseudo-terminal the thread creates, optionally reachable under
// a stable symbolic link the user chooses (replaced if it is a stale link, removed on Stop).
// The thread reads up to ";" (at most 1024 bytes), hands each command to its owner's thread and
// waits there for the answer, as a synchronous window message would, then writes the answer
// back. It logs "CEmulComPortThread RX: %s", "CEmulComPortThread TX: %s" and a failed read as
// "CEmulComPortThread-Read status %d bytes %d".
//
// Threads: construct and Start on the owner's thread; the answerer runs there (by way of the
// poster). Stop may be called from any thread. The hand-over cannot deadlock on shutdown: Stop
// wakes a thread that is waiting for an answer, and an answer still queued on the owner's
// thread is then dropped without calling the answerer (a call already under way finishes
// unwaited for). Stop returns within about a tenth of a second plus the time of one write.
// REQUIRES: the poster's queue outlives the thread object; the answerer outlives Stop.
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "link/radio_link.h"

namespace tavlorin {

class CEmulComPortThread {
 public:
  struct Options {
    int portNumber = 1;    // passed with every command, so one owner can serve several ports
    std::string device;    // serial device to serve; empty: create a pseudo-terminal
    std::string linkPath;  // pseudo-terminal only: symbolic link to create ("" = none)
  };
  // Runs on the owner's thread: the reply to one command ("" = send nothing).
  using Answerer = std::function<std::string(int portNumber, const std::string& command)>;
  // Hands a call to the owner's thread (such as EventLoop::Post).
  using Poster = std::function<void(std::function<void()>)>;

  CEmulComPortThread(Options options, Poster post, Answerer answer);
  ~CEmulComPortThread();
  CEmulComPortThread(const CEmulComPortThread&) = delete;
  CEmulComPortThread& operator=(const CEmulComPortThread&) = delete;

  // Opens the port and starts serving. On failure *message is "Error opening %s - %s",
  // "Error building device control block - %s" or "Error setting port status - %s".
  bool Start(std::string* message);
  // Stops serving, closes the port and removes the symbolic link. Safe to call twice.
  void Stop();

  // The device other programs open: the serial device, or the pseudo-terminal's slave.
  const std::string& path() const { return path_; }
  bool running() const { return thread_.joinable(); }

  static constexpr size_t kMaxCommand = 1024;

 private:
  struct Exchange;
  bool OpenPort(std::string* message);
  bool MakeLink(std::string* message);
  void Run();
  // Handles one complete (or over-long) command; false when serving must end.
  bool Serve(const std::string& command);
  // Waits for the owner's answer; false when Stop came first.
  bool HandOver(const std::string& command, std::string* answer);

  Options options_;
  Poster post_;
  Answerer answer_;
  RadioLink link_;
  std::string path_;
  bool linkMade_ = false;
  std::atomic<bool> stop_{false};
  std::mutex mutex_;
  std::shared_ptr<Exchange> waiting_;  // the hand-over in progress, guarded by mutex_
  std::thread thread_;
};

}  // namespace tavlorin
