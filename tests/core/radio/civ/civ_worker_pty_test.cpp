// The radio worker in front of an ICOM radio with transceive on: a user's setting queued while
// the radio broadcasts must reach the radio, and polling must go on afterwards.
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include "radio/cat_radio.h"
#include "radio/radio_worker.h"
#include "support/sim_icom.h"

namespace tavlorin {
namespace {

using testing::PtyRadio;
using testing::SimIcom;
using testing::SimIcomOptions;

class Results final : public RadioResultTarget {
 public:
  void PostRadioData(int, std::unique_ptr<RadioResult> result) override {
    std::lock_guard lock(mutex_);
    results_.push_back(std::move(result));
    cv_.notify_all();
  }
  void PostUnsolicitedFrequency(Frequency) override {}
  // The first result of `code` posted after `skip` results, or null after a generous wait.
  const RadioResult* WaitFor(uint32_t code, size_t skip = 0) {
    std::unique_lock lock(mutex_);
    const RadioResult* found = nullptr;
    cv_.wait_for(lock, std::chrono::seconds(30), [&] {
      for (size_t i = skip; i < results_.size(); ++i) {
        if (results_[i]->code == code) {
          found = results_[i].get();
          return true;
        }
      }
      return false;
    });
    return found;
  }
  size_t size() {
    std::lock_guard lock(mutex_);
    return results_.size();
  }

 private:
  std::mutex mutex_;
  std::condition_variable cv_;
  std::vector<std::unique_ptr<RadioResult>> results_;
};

TEST(CivWorkerPtyTest, ASettingQueuedDuringBroadcastsIsCarriedOutAndPollingGoesOn) {
  SimIcom sim(SimIcomOptions{.address = 0x5C, .broadcastsAfterReply = 2});
  PtyRadio pty(sim);
  CatRadio radio;
  ConnectParams p = testing::PtyParams(kIcom, "IC-756Pro", pty, "19200");
  p.civAddress = "5C";
  std::string id, message;
  ASSERT_EQ(radio.Connect(p, &id, &message), 1) << message;

  auto results = std::make_shared<Results>();
  RadioWorker worker;
  auto request = [&](uint32_t code, uint32_t value = 0) {
    auto r = std::make_unique<RadioRequest>();
    r->code = code;
    r->radio = &radio;
    r->target = results;
    r->modelName = "IC-756Pro";
    r->value1 = value;
    return r;
  };
  worker.Start();
  // The broadcasts after the connect's replies have marked the radio as sending unasked data;
  // make sure of it, then queue the user's retune while that mark is still set.
  radio.unsolicitedData = true;
  worker.Queue(request(kSetFrequency, 7060000));
  ASSERT_NE(results->WaitFor(kSetFrequency), nullptr) << "the setting was dropped";
  EXPECT_EQ(sim.frequency(), 7060000u);

  // The radio keeps broadcasting; later reads must still be answered, not given up.
  for (uint32_t hz : {3573000u, 10136000u}) {
    sim.SetFrequency(hz);
    const size_t before = results->size();
    worker.Queue(request(kReadFrequency));
    const RadioResult* read = results->WaitFor(kReadFrequency, before);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->frequencyCurrent, hz);
  }
  EXPECT_FALSE(radio.abort.load());
  worker.Stop();
}

}  // namespace
}  // namespace tavlorin
