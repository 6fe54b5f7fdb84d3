#include "shell/paths.h"

#include <cstdlib>
#include <system_error>

namespace tavlorin {
namespace {

std::filesystem::path FromXdg(const char* variable, const char* fallbackUnderHome) {
  std::filesystem::path base;
  const char* xdg = std::getenv(variable);
  if (xdg != nullptr && *xdg == '/') {
    base = xdg;
  } else {
    const char* home = std::getenv("HOME");
    base =
        std::filesystem::path(home != nullptr && *home != '\0' ? home : "/tmp") / fallbackUnderHome;
  }
  std::filesystem::path dir = base / "tavlorin";
  std::error_code ignored;
  std::filesystem::create_directories(dir, ignored);
  return dir;
}

}  // namespace

std::filesystem::path ConfigDir() { return FromXdg("XDG_CONFIG_HOME", ".config"); }

std::filesystem::path DataDir() { return FromXdg("XDG_DATA_HOME", ".local/share"); }

std::filesystem::path SharedDataDir() {
  if (const char* over = std::getenv("TAVLORIN_SHARED_DATA"); over != nullptr && *over != '\0') {
    return over;
  }
  std::error_code ec;
  if (std::filesystem::is_directory(TAVLORIN_INSTALL_DATA_DIR, ec)) {
    return TAVLORIN_INSTALL_DATA_DIR;
  }
  return TAVLORIN_SOURCE_DATA_DIR;
}

}  // namespace tavlorin
