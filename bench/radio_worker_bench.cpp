// The radio worker and the poll cycle: how many requests the worker queues and serves per
// second, and what one poll cycle of a radio window costs in CPU against a demonstration radio
// (no port, so the figure is the program's own cost, not the link's).
#include <benchmark/benchmark.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "radio/cat_radio.h"
#include "radio/radio_view.h"
#include "radio/radio_worker.h"

namespace tavlorin {
namespace {

class CountingTarget final : public RadioResultTarget {
 public:
  void PostRadioData(int pending, std::unique_ptr<RadioResult>) override {
    ++served;
    if (pending == 0) {
      std::lock_guard lock(mutex);
      cv.notify_all();
    }
  }
  void PostUnsolicitedFrequency(Frequency) override {}

  std::atomic<int64_t> served{0};
  std::mutex mutex;
  std::condition_variable cv;
};

// Requests queued from this thread and served by the worker thread, with results posted back:
// the whole round of one poll request without any radio I/O.
void BM_WorkerQueueAndServe(benchmark::State& state) {
  CatRadio radio;  // no family: every operation returns at once
  RadioWorker worker;
  worker.Start();
  auto target = std::make_shared<CountingTarget>();
  const int batch = int(state.range(0));
  for (auto _ : state) {
    target->served = 0;
    for (int i = 0; i < batch; ++i) {
      auto r = std::make_unique<RadioRequest>();
      r->code = i % 2 == 0 ? kReadFrequency : kSetFrequency;  // both kinds: dedup and jump
      r->radio = &radio;
      r->target = target;
      r->value1 = 14000000u + uint32_t(i);
      worker.Queue(std::move(r));
    }
    // Polls of one kind merge in the queue, so fewer results than requests come back: wait
    // until the queue has run dry.
    std::unique_lock lock(target->mutex);
    while (!worker.Idle()) {
      target->cv.wait_for(lock, std::chrono::milliseconds(1));
    }
  }
  worker.Stop();
  state.counters["requests_queued_per_s"] =
      benchmark::Counter(double(state.iterations()) * batch, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_WorkerQueueAndServe)->Arg(1)->Arg(100)->UseRealTime();

class NullHost final : public RadioViewHost {
 public:
  void SetTimer(int, std::chrono::milliseconds) override {}
  void KillTimer(int) override {}
};

class InlineTarget final : public RadioResultTarget {
 public:
  void PostRadioData(int pending, std::unique_ptr<RadioResult> result) override {
    view->OnRadioData(pending, std::move(result));
  }
  void PostUnsolicitedFrequency(Frequency) override {}
  CRadioView* view = nullptr;
};

// One poll cycle of a radio window against a demonstration TS-2000: the timer, the requests
// it queues, the worker's driver calls and the handling of every result.
void BM_PollCycleDemonstrationRadio(benchmark::State& state) {
  CatRadio radio;
  ConnectParams params;
  params.company = kDemonstration;
  params.model = "TS-2000: Demo";
  std::string id;
  std::string message;
  if (radio.Connect(params, &id, &message) == 0) {
    state.SkipWithError(("demonstration radio did not connect: " + message).c_str());
    return;
  }
  RadioWorker worker;
  NullHost host;
  auto target = std::make_shared<InlineTarget>();
  CRadioView view(radio, worker, host, target, RadioViewOptions{});
  target->view = &view;
  view.SetDualTracking(true);
  view.OnTimer(kTimerSlowItems);
  int64_t requests = 0;
  for (auto _ : state) {
    view.OnTimer(kTimerRefresh);
    while (worker.RunOne()) {
      ++requests;
    }
  }
  state.counters["requests_per_cycle"] = double(requests) / double(state.iterations());
  state.counters["cycles_per_s"] =
      benchmark::Counter(double(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_PollCycleDemonstrationRadio);

}  // namespace
}  // namespace tavlorin

BENCHMARK_MAIN();
