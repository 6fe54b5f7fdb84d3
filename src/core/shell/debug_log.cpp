#include "shell/debug_log.h"

#include <sys/time.h>

#include <cstdio>
#include <ctime>
#include <mutex>
#include <vector>

#include "shell/paths.h"

namespace tavlorin {
namespace {

constexpr std::uintmax_t kRotateBytes = 8u << 20;

struct LogState {
  std::mutex mutex;
  bool fileChosen = false;
  std::filesystem::path path;
  std::FILE* file = nullptr;
  bool echo = false;
  DebugLog::Observer observer;

  ~LogState() {
    if (file != nullptr) {
      std::fclose(file);
    }
  }

  void OpenLocked() {
    if (!fileChosen) {
      fileChosen = true;
      path = DataDir() / "debug.log";
    }
    if (file != nullptr || path.empty()) {
      return;
    }
    std::error_code ec;
    if (std::filesystem::file_size(path, ec) > kRotateBytes && !ec) {
      std::filesystem::rename(path, path.string() + ".1", ec);
    }
    file = std::fopen(path.c_str(), "ae");
    if (file == nullptr) {
      path.clear();  // unwritable: stop trying, the echo and observer still work
    }
  }
};

LogState& State() {
  static LogState state;
  return state;
}

}  // namespace

void DebugLog::Write(const char* format, ...) {
  va_list args;
  va_start(args, format);
  WriteV(format, args);
  va_end(args);
}

void DebugLog::WriteV(const char* format, va_list args) {
  va_list copy;
  va_copy(copy, args);
  int needed = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  if (needed < 0) {
    return;
  }
  std::vector<char> buffer(static_cast<size_t>(needed) + 1);
  std::vsnprintf(buffer.data(), buffer.size(), format, args);
  std::string line(buffer.data(), static_cast<size_t>(needed));
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
    line.pop_back();
  }

  timeval now{};
  gettimeofday(&now, nullptr);
  tm local{};
  localtime_r(&now.tv_sec, &local);
  char stamp[32];
  std::snprintf(stamp, sizeof stamp, "%02d:%02d:%02d.%03d ", local.tm_hour, local.tm_min,
                local.tm_sec, static_cast<int>(now.tv_usec / 1000));

  LogState& s = State();
  std::lock_guard lock(s.mutex);
  s.OpenLocked();
  if (s.file != nullptr) {
    std::fputs(stamp, s.file);
    std::fputs(line.c_str(), s.file);
    std::fputc('\n', s.file);
    std::fflush(s.file);
  }
  if (s.echo) {
    std::fprintf(stderr, "%s%s\n", stamp, line.c_str());
  }
  if (s.observer) {
    s.observer(line);
  }
}

void DebugLog::SetFile(const std::filesystem::path& file) {
  LogState& s = State();
  std::lock_guard lock(s.mutex);
  if (s.file != nullptr) {
    std::fclose(s.file);
    s.file = nullptr;
  }
  s.fileChosen = true;
  s.path = file;
}

void DebugLog::SetEcho(bool toStandardError) {
  LogState& s = State();
  std::lock_guard lock(s.mutex);
  s.echo = toStandardError;
}

void DebugLog::SetObserver(Observer observer) {
  LogState& s = State();
  std::lock_guard lock(s.mutex);
  s.observer = std::move(observer);
}

}  // namespace tavlorin
