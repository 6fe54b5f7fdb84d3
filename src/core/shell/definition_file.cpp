#include "shell/definition_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <thread>

#include "shell/debug_log.h"
#include "shell/file_lock.h"
#include "shell/paths.h"
#include "tavlorin_version.h"

namespace tavlorin {
namespace {

constexpr DefinitionFileType kTypes[] = {
    {1, "", "Calibration settings", true},
    {2, "TVR Settings 01.txt", "Configuration Options", true},
    {3, "", "Memory contents", false},
    {4, "TVR Favourites 01.txt", "Favourites", true},
    {5, "", "Memory archive", true},
    {6, "TVR Bands 01.txt", "Band definitions", true},
    {7, "TVR Bands Defaults 01.txt", "Default Band definitions", true},
    {9, "", nullptr, false},
    {11, "TVR Parallel Port Defns.txt", "Parallel port definitions", false},
    {12, "TVR Scanning Defs.txt", "Scanning definitions", false},
    {13, "", "Custom Layout", true},
    {14, "", "Macros", true},
    {15, "TVR Bands 02.txt", "Band definitions", true},
    {16, "TVR Accelerators.txt", "Custom Accelerators", true},
    {17, "", "Custom definitions", true},
    {18, "TVR Logbook Analysis Defns.txt", "Logbook analysis", true},
};

constexpr const char* kRule = "############################################################";

std::string LocalTimeText() {
  std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[128];
  // The C locale's date and time, written out so that no locale can shorten the year.
  size_t n = std::strftime(text, sizeof text, "%a %b %e %H:%M:%S %Y", &local);
  return std::string(text, n);
}

// Writes all of `data`; false with errno set when the write falls short.
bool WriteAll(int fd, const std::string& data) {
  size_t done = 0;
  while (done < data.size()) {
    ssize_t n = ::write(fd, data.data() + done, data.size() - done);
    if (n < 0 && errno == EINTR) {
      continue;
    }
    if (n <= 0) {
      if (n == 0) {
        errno = EIO;
      }
      return false;
    }
    done += static_cast<size_t>(n);
  }
  return true;
}

// Splits chunks into lines at CR, LF and CR LF, carrying a cut line and a CR that ended one
// chunk (whose LF may begin the next) over to the next chunk.
class LineSplitter {
 public:
  explicit LineSplitter(const std::function<void(std::string_view)>& onLine) : onLine_(onLine) {}

  void Feed(const char* data, size_t size) {
    size_t start = 0;
    for (size_t i = 0; i < size; ++i) {
      char c = data[i];
      if (c == '\n' && afterCr_) {
        afterCr_ = false;
        start = i + 1;
        continue;
      }
      afterCr_ = false;
      if (c == '\r' || c == '\n') {
        Emit(data + start, i - start);
        afterCr_ = c == '\r';
        start = i + 1;
      }
    }
    pending_.append(data + start, size - start);
  }

  void Finish() {
    if (!pending_.empty()) {
      onLine_(pending_);
      pending_.clear();
    }
  }

 private:
  void Emit(const char* data, size_t size) {
    if (pending_.empty()) {
      onLine_(std::string_view(data, size));
    } else {
      pending_.append(data, size);
      onLine_(pending_);
      pending_.clear();
    }
  }

  const std::function<void(std::string_view)>& onLine_;
  std::string pending_;
  bool afterCr_ = false;
};

// Opens `path` for reading with a shared lock, retrying while a writer holds it.
int OpenForReading(const std::filesystem::path& path, const DefinitionReadOptions& options) {
  const std::string name = path.string();
  for (int attempt = 1;; ++attempt) {
    int fd = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
      int err = errno;
      DebugLog::Write("Error opening %s - %s", name.c_str(), std::strerror(err));
      errno = err;
      return -1;
    }
    if (TryLockFile(fd, FileLockMode::kShared)) {
      if (attempt > 1) {
        DebugLog::Write("Opened %s -", name.c_str());
        DebugLog::Write("File locked for at least %u ms",
                        static_cast<unsigned>((attempt - 1) * 100));
      }
      return fd;
    }
    int err = errno;
    ::close(fd);
    if (attempt == 1 || attempt >= options.maxTries) {
      DebugLog::Write("Error %u opening %s - %s", static_cast<unsigned>(err), name.c_str(),
                      std::strerror(err));
    }
    if (attempt >= options.maxTries) {
      errno = err;
      return -1;
    }
    if (options.waitBeforeRetry) {
      options.waitBeforeRetry(attempt);
    } else {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  }
}

}  // namespace

const DefinitionFileType* FindDefinitionFileType(unsigned number) {
  for (const DefinitionFileType& t : kTypes) {
    if (t.number == number) {
      return &t;
    }
  }
  return nullptr;
}

std::filesystem::path DefinitionFilePath(const DefinitionFileType& type) {
  if (type.fileName[0] == '\0') {
    return {};
  }
  return DataDir() / type.fileName;
}

std::vector<std::string> DefinitionFrameHead(const DefinitionFileType& type,
                                             const std::string& createdText) {
  if (type.title == nullptr) {
    return {};
  }
  std::vector<std::string> lines = {
      kRule,
      "#",
      std::string("#   ") + TAVLORIN_PROGRAM_NAME + " " + TAVLORIN_VERSION + " by " +
          TAVLORIN_MAKER,
      "#",
      std::string("#   Contents ..: ") + type.title,
      "#   Created ...: " + (createdText.empty() ? LocalTimeText() : createdText),
      "#",
  };
  if (type.warning) {
    lines.insert(lines.end(), {"#   The contents of this file must not be changed if the",
                               "#   program is to operate correctly. To avoid problems,",
                               "#   please do NOT edit this file.", "#"});
  }
  lines.insert(lines.end(), {kRule, "#"});
  // The type line is formatted but deliberately not written: a file's type follows from its
  // name, and files without the line must stay byte-identical to the ones we write.
  char typeLine[32];
  std::snprintf(typeLine, sizeof typeLine, "#@filetype=%u", type.number);
  return lines;
}

std::vector<std::string> DefinitionFrameTail(const DefinitionFileType& type) {
  if (type.title == nullptr) {
    return {};
  }
  return {"#", kRule};
}

Status WriteDefinitionFile(const std::filesystem::path& path, unsigned typeNumber,
                           const std::vector<std::string>& body) {
  const DefinitionFileType* type = FindDefinitionFileType(typeNumber);
  if (type == nullptr) {
    return Status::Error("Unknown definition file type " + std::to_string(typeNumber));
  }
  std::string text;
  auto append = [&text](const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
      text += line;
      text += '\n';
    }
  };
  append(DefinitionFrameHead(*type));
  append(body);
  append(DefinitionFrameTail(*type));

  const std::string name = path.string();
  int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0) {
    DebugLog::Write("Error creating %s", name.c_str());
    return Status::Error("Error creating " + name + ": " + std::strerror(errno));
  }
  FileLock lock(fd, FileLockMode::kExclusive);  // waits for readers to finish
  if (::ftruncate(fd, 0) != 0 || !WriteAll(fd, text)) {
    int err = errno;
    DebugLog::Write("Error writing %u bytes to %s - %s", static_cast<unsigned>(text.size()),
                    name.c_str(), std::strerror(err));
    ::close(fd);
    return Status::Error("Error writing " + std::to_string(text.size()) + " bytes to " + name +
                         ": " + std::strerror(err));
  }
  lock.Release();
  ::close(fd);
  return Status::Ok();
}

Status ReadDefinitionFile(const std::filesystem::path& path,
                          const std::function<void(std::string_view line)>& onLine,
                          const DefinitionReadOptions& options) {
  int fd = OpenForReading(path, options);
  if (fd < 0) {
    return Status::Error("Error opening " + path.string() + ": " + std::strerror(errno));
  }
  std::vector<char> chunk(options.chunkBytes > 0 ? options.chunkBytes : 1);
  LineSplitter splitter(onLine);
  for (;;) {
    ssize_t n = ::read(fd, chunk.data(), chunk.size());
    if (n < 0 && errno == EINTR) {
      continue;
    }
    if (n < 0) {
      int err = errno;
      DebugLog::Write("Error reading from %s - %s", path.c_str(), std::strerror(err));
      ::close(fd);
      return Status::Error("Error reading from " + path.string() + ": " + std::strerror(err));
    }
    if (n == 0) {
      break;
    }
    splitter.Feed(chunk.data(), static_cast<size_t>(n));
  }
  splitter.Finish();
  ::close(fd);  // closing drops the shared lock
  return Status::Ok();
}

Status ReadDefinitionBody(const std::filesystem::path& path, std::vector<std::string>* body,
                          const DefinitionReadOptions& options) {
  body->clear();
  return ReadDefinitionFile(
      path,
      [body](std::string_view line) {
        if (line.empty() || line[0] != '#') {
          body->emplace_back(line);
        }
      },
      options);
}

}  // namespace tavlorin
