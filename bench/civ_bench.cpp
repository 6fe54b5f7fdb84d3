// ICOM frequency reads per second over a pseudo-terminal against the simulated radio, with and
// without the echo of a CI-V bus, beside what the wire itself allows at 19 200 bit/s.
//
// The pseudo-terminal moves bytes at memory speed, so the measured rate is the cost of the
// program's side (link, frame assembly, transaction rules) plus the simulator's turn-around;
// the wire limit counter is the ceiling a real 19 200 bit/s line sets on the same exchange
// (each byte 10 bits on the wire: start, eight data bits, stop).
#include <benchmark/benchmark.h>

#include <memory>

#include "radio/cat_radio.h"
#include "support/sim_icom.h"

namespace {

using tavlorin::CatRadio;
using tavlorin::ConnectParams;
using tavlorin::Frequency;
using tavlorin::testing::PtyRadio;
using tavlorin::testing::SimIcom;
using tavlorin::testing::SimIcomOptions;

constexpr double kBitsPerSecond = 19200;
constexpr double kBitsPerByte = 10;
constexpr double kRequestBytes = 6;  // FE FE 5C E0 03 FD
constexpr double kReplyBytes = 11;   // FE FE E0 5C 03 f0 f1 f2 f3 f4 FD

void BM_CivFrequencyRead(benchmark::State& state) {
  const bool echo = state.range(0) != 0;
  SimIcomOptions options;
  options.echo = echo;
  SimIcom sim(options);
  PtyRadio pty(sim);
  CatRadio radio;
  ConnectParams p;
  p.company = tavlorin::kIcom;
  p.model = "IC-756Pro";
  p.port = pty.path();
  p.speed = "19200";
  p.civAddress = "5C";
  std::string id, message;
  if (!pty.ok() || radio.Connect(p, &id, &message) == 0) {
    state.SkipWithError(("connect failed: " + message).c_str());
    return;
  }
  int64_t failures = 0;
  for (auto _ : state) {
    Frequency hz = 0;
    radio.ReadFrequency(0, &hz);
    failures += hz != 14070000u;
    benchmark::DoNotOptimize(hz);
  }
  // On a bus the echo is the request itself seen by everyone: it costs no extra wire time.
  const double wireBytes = kRequestBytes + kReplyBytes;
  state.counters["reads_per_s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  state.counters["frame_bytes"] = wireBytes;
  state.counters["wire_limit_reads_per_s_19200"] = kBitsPerSecond / (wireBytes * kBitsPerByte);
  state.counters["failed_reads"] = static_cast<double>(failures);
  state.SetLabel(echo ? "bus with echo" : "USB without echo");
}
BENCHMARK(BM_CivFrequencyRead)->Arg(0)->Arg(1)->UseRealTime()->MinTime(2.0);

}  // namespace

BENCHMARK_MAIN();
