#include "radio_options.h"

#include <cstdio>
#include <cstdlib>

#include "link/link_messages.h"
#include "link/manufacturer.h"
#include "radio/radio_models.h"
#include "radio/radio_settings.h"
#include "shell/settings.h"
#include "stop_signal.h"

namespace tavlorin::cli {

const char* const kRadioOptionsHelp =
    "  --model M        the radio model, as listed by the program (\"TS-2000\", \"IC-7300\",\n"
    "                   \"TS-2000: Demo\" for a demonstration radio that needs no port)\n"
    "  --company NAME   the company, when the model is not in the list (\"Kenwood\", \"ICOM\";\n"
    "                   \"Yaesu ASCII\" for a Yaesu that takes FA014074000;)\n"
    "  --port P         the serial device (/dev/ttyUSB0, /dev/serial/by-id/...)\n"
    "  --speed N        bit rate; default: the model's usual speed\n"
    "  --address HEX    ICOM CI-V address (\"94\" for an IC-7300); default: the model's\n"
    "  --cts            use CTS flow control (Kenwood, Ten-Tec, NRD-535)\n"
    "  --dtr, --rts     raise DTR / RTS (some interfaces take power from them)\n"
    "  --switch-on      switch the radio on while connecting (TS-480/570/870, FT-817, PCR-1000)\n";

namespace {

int CompanyCode(const std::string& name) {
  for (const Company& c : kCompanies) {
    if (c.name == name) {
      return c.code;
    }
  }
  if (name == "NRD-535" || name == "JRC") {
    return kNrd535;
  }
  if (name == "Yaesu ASCII") {  // "Yaesu" alone is the 5-byte family
    return kYaesuAscii;
  }
  return 0;
}

}  // namespace

bool ReadRadioOptions(ArgReader& args, ConnectParams* params, std::string* error) {
  auto model = args.Option("--model");
  auto company = args.Option("--company");
  auto port = args.Option("--port");
  auto speed = args.NumberOption("--speed", 300, 921600);
  auto address = args.Option("--address");
  params->cts = args.Flag("--cts");
  params->dtr = args.Flag("--dtr");
  params->rts = args.Flag("--rts");
  params->switchOn = args.Flag("--switch-on");
  if (!args.error().empty()) {
    *error = args.error();
    return false;
  }
  if (!model) {
    *error = "--model is required (for example --model \"TS-2000: Demo\")";
    return false;
  }
  params->model = *model;
  if (const RadioModel* m = FindRadioModel(*model)) {
    params->company = m->manufacturer;
    params->speed = m->defaultSpeed;
    params->civAddress = m->civAddress;
  } else if (!company) {
    *error = "Radio definition not found: \"" + *model + "\" (give --company to use it anyway)";
    return false;
  }
  if (company) {
    params->company = CompanyCode(*company);
    if (params->company == 0) {
      *error = "Unknown company \"" + *company + "\"";
      return false;
    }
  }
  if (speed) {
    params->speed = std::to_string(*speed);
  }
  if (params->speed.empty()) {
    params->speed = "9600";
  }
  if (address) {
    // Two hexadecimal digits; anything else would be read as 00, the broadcast address.
    const bool hex = !address->empty() && address->size() <= 2 &&
                     address->find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    if (!hex || std::strtoul(address->c_str(), nullptr, 16) == 0) {
      *error =
          "--address takes the radio's CI-V address in hexadecimal, 01 to FF (such as 94), "
          "not \"" +
          *address + "\"";
      return false;
    }
    params->civAddress = *address;
  }
  if (port) {
    params->port = *port;
  } else if (params->company != kDemonstration) {
    *error = "--port is required for a real radio (for example --port /dev/ttyUSB0)";
    return false;
  }
  return true;
}

bool ConnectRadio(CatRadio& radio, const ConnectParams& params, bool quiet) {
  radio.commsRxTimeoutMs = Settings::Default().Get(radio_settings::kCommsRxTimeout);
  radio.SetYesNoQuestion([](const std::string& title, const std::string& text) {
    std::fprintf(stderr, "%s\n%s\n(answered no: nothing is switched off from here)\n",
                 title.c_str(), text.c_str());
    return false;
  });
  std::string identification;
  std::string message;
  // Ctrl-C during a connect to a silent radio ends it at the next check, not after every retry.
  AbortOnSignals(&radio.abort);
  const int connected = radio.Connect(params, &identification, &message);
  AbortOnSignals(nullptr);
  if (connected != 0 && StopRequested()) {
    radio.Disconnect();
    return false;
  }
  if (connected == 0) {
    if (radio.link().deviceRefused()) {
      std::fprintf(stderr, "Cannot open port %s: %s\n", params.port.c_str(), message.c_str());
      const std::string advice = PortOpenAdvice(radio.link().openFailure(), params.port);
      if (!advice.empty()) {
        std::fprintf(stderr, "%s\n", advice.c_str());
      }
    } else {
      std::fprintf(stderr, "%s\n", message.c_str());
    }
    radio.Disconnect();
    return false;
  }
  if (!quiet) {
    std::fprintf(stderr, "%s\n", message.c_str());
  }
  // Which model answered: always worth saying when it is not the one the user named.
  const std::string connectedAs = ", connected as " + params.model;
  const std::string& report = radio.identityReport;
  if (!report.empty() && (!quiet || report != "found " + params.model + connectedAs)) {
    std::fprintf(stderr, "%s\n", report.c_str());
  }
  return true;
}

}  // namespace tavlorin::cli
