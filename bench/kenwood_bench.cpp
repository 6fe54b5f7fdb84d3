// Kenwood frequency reads: how many per second the driver manages through a real
// pseudo-terminal against the simulated radio, beside the most the serial wire itself allows
// for the same exchange ("FA;" out, "FA00014070000;" back) at 4800 and 57600 bit/s.
#include <benchmark/benchmark.h>

#include "link/line_settings.h"
#include "radio/cat_radio.h"
#include "radio/kenwood/kenwood_codec.h"
#include "shell/debug_log.h"
#include "support/pty_radio.h"
#include "support/sim_kenwood.h"

namespace tavlorin {
namespace {

void BM_KenwoodFrequencyReadOverPty(benchmark::State& state) {
  testing::SimKenwood sim;
  testing::PtyRadio pty(sim);
  CatRadio radio;
  ConnectParams params;
  params.company = kKenwood;
  params.model = "TS-2000";
  params.port = pty.path();
  params.speed = "57600";
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
    failed += hz == 14070000 ? 0 : 1;
  }
  state.counters["reads_per_s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  state.counters["failed"] = static_cast<double>(failed);
}
BENCHMARK(BM_KenwoodFrequencyReadOverPty)->UseRealTime()->MinTime(2.0);

// The wire's own limit: every character costs a start bit, eight data bits and the family's
// stop bits (two for Kenwood at 4800 bit/s, one above), and nothing else is on the line.
void BM_KenwoodWireLimit(benchmark::State& state) {
  const int speed = static_cast<int>(state.range(0));
  const LineSettings line =
      FamilyLineSettings(kKenwood, std::to_string(speed), false, false, false, 500);
  const size_t bytes =
      kenwood::TerminatedCommand("FA").size() + kenwood::FrequencyCommand("FA", 14070000).size();
  const int bitsPerCharacter = 1 + 8 + line.stopBits;
  double exchangesPerSecond = 0;
  for (auto _ : state) {
    exchangesPerSecond = static_cast<double>(speed) /
                         static_cast<double>(bytes * static_cast<size_t>(bitsPerCharacter));
    benchmark::DoNotOptimize(exchangesPerSecond);
  }
  state.counters["bytes"] = static_cast<double>(bytes);
  state.counters["bits_per_char"] = bitsPerCharacter;
  state.counters["reads_per_s"] = exchangesPerSecond;
}
BENCHMARK(BM_KenwoodWireLimit)->Arg(4800)->Arg(57600)->Iterations(1);

// The codec alone: judging and reading one frequency reply.
void BM_KenwoodFrequencyReplyCodec(benchmark::State& state) {
  const std::string reply = "FA00014070000;";
  for (auto _ : state) {
    bool ok = kenwood::JudgeKenwoodReply(reply, "FA") == kenwood::KenwoodReplyVerdict::kEndSearch;
    benchmark::DoNotOptimize(ok);
    benchmark::DoNotOptimize(kenwood::ParseValue(kenwood::ReplyValue(reply, "FA")));
  }
}
BENCHMARK(BM_KenwoodFrequencyReplyCodec);

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
