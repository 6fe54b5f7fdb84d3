// RadioWorker: the one background thread that runs every radio operation of every radio
// window, in the order the RequestQueue rules give.
//
// Windows queue requests (Queue, from any thread); the worker takes the front request, runs
// it (RadioRequestHandler for 1000-1019, the request's job for 1-8) and posts a result to the
// request's target, with the number of requests still waiting. Code 9 stops it. A result
// whose window is gone is freed; an exception in a handler frees the result and posts nothing.
//
// Thread-safe: one mutex guards the queue; a condition variable wakes the worker. Owned by the
// application; it must outlive the radio windows that queue to it. Stop (or the destructor)
// joins the thread.
#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "radio/request_queue.h"

namespace tavlorin {

class RadioWorker {
 public:
  RadioWorker() = default;
  ~RadioWorker();
  RadioWorker(const RadioWorker&) = delete;
  RadioWorker& operator=(const RadioWorker&) = delete;

  // Starts the thread. Without it, RunOne runs requests on the caller's thread (tests).
  void Start();
  // Queues the stop code at the front and waits for the thread to end.
  void Stop();

  void Queue(std::unique_ptr<RadioRequest> request, bool atFront = false);
  size_t Pending() const;
  std::vector<uint32_t> PendingCodes() const;
  // True while the queue is empty and no request is running.
  bool Idle() const;

  // Takes and runs the front request on the calling thread; false when none was waiting.
  // REQUIRES: the thread was not started.
  bool RunOne();

 private:
  void Loop();
  // Runs one request; false when it was the stop code.
  bool Execute(std::unique_ptr<RadioRequest> request, int remaining);
  // Runs a radio request through the handler and posts its result to the request's window.
  static void Run(const RadioRequest& request, int remaining);

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  RequestQueue queue_;
  bool running_ = false;         // a request is being run
  CatRadio* working_ = nullptr;  // the radio of the request being run, for Stop's abort
  std::thread thread_;
};

}  // namespace tavlorin
