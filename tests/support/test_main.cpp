// The main() of every test program: each run gets its own settings and data folders, so a
// test never reads or writes the user's real settings, logbook or debug log.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

int main(int argc, char** argv) {
  char pattern[] = "/tmp/tavlorin-test-XXXXXX";
  const char* home = mkdtemp(pattern);
  if (home != nullptr) {
    std::string base = home;
    setenv("XDG_CONFIG_HOME", (base + "/config").c_str(), 1);
    setenv("XDG_DATA_HOME", (base + "/data").c_str(), 1);
  }
  ::testing::InitGoogleTest(&argc, argv);
  int result = RUN_ALL_TESTS();
  if (home != nullptr) {
    std::error_code ignored;
    std::filesystem::remove_all(home, ignored);
  }
  return result;
}
