#include "radio/radio_worker.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include "radio/cat_radio.h"

namespace tavlorin {
namespace {

using std::chrono::seconds;

// Collects what the worker posts, from any thread.
class Collector final : public RadioResultTarget {
 public:
  void PostRadioData(int pending, std::unique_ptr<RadioResult> result) override {
    std::lock_guard lock(mutex_);
    pendings.push_back(pending);
    codes.push_back(result->code);
    results.push_back(std::move(result));
    cv_.notify_all();
  }
  void PostUnsolicitedFrequency(Frequency hz) override {
    std::lock_guard lock(mutex_);
    unsolicited.push_back(hz);
  }
  bool WaitFor(size_t count) {
    std::unique_lock lock(mutex_);
    return cv_.wait_for(lock, seconds(20), [&] { return codes.size() >= count; });
  }

  std::vector<int> pendings;
  std::vector<uint32_t> codes;
  std::vector<std::unique_ptr<RadioResult>> results;
  std::vector<Frequency> unsolicited;

 private:
  std::mutex mutex_;
  std::condition_variable cv_;
};

class RadioWorkerTest : public ::testing::Test {
 protected:
  std::unique_ptr<RadioRequest> Request(uint32_t code, uint32_t value = 0) {
    auto r = std::make_unique<RadioRequest>();
    r->code = code;
    r->radio = &radio_;
    r->target = target_;
    r->value1 = value;
    return r;
  }

  CatRadio radio_;  // no family: every operation answers its default
  std::shared_ptr<Collector> target_ = std::make_shared<Collector>();
  RadioWorker worker_;
};

TEST_F(RadioWorkerTest, ResultsCarryTheCountStillWaiting) {
  worker_.Queue(Request(1000));
  worker_.Queue(Request(1003));
  worker_.Queue(Request(1004));
  while (worker_.RunOne()) {
  }
  EXPECT_EQ(target_->codes, (std::vector<uint32_t>{1000, 1003, 1004}));
  EXPECT_EQ(target_->pendings, (std::vector<int>{2, 1, 0}));
}

TEST_F(RadioWorkerTest, SetDropdownByCommandIsReportedAsADropdownRead) {
  worker_.Queue(Request(1015));
  worker_.RunOne();
  EXPECT_EQ(target_->codes, (std::vector<uint32_t>{1003}));
}

TEST_F(RadioWorkerTest, UnsolicitedDataTurnsTheNextRequestIntoAFrequencyRead) {
  radio_.unsolicitedData = true;
  worker_.Queue(Request(1004));
  worker_.Queue(Request(1003));
  worker_.RunOne();
  worker_.RunOne();
  EXPECT_EQ(target_->codes, (std::vector<uint32_t>{1000, 1003}));
  EXPECT_FALSE(radio_.unsolicitedData);
}

TEST_F(RadioWorkerTest, ACloseIsNeverTurnedIntoARead) {
  radio_.unsolicitedData = true;
  worker_.Queue(Request(1017));
  worker_.RunOne();
  EXPECT_EQ(target_->codes, (std::vector<uint32_t>{1017}));
}

TEST_F(RadioWorkerTest, TheWorkerClearsTheAbortFlagBeforeAUserAction) {
  worker_.Queue(Request(1011, 7000000));
  EXPECT_TRUE(radio_.abort);
  worker_.RunOne();
  EXPECT_FALSE(radio_.abort);
}

TEST_F(RadioWorkerTest, AResultForAClosedWindowIsDropped) {
  worker_.Queue(Request(1000));
  target_.reset();  // the window is gone before the worker gets to its request
  EXPECT_TRUE(worker_.RunOne());
  EXPECT_TRUE(worker_.Idle());
}

TEST_F(RadioWorkerTest, JobsRunOnTheWorkerAndAFailingJobDoesNotStopIt) {
  int ran = 0;
  auto failing = Request(5);
  failing->job = [] { throw std::runtime_error("network down"); };
  auto counting = Request(7);
  counting->job = [&] { ++ran; };
  worker_.Queue(std::move(failing));
  worker_.Queue(std::move(counting));
  worker_.Queue(Request(1000));
  while (worker_.RunOne()) {
  }
  EXPECT_EQ(ran, 1);
  EXPECT_EQ(target_->codes, (std::vector<uint32_t>{1000})) << "jobs post no radio result";
}

TEST_F(RadioWorkerTest, TheThreadServesRequestsAndStopsOnItsCode) {
  worker_.Start();
  for (int i = 0; i < 3; ++i) {
    worker_.Queue(Request(1000));
    ASSERT_TRUE(target_->WaitFor(size_t(i) + 1));
  }
  worker_.Stop();
  EXPECT_EQ(target_->codes.size(), 3u);
  EXPECT_TRUE(worker_.Idle());
}

}  // namespace
}  // namespace tavlorin
