// tavlorin-cli radios: the models the program knows, by company, with the speeds it offers.
#include <cstdio>

#include "args.h"
#include "commands.h"
#include "link/manufacturer.h"
#include "radio/radio_models.h"

namespace tavlorin::cli {

int RunRadiosCommand(const Globals&, const Args& words) {
  ArgReader args(words);
  if (args.Flag("--help") || args.Flag("-h")) {
    std::printf(
        "Usage: tavlorin-cli radios [--company NAME]\n"
        "Lists the radio models: company, model (with the command set it borrows), default\n"
        "speed, the speeds offered and, for ICOM radios, the default CI-V address.\n");
    return 0;
  }
  const auto company = args.Option("--company");
  if (std::string error = args.Finish(); !error.empty()) {
    std::fprintf(stderr, "tavlorin-cli radios: %s\n", error.c_str());
    return 2;
  }
  int listed = 0;
  for (const Company& c : kCompanies) {
    if (company && c.name != *company) {
      continue;
    }
    for (const RadioModel* m : RadioModelsOfCompany(c.name)) {
      std::string speeds;
      for (const std::string& s : m->speeds) {
        speeds += (speeds.empty() ? "" : ",") + s;
      }
      std::printf("%s\t%s\t%s\t%s\t%s\n", m->company.c_str(), RadioCaption(*m).c_str(),
                  m->defaultSpeed.c_str(), speeds.c_str(), m->civAddress.c_str());
      ++listed;
    }
  }
  if (listed == 0) {
    std::fprintf(stderr, "tavlorin-cli radios: no models%s%s\n",
                 company ? " for company " : " (the radio definitions file was not found)",
                 company ? company->c_str() : "");
    return 1;
  }
  return 0;
}

}  // namespace tavlorin::cli
