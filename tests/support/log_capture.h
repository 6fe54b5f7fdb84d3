// LogCapture: collects what the program writes to its debug log while the object lives, for the
// tests that check what is logged (and what never is, such as a password). Any thread may log.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "shell/debug_log.h"

namespace tavlorin::testing {

class LogCapture {
 public:
  LogCapture() {
    DebugLog::SetObserver([this](const std::string& line) {
      std::lock_guard lock(mutex_);
      lines_.push_back(line);
    });
  }
  ~LogCapture() { DebugLog::SetObserver(nullptr); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  std::vector<std::string> lines() const {
    std::lock_guard lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace tavlorin::testing
