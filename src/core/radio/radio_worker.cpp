#include "radio/radio_worker.h"

#include "radio/cat_radio.h"
#include "radio/radio_request_handler.h"
#include "shell/debug_log.h"

namespace tavlorin {

RadioWorker::~RadioWorker() { Stop(); }

void RadioWorker::Start() {
  if (!thread_.joinable()) {
    thread_ = std::thread([this] { Loop(); });
  }
}

void RadioWorker::Stop() {
  if (!thread_.joinable()) {
    return;
  }
  auto stop = std::make_unique<RadioRequest>();
  stop->code = kStopWorker;
  Queue(std::move(stop));
  thread_.join();
}

void RadioWorker::Queue(std::unique_ptr<RadioRequest> request, bool atFront) {
  {
    std::lock_guard lock(mutex_);
    queue_.Add(std::move(request), atFront);
  }
  wake_.notify_one();
}

size_t RadioWorker::Pending() const {
  std::lock_guard lock(mutex_);
  return queue_.size();
}

std::vector<uint32_t> RadioWorker::PendingCodes() const {
  std::lock_guard lock(mutex_);
  return queue_.Codes();
}

bool RadioWorker::Idle() const {
  std::lock_guard lock(mutex_);
  return queue_.empty() && !running_;
}

bool RadioWorker::RunOne() {
  std::unique_ptr<RadioRequest> request;
  int remaining = 0;
  {
    std::lock_guard lock(mutex_);
    request = queue_.TakeFront();
    remaining = int(queue_.size());
  }
  if (!request) {
    return false;
  }
  Execute(std::move(request), remaining);
  return true;
}

void RadioWorker::Loop() {
  for (;;) {
    std::unique_ptr<RadioRequest> request;
    int remaining = 0;
    {
      std::unique_lock lock(mutex_);
      wake_.wait(lock, [this] { return !queue_.empty(); });
      request = queue_.TakeFront();
      remaining = int(queue_.size());
      running_ = true;
    }
    const bool goOn = Execute(std::move(request), remaining);
    {
      std::lock_guard lock(mutex_);
      running_ = false;
    }
    if (!goOn) {
      return;
    }
  }
}

bool RadioWorker::Execute(std::unique_ptr<RadioRequest> request, int remaining) {
  if (request->code == kStopWorker) {
    return false;
  }
  if (request->code >= kJobFirst && request->code <= kJobLast) {
    try {
      if (request->job) {
        request->job();
      }
    } catch (...) {
      DebugLog::Write("Radio worker: job %u failed", request->code);
    }
    return true;
  }
  if (request->radio == nullptr || request->code < kReadFrequency || request->code > kSendTester) {
    return true;
  }
  CatRadio& radio = *request->radio;
  // While the radio reports data it sent unasked, every request becomes a frequency read, so
  // the panel catches up with the knob first. A close is never turned into a read: the window
  // waits for its result to go away.
  if (radio.unsolicitedData.exchange(false) && request->code != kClose) {
    request->code = kReadFrequency;
    request->value1 = 0;
  }
  if (RequestQueue::IsUserAction(request->code)) {
    radio.abort = false;
  }
  auto result = std::make_unique<RadioResult>();
  result->code = request->code == kSetDropdownByCommand ? kReadDropdowns : request->code;
  try {
    RadioRequestHandler::Run(*request, *result);
  } catch (...) {
    DebugLog::Write("Radio worker: request %u failed", request->code);
    return true;
  }
  if (auto target = request->target.lock()) {
    target->PostRadioData(remaining, std::move(result));
  }
  return true;
}

}  // namespace tavlorin
