// tavlorin-cli emulate: connect a radio (real or demonstration) and serve it on an emulated
// port that speaks Kenwood commands, so a logger or digital-mode program can drive it.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>

#include "commands.h"
#include "link/emul_com_port_thread.h"
#include "radio/emulation/radio_emulation.h"
#include "radio/headless_radio_window.h"
#include "radio/radio_worker.h"
#include "radio_options.h"
#include "shell/settings.h"
#include "stop_signal.h"

namespace tavlorin::cli {
namespace {

constexpr std::chrono::seconds kFirstPollLimit{10};

const char* const kUsage =
    "Usage: tavlorin-cli emulate --model M [--port P --speed N ...] (--device DEV | --pty "
    "[--link PATH])\n\n"
    "Connects the radio and serves it as a Kenwood-command radio (a TS-2000 to the program on\n"
    "the other side) until Ctrl-C. The first output line is the device the program opens;\n"
    "then one line per change of frequency or mode.\n\n"
    "  --device DEV     serve this serial device (57600,n,8,1), for a null-modem cable or a\n"
    "                   virtual serial pair\n"
    "  --pty            create a pseudo-terminal and serve it\n"
    "  --link PATH      with --pty: a symbolic link to it at PATH, removed at the end\n\n"
    "Radio options:\n";

struct EmulateOptions {
  std::string device;
  bool pty = false;
  std::string link;
};

bool ReadEmulateOptions(ArgReader& args, EmulateOptions* o, std::string* error) {
  o->device = args.Option("--device").value_or("");
  o->pty = args.Flag("--pty");
  o->link = args.Option("--link").value_or("");
  if (o->pty == !o->device.empty()) {
    *error = "give either --device DEV or --pty";
    return false;
  }
  if (!o->link.empty() && !o->pty) {
    *error = "--link goes with --pty";
    return false;
  }
  return true;
}

// Prints a line per change of frequency or mode, once the served path has been printed.
class ChangePrinter {
 public:
  void Frequency(tavlorin::Frequency hz) {
    if (hz != hz_) {
      hz_ = hz;
      Print();
    }
  }
  void Mode(int mode) {
    if (mode != mode_) {
      mode_ = mode;
      Print();
    }
  }
  void StartPrinting() {
    printing_ = true;
    Print();
  }

 private:
  void Print() {
    if (printing_) {
      std::printf("%u %s mode %d\n", hz_, FormatFrequency(hz_).c_str(), mode_);
      std::fflush(stdout);
    }
  }
  tavlorin::Frequency hz_ = 0;
  int mode_ = -1;
  bool printing_ = false;
};

// Runs the window until it knows the frequency and mode (bounded), so that a program reading
// the port at once never sees frequency 0. False when the user or a lost port ended it first.
bool WaitForFirstPoll(EventLoop& loop, CRadioView& view, const std::string& lostReason) {
  const auto readyBy = std::chrono::steady_clock::now() + kFirstPollLimit;
  while (!StopRequested() && lostReason.empty() && std::chrono::steady_clock::now() < readyBy &&
         (view.currentFrequency() == 0 || view.mode() < 0)) {
    loop.Run(std::chrono::milliseconds(20));
  }
  return !StopRequested() && lostReason.empty();
}

// Serves the port from the window's state until Ctrl-C or the radio's port is lost.
int ServePort(EventLoop& loop, RadioEmulation& answers, const EmulateOptions& options,
              ChangePrinter& printer) {
  CEmulComPortThread port(
      {1, options.device, options.link},
      [&loop](std::function<void()> call) { loop.Post(std::move(call)); },
      [&answers](int, const std::string& command) { return answers.Answer(command); });
  std::string message;
  if (!port.Start(&message)) {
    std::fprintf(stderr, "%s\n", message.c_str());
    return 1;
  }
  std::printf("%s\n", port.path().c_str());
  if (!options.link.empty()) {
    std::printf("link %s\n", options.link.c_str());
  }
  printer.StartPrinting();
  loop.Run(std::chrono::milliseconds::max(), &StopRequested());
  port.Stop();
  return 0;
}

// Polls the radio through the worker and the window logic, and serves the port from it.
int Serve(CatRadio& radio, const EmulateOptions& options) {
  EventLoop loop;
  RadioWorker worker;
  worker.Start();
  RadioEmulation* emulation = nullptr;
  std::string lostReason;
  ChangePrinter printer;
  HeadlessRadioWindow::Callbacks callbacks;
  callbacks.frequency = [&](Frequency current, Frequency, Frequency) {
    printer.Frequency(current);
  };
  callbacks.mode = [&](int mode) { printer.Mode(mode); };
  callbacks.sMeter = [&](int reading) {
    if (emulation != nullptr) {
      emulation->NoteSMeter(reading);
    }
  };
  callbacks.linkLost = [&](const std::string& reason) {
    lostReason = reason;
    loop.Quit();
  };
  RadioViewOptions viewOptions = RadioViewOptions::FromSettings(Settings::Default());
  viewOptions.trackDualFast = true;  // the other program may ask for VFO B at any time
  int result = 0;
  {
    HeadlessRadioWindow window(radio, worker, loop, viewOptions, callbacks);
    window.view().SetDualTracking(true);
    RadioEmulation answers(window.view(), radio.manufacturer);
    emulation = &answers;
    window.Start();
    if (WaitForFirstPoll(loop, window.view(), lostReason)) {
      result = ServePort(loop, answers, options, printer);
    }
    emulation = nullptr;
    window.CloseAndWait(std::chrono::seconds(5));
  }
  worker.Stop();
  if (!lostReason.empty()) {
    std::fprintf(stderr, "Lost the radio's port: %s\n", lostReason.c_str());
    return 1;
  }
  return result;
}

}  // namespace

int RunEmulateCommand(const Globals&, const Args& words) {
  ArgReader args(words);
  if (args.Flag("--help") || args.Flag("-h")) {
    std::printf("%s%s", kUsage, kRadioOptionsHelp);
    return 0;
  }
  EmulateOptions options;
  ConnectParams params;
  std::string error;
  if (!ReadEmulateOptions(args, &options, &error) || !ReadRadioOptions(args, &params, &error)) {
    std::fprintf(stderr, "tavlorin-cli emulate: %s\n", error.c_str());
    return 2;
  }
  if (std::string finish = args.Finish(); !finish.empty() || !args.Positionals().empty()) {
    std::fprintf(stderr, "tavlorin-cli emulate: %s\n\n%s%s",
                 finish.empty() ? "unexpected words" : finish.c_str(), kUsage, kRadioOptionsHelp);
    return 2;
  }
  StopOnSignals();
  CatRadio radio;
  if (!ConnectRadio(radio, params, true)) {
    return 1;
  }
  const int result = Serve(radio, options);
  radio.Disconnect();
  return result;
}

}  // namespace tavlorin::cli
