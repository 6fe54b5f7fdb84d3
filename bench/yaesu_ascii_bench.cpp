// Yaesu ASCII frequency reads: how many per second the driver manages through a real
// pseudo-terminal against the simulated FT-991A, beside the most the wire allows for the same
// exchange ("FA;" out, "FA014074000;" back) at 4800 and 38400 bit/s.
#include <benchmark/benchmark.h>

#include "link/line_settings.h"
#include "radio/cat_radio.h"
#include "radio/yaesu_ascii/yaesu_ascii_codec.h"
#include "shell/debug_log.h"
#include "support/pty_radio.h"
#include "support/sim_yaesu_ascii.h"

namespace tavlorin {
namespace {

namespace ya = yaesu_ascii;

void BM_YaesuAsciiFrequencyReadOverPty(benchmark::State& state) {
  testing::SimYaesuAscii sim(testing::SimYaesuAscii::Model::kFt991A);
  testing::PtyRadio pty(sim);
  CatRadio radio;
  ConnectParams params;
  params.company = kYaesuAscii;
  params.model = "FT-991A";
  params.port = pty.path();
  params.speed = "38400";
  std::string id;
  std::string message;
  if (!pty.ok() || radio.Connect(params, &id, &message) == 0) {
    state.SkipWithError(("cannot connect to the simulated radio: " + message).c_str());
    return;
  }
  int64_t failed = 0;
  for (auto _ : state) {
    Frequency hz = 0;
    radio.ReadFrequency(0, &hz);
    failed += hz == 14074000 ? 0 : 1;
  }
  state.counters["reads_per_s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  state.counters["failed"] = static_cast<double>(failed);
}
BENCHMARK(BM_YaesuAsciiFrequencyReadOverPty)->UseRealTime()->MinTime(2.0);

// The wire's own limit: a start bit, eight data bits and one stop bit per character.
void BM_YaesuAsciiWireLimit(benchmark::State& state) {
  const int speed = static_cast<int>(state.range(0));
  const LineSettings line =
      FamilyLineSettings(kYaesuAscii, std::to_string(speed), false, false, false, 500);
  const size_t bytes = ya::TerminatedCommand("FA").size() +
                       ya::FrequencyCommand("FA", 14074000, ya::kDefaultFrequencyDigits).size();
  const int bitsPerCharacter = 1 + 8 + line.stopBits;
  double exchangesPerSecond = 0;
  for (auto _ : state) {
    exchangesPerSecond = static_cast<double>(speed) /
                         static_cast<double>(bytes * static_cast<size_t>(bitsPerCharacter));
    benchmark::DoNotOptimize(exchangesPerSecond);
  }
  state.counters["reads_per_s"] = exchangesPerSecond;
}
BENCHMARK(BM_YaesuAsciiWireLimit)->Arg(4800)->Arg(38400)->Iterations(1);

// The codec alone: judging one reply and reading its frequency.
void BM_YaesuAsciiFrequencyReplyCodec(benchmark::State& state) {
  const std::string reply = "FA014074000;";
  for (auto _ : state) {
    bool ok = ya::IsAnswer(reply, "FA");
    benchmark::DoNotOptimize(ok);
    benchmark::DoNotOptimize(ya::ParseFrequency(ya::ReplyValue(reply, "FA"), 9));
  }
}
BENCHMARK(BM_YaesuAsciiFrequencyReplyCodec);

}  // namespace
}  // namespace tavlorin

// The connection's diagnostic lines would go to the user's debug log: keep them out of it.
int main(int argc, char** argv) {
  tavlorin::DebugLog::SetFile({});
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
