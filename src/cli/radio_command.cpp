#include <cstdio>

#include "commands.h"

namespace tavlorin::cli {

int RunRadioCommand(const Globals&, const Args&) {
  std::fprintf(stderr, "tavlorin-cli radio: not built yet\n");
  return 1;
}

}  // namespace tavlorin::cli
