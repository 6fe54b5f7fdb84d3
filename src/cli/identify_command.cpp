// tavlorin-cli connect --identify: finds out which radio answers on a port, at which speed,
// and prints a preset that connects to it.
#include <cstdio>

#include "args.h"
#include "commands.h"
#include "radio/radio_identify.h"
#include "radio/radio_settings.h"
#include "shell/settings.h"

namespace tavlorin::cli {
namespace {

const char* const kUsage =
    "Usage: tavlorin-cli connect --identify --port P\n\n"
    "Tries the radio families and speeds on port P, fastest first: \"ID;\" for Kenwood,\n"
    "Elecraft, Yaesu (FT-991A, FTDX101D, ...), QRP Labs and (tr)uSDX radios, then CI-V 19 00\n"
    "for ICOM and Xiegu radios. Prints a line per try, then \"found\" with the model and\n"
    "\"preset\" with the connection preset to use (tavlorin-cli radio --model, --speed and\n"
    "--address take its fields). Exit 0 when a radio was found, 1 when none answered.\n"
    "The 5-byte Yaesu radios (FT-817, FT-1000MP, ...) cannot be identified this way.\n";

}  // namespace

int RunConnectIdentifyCommand(const Globals&, const Args& words) {
  ArgReader args(words);
  if (args.Flag("--help") || args.Flag("-h")) {
    std::printf("%s", kUsage);
    return 0;
  }
  const bool identify = args.Flag("--identify");
  const auto port = args.Option("--port");
  if (std::string error = args.Finish(); !error.empty() || !identify || !port) {
    std::fprintf(stderr, "tavlorin-cli connect: %s\n\n%s",
                 !error.empty() ? error.c_str()
                 : !identify    ? "only --identify is offered here"
                                : "--port is required",
                 kUsage);
    return 2;
  }
  const int timeout = Settings::Default().Get(radio_settings::kCommsRxTimeout);
  auto found = IdentifyRadio(*port, timeout, [](const std::string& line) {
    std::printf("try\t%s\n", line.c_str());
    std::fflush(stdout);
  });
  if (!found) {
    std::fprintf(stderr, "No radio answered on %s.\n", port->c_str());
    return 1;
  }
  std::printf("found\t%s\t%s\n", found->model.c_str(),
              found->report.empty() ? found->identity.c_str() : found->report.c_str());
  std::printf("preset\t%s\n", IdentifiedPreset(*found, *port).c_str());
  return 0;
}

}  // namespace tavlorin::cli
