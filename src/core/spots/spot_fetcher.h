// SpotFetcher: the DX cluster window's background fetcher. Each request runs on the fetcher's
// own thread: an HTTP GET for the web pages and the CSV files, a read of the local log file, or
// a copy of the spots a telnet cluster connection has collected.
//
// For each request `deliver` is called twice on the fetch thread: with kFetchUnderWay and an
// empty result when the work starts, and with kFetchFinished and the result when it ends. The
// window's side posts those calls on to its own thread. Requests are served one at a time, in
// order.
//
// Fetch and SetClusterBody may be called from any thread. The destructor aborts a transfer under
// way and joins the thread; nothing is delivered after it returns.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>

#include "shell/loop_thread.h"
#include "shell/status.h"
#include "spots/fetch_result.h"

namespace tavlorin {

// A log file bigger than this is read from its end: the newest spots are the last lines.
inline constexpr size_t kLogFileReadLimit = 16u << 20;

class SpotFetcher {
 public:
  using Deliver = std::function<void(int code, FetchResult result)>;

  explicit SpotFetcher(Deliver deliver) : deliver_(std::move(deliver)) {}
  ~SpotFetcher();

  // Where the telnet source's body comes from (the connection's SpotBody); empty: none.
  void SetClusterBody(std::function<std::string()> body);
  void Fetch(SpotRequest request);

 private:
  FetchResult Run(const SpotRequest& request);

  Deliver deliver_;
  std::mutex mutex_;
  std::function<std::string()> clusterBody_;
  std::atomic<bool> abort_{false};
  LoopThread worker_;  // last: stopped first, while the members above still live
};

// Reads the file's last `limit` bytes (from the start of a line) into *body; the message names
// the file and the system's reason when it cannot.
Status ReadSpotLogFile(const std::string& path, std::string* body,
                       size_t limit = kLogFileReadLimit);

}  // namespace tavlorin
