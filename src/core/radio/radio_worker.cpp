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
  {
    std::lock_guard lock(mutex_);
    queue_.Add(std::move(stop), false);
    // A read in progress gives up at its next check instead of running to its time-out.
    if (working_ != nullptr) {
      working_->abort = true;
    }
  }
  wake_.notify_one();
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
      working_ = request->radio;
    }
    const bool goOn = Execute(std::move(request), remaining);
    {
      std::lock_guard lock(mutex_);
      running_ = false;
      working_ = nullptr;
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
  // A user's action clears the abort flag that a close or a newer action raised. This is
  // decided on the request as queued: a flag left raised would make every later read give up.
  const bool userAction = RequestQueue::IsUserAction(request->code);
  if (userAction) {
    radio.abort = false;
  }
  // While the radio reports data it sent unasked, the panel catches up with the knob first:
  // the request becomes a frequency read. A user's action is then carried out right after that
  // read rather than dropped, and is never turned into a read twice (a radio that broadcasts
  // all the time would otherwise hold it off for ever). A close is never turned into a read:
  // the window waits for its result to go away.
  if (radio.unsolicitedData.exchange(false) && request->code != kClose) {
    RadioRequest read;
    read.code = kReadFrequency;
    read.target = request->target;
    read.radio = request->radio;
    read.modelName = request->modelName;
    Run(read, remaining);
    if (!userAction) {
      return true;
    }
    radio.abort = false;
  }
  Run(*request, remaining);
  return true;
}

void RadioWorker::Run(const RadioRequest& request, int remaining) {
  auto result = std::make_unique<RadioResult>();
  result->code = request.code == kSetDropdownByCommand ? kReadDropdowns : request.code;
  try {
    RadioRequestHandler::Run(request, *result);
  } catch (...) {
    DebugLog::Write("Radio worker: request %u failed", request.code);
    return;
  }
  if (auto target = request.target.lock()) {
    target->PostRadioData(remaining, std::move(result));
  }
}

}  // namespace tavlorin
