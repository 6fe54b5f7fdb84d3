// Where the program keeps its files.
//
// ConfigDir: per-user settings ($XDG_CONFIG_HOME/tavlorin, else ~/.config/tavlorin).
// DataDir: per-user data such as the logbook and the debug log ($XDG_DATA_HOME/tavlorin, else
//          ~/.local/share/tavlorin).
// SharedDataDir: definitions shipped with the program (share/tavlorin under the install prefix;
//          the source tree's data/ when run from a build folder). TAVLORIN_SHARED_DATA overrides.
// The folders are created on first use; thread-safe (reads the environment only).
#pragma once

#include <filesystem>

namespace tavlorin {

std::filesystem::path ConfigDir();
std::filesystem::path DataDir();
std::filesystem::path SharedDataDir();

}  // namespace tavlorin
