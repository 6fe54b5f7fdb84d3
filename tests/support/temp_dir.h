// TempDir: a fresh folder under /tmp for one test, removed with everything in it when the
// object goes away.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace tavlorin::testing {

class TempDir {
 public:
  TempDir() {
    char pattern[] = "/tmp/tavlorin-test-dir-XXXXXX";
    if (mkdtemp(pattern) != nullptr) {
      path_ = pattern;
    }
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  // Writes `bytes` to `name` in the folder; returns the file's path.
  std::filesystem::path Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return path_ / name;
  }
  // The whole file; empty when it cannot be read.
  static std::string Read(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tavlorin::testing
