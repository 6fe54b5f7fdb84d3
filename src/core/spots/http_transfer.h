// HTTP GET and POST for the spot lists, the spot submission and the cluster status record,
// over libcurl.
//
// Both block until the transfer ends (bounded by CurlEasy's time-outs): call them on a worker
// thread, never on a window's thread. `abort`, when given, stops a transfer from another thread.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <string_view>

#include "shell/status.h"

namespace tavlorin {

struct HttpReply {
  long status = 0;  // the HTTP status code; 0 when no reply came
  std::string body;
};

// GET `url`, following redirects. A status other than 2xx fails with "HTTP status N from URL";
// the reply is filled either way.
Status HttpGet(const std::string& url, HttpReply* reply, const std::atomic<bool>* abort = nullptr);

// POST `body` with the given content type. Ok whenever a reply came, whatever its status (the
// caller judges it); the library's error text when none came. `onPiece` sees the reply as it
// arrives, in pieces of at most 1024 bytes.
Status HttpPost(const std::string& url, std::string_view contentType, std::string_view body,
                HttpReply* reply, const std::function<void(std::string_view)>& onPiece = {},
                const std::atomic<bool>* abort = nullptr);

}  // namespace tavlorin
