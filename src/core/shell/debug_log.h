// DebugLog: the program's diagnostic log ("Opened: %s", "CIVReadReply: Timeout after %d ms\n").
//
// Lines go to "debug.log" in DataDir() (opened on first use; a file over 8 MiB is moved to
// "debug.log.1" first), to standard error when echo is on, and to an optional observer that
// tests and the command-line tool use to see what was logged. Each call writes one entry with
// a time stamp; a format without a trailing new line gets one.
//
// Thread-safe: any thread may log; one mutex serialises the writes.
#pragma once

#include <cstdarg>
#include <filesystem>
#include <functional>
#include <string>

namespace tavlorin {

class DebugLog {
 public:
  using Observer = std::function<void(const std::string& line)>;

  static void Write(const char* format, ...) __attribute__((format(printf, 1, 2)));
  static void WriteV(const char* format, va_list args);

  // Where the log goes. An empty path turns the file off.
  static void SetFile(const std::filesystem::path& file);
  static void SetEcho(bool toStandardError);
  // Replaces the observer (nullptr removes it). The observer is called under the log's lock:
  // it must not log.
  static void SetObserver(Observer observer);
};

}  // namespace tavlorin
