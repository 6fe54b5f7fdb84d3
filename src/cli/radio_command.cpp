// tavlorin-cli radio: read and set a radio's frequency and mode, measure the link, and poll
// the radio through the real worker and refresh loop.
#include <sys/time.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "commands.h"
#include "radio/headless_radio_window.h"
#include "radio/radio_worker.h"
#include "radio_options.h"
#include "shell/settings.h"
#include "stop_signal.h"

namespace tavlorin::cli {
namespace {

const char* const kUsage =
    "Usage: tavlorin-cli radio --model M [--port P] [options] COMMAND\n\n"
    "Commands:\n"
    "  get-freq [--vfo N] [--repeat N]  read the frequency (hertz and display form); with\n"
    "                                  --repeat, read N times and print reads per second and\n"
    "                                  the mean round trip: a quick test of cable and speed\n"
    "  set-freq HZ [--vfo N]           set the frequency in hertz, then read it back\n"
    "  get-mode                        read the mode number\n"
    "  set-mode N                      set the mode number\n"
    "  poll [--seconds S]              poll the radio as the radio window does and print a\n"
    "                                  line per change: time, hertz, display form, mode\n"
    "                                  (until S seconds have passed or Ctrl-C)\n\n"
    "Options:\n";

std::string TimeStamp() {
  timeval now{};
  gettimeofday(&now, nullptr);
  tm local{};
  localtime_r(&now.tv_sec, &local);
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d.%03d", local.tm_hour, local.tm_min, local.tm_sec,
                int(now.tv_usec / 1000));
  return text;
}

int GetFrequency(CatRadio& radio, int vfo, long long repeat) {
  Frequency hz = 0;
  std::string text;
  if (repeat <= 1) {
    radio.ReadFrequency(vfo, &hz, &text);
    if (IsNoRadioFrequency(hz)) {
      std::fprintf(stderr, "Failed to read frequency\n");
      return 1;
    }
    std::printf("%u %s\n", hz, text.c_str());
    return 0;
  }
  long long failed = 0;
  long long done = 0;
  const auto start = std::chrono::steady_clock::now();
  for (; done < repeat && !StopRequested(); ++done) {
    hz = 0;
    radio.ReadFrequency(vfo, &hz, &text);
    if (IsNoRadioFrequency(hz)) {
      ++failed;
    }
  }
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  if (!IsNoRadioFrequency(hz)) {
    std::printf("%u %s\n", hz, text.c_str());
  }
  std::printf("%lld reads in %.3f s: %.1f reads/s, mean round trip %.2f ms, %lld failed\n", done,
              seconds, double(done) / seconds, seconds * 1000.0 / double(done), failed);
  return failed == done ? 1 : 0;
}

int SetFrequency(CatRadio& radio, int vfo, Frequency hz) {
  radio.SetFrequency(vfo, hz);
  return GetFrequency(radio, vfo, 1);
}

int SetMode(CatRadio& radio, uint8_t mode) {
  if (mode > radio.HighestMode()) {
    std::fprintf(stderr, "%s takes mode numbers from 0 to %u; %u cannot be sent to it\n",
                 radio.modelName.c_str(), unsigned(radio.HighestMode()), unsigned(mode));
    return 2;
  }
  if (radio.SetMode(mode) == 0) {
    std::fprintf(stderr, "Failed to set mode\n");
    return 1;
  }
  std::printf("%d\n", mode);
  return 0;
}

int Poll(CatRadio& radio, std::chrono::milliseconds limit) {
  EventLoop loop;
  RadioWorker worker;
  worker.Start();
  Frequency shownHz = 0;
  int shownMode = -1;
  std::string lostReason;
  auto print = [&] {
    std::printf("%s %u %s mode %d\n", TimeStamp().c_str(), shownHz,
                FormatFrequency(shownHz).c_str(), shownMode);
    std::fflush(stdout);
  };
  HeadlessRadioWindow::Callbacks callbacks;
  // The mode is read in the cycle after the first frequency: the first line waits for it, so
  // the radio's state is shown whole.
  callbacks.frequency = [&](Frequency current, Frequency, Frequency) {
    if (current != shownHz) {
      shownHz = current;
      if (shownMode >= 0) {
        print();
      }
    }
  };
  callbacks.mode = [&](int mode) {
    if (mode != shownMode) {
      shownMode = mode;
      print();
    }
  };
  callbacks.linkLost = [&](const std::string& reason) {
    lostReason = reason;
    loop.Quit();
  };
  {
    HeadlessRadioWindow window(radio, worker, loop,
                               RadioViewOptions::FromSettings(Settings::Default()), callbacks);
    window.Start();
    loop.Run(limit, &StopRequested());
    window.CloseAndWait(std::chrono::seconds(5));
  }
  worker.Stop();
  if (!lostReason.empty()) {
    std::fprintf(stderr, "Lost the radio's port: %s\n", lostReason.c_str());
    return 1;
  }
  return 0;
}

}  // namespace

int RunRadioCommand(const Globals&, const Args& words) {
  ArgReader args(words);
  if (args.Flag("--help") || args.Flag("-h")) {
    std::printf("%s%s", kUsage, kRadioOptionsHelp);
    return 0;
  }
  ConnectParams params;
  std::string error;
  const auto vfo = args.NumberOption("--vfo", 0, 2);
  const auto repeat = args.NumberOption("--repeat", 1, 1000000);
  const auto seconds = args.NumberOption("--seconds", 1, 31536000);
  if (!ReadRadioOptions(args, &params, &error)) {
    std::fprintf(stderr, "tavlorin-cli radio: %s\n", error.c_str());
    return 2;
  }
  std::vector<std::string> positionals = args.Positionals();
  if (std::string finish = args.Finish(); !finish.empty() || positionals.empty()) {
    std::fprintf(stderr, "tavlorin-cli radio: %s\n\n%s%s",
                 finish.empty() ? "a command is missing" : finish.c_str(), kUsage,
                 kRadioOptionsHelp);
    return 2;
  }
  const std::string command = positionals[0];
  const size_t wanted = command == "set-freq" || command == "set-mode" ? 2 : 1;
  if (positionals.size() != wanted ||
      (command != "get-freq" && command != "set-freq" && command != "get-mode" &&
       command != "set-mode" && command != "poll")) {
    std::fprintf(stderr, "tavlorin-cli radio: unknown command or wrong arguments: \"%s\"\n",
                 command.c_str());
    return 2;
  }
  // The value of a set command is checked before anything is sent to the radio.
  long long value = 0;
  if (command == "set-freq" || command == "set-mode") {
    const bool freq = command == "set-freq";
    auto number = ParseNumber(positionals[1], freq ? 1 : 0, freq ? kMaxTypedFrequency : 255);
    if (!number) {
      std::fprintf(
          stderr,
          freq ? "tavlorin-cli radio: set-freq takes hertz from 1 to %u, not \"%s\"\n"
               : "tavlorin-cli radio: set-mode takes a mode number from 0 to %u, not \"%s\"\n",
          freq ? kMaxTypedFrequency : 255u, positionals[1].c_str());
      return 2;
    }
    value = *number;
  }

  StopOnSignals();
  CatRadio radio;
  if (!ConnectRadio(radio, params, command != "poll")) {
    return 1;
  }
  int result = 0;
  if (command == "get-freq") {
    result = GetFrequency(radio, int(vfo.value_or(0)), repeat.value_or(1));
  } else if (command == "set-freq") {
    result = SetFrequency(radio, int(vfo.value_or(0)), Frequency(value));
  } else if (command == "get-mode") {
    std::printf("%d\n", radio.ReadMode());
  } else if (command == "set-mode") {
    result = SetMode(radio, uint8_t(value));
  } else {
    const auto limit =
        seconds ? std::chrono::milliseconds(*seconds * 1000) : std::chrono::milliseconds::max();
    result = Poll(radio, limit);
  }
  radio.Disconnect();
  return result;
}

}  // namespace tavlorin::cli
