// CurlEasy: one libcurl easy handle with the settings every transfer of the program shares, for
// the spot lists, the spot submission, the cluster status record and the web page upload.
//
// The library is initialised once per process on first use. Each transfer is bounded: a
// connection must open within 15 s, and a transfer that moves less than one byte a second for
// 30 s is given up, so a silent server never hangs a worker. An abort flag, when set, lets the
// owner stop a transfer from another thread (Perform then fails with "Transfer aborted").
//
// Thread: one thread at a time per handle (libcurl's rule); handles on different threads are
// independent. Never use one on a window's thread: Perform blocks until the transfer ends.
#pragma once

#include <curl/curl.h>

#include <atomic>
#include <string>

#include "shell/status.h"

namespace tavlorin {

class CurlEasy {
 public:
  CurlEasy();
  ~CurlEasy();
  CurlEasy(const CurlEasy&) = delete;
  CurlEasy& operator=(const CurlEasy&) = delete;

  // nullptr when libcurl could not make a handle (out of memory).
  CURL* get() const { return handle_; }

  // Perform fails with "Transfer aborted" as soon as *abort turns true. The flag must outlive
  // every Perform made while it is set.
  void SetAbortFlag(const std::atomic<bool>* abort) { abort_ = abort; }

  // Runs the transfer set up on get(). Ok, or the library's error text (its detailed message
  // when it gave one, else the text of its error code).
  Status Perform();

  // The last reply code of the server (HTTP status, FTP reply); 0 when none came.
  long ResponseCode() const;

 private:
  static int OnProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t);

  CURL* handle_ = nullptr;
  const std::atomic<bool>* abort_ = nullptr;
  char error_[CURL_ERROR_SIZE] = {};
};

}  // namespace tavlorin
