// Definition files: the common frame of comment lines around the program's user-editable
// definitions (bands, favourites, scanning ranges, macros, ...) and the one reader for them.
//
// WriteDefinitionFile writes the frame for the file's type around the caller's body lines,
// holding an exclusive advisory lock (flock) on the file while it writes. ReadDefinitionFile
// hands every line (comments included) to the caller in file order; a file that another
// writer holds locked is retried every 100 ms, at most 100 tries. Lines end at CR, LF or CR LF.
//
// Free functions without shared state: any thread may call them; the file itself is the only
// thing shared, and the lock keeps a reader from seeing half a write.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/status.h"

namespace tavlorin {

// One kind of definition file: its number, fixed file name ("" when the caller names the file),
// the title shown in the frame, and whether the frame warns against hand edits.
struct DefinitionFileType {
  unsigned number;
  const char* fileName;
  const char* title;  // nullptr for type 9, which is written without a frame
  bool warning;
};

// The known types, or nullptr for a number that is not one of them.
const DefinitionFileType* FindDefinitionFileType(unsigned number);

// Where a file of a type with a fixed name lives: that name in DataDir(). Empty for the types
// whose callers name the file.
std::filesystem::path DefinitionFilePath(const DefinitionFileType& type);

// The frame's lines before and after the body for `type` (empty for type 9). `createdText` is
// the "%c" local time; FrameHead formats it itself when it is empty.
std::vector<std::string> DefinitionFrameHead(const DefinitionFileType& type,
                                             const std::string& createdText = {});
std::vector<std::string> DefinitionFrameTail(const DefinitionFileType& type);

// Writes `body` inside the frame of type `typeNumber` to `path`, replacing the file.
// REQUIRES: typeNumber names a known type.
Status WriteDefinitionFile(const std::filesystem::path& path, unsigned typeNumber,
                           const std::vector<std::string>& body);

struct DefinitionReadOptions {
  size_t chunkBytes = 1u << 20;  // read size; lines cut by a chunk's end are joined
  int maxTries = 100;            // opens attempted while the file is locked
  // Called between two tries with the number of the failed try (1, 2, ...); the default waits
  // 100 ms. Tests replace it to control when the other holder lets go.
  std::function<void(int failedTry)> waitBeforeRetry;
};

// Reads `path` and calls `onLine` for every line, comments included, in file order.
Status ReadDefinitionFile(const std::filesystem::path& path,
                          const std::function<void(std::string_view line)>& onLine,
                          const DefinitionReadOptions& options = {});

// The body lines only: every line that does not begin with "#".
Status ReadDefinitionBody(const std::filesystem::path& path, std::vector<std::string>* body,
                          const DefinitionReadOptions& options = {});

}  // namespace tavlorin
