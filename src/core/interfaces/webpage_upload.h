// Uploading the built web page: by FTP (log in, change directory, ASCII put, ASCII read-back
// into "<page>_check" compared with the page as text, one more try after 500 ms when they
// differ), or, for the host "local", by copying it into a directory without any FTP.
//
// Every step is written to `log` with the dialog's texts (">> Connecting to ...",
// ">> Copying to ...", ">> Checking upload", ">> OK", ...). The password never appears in it.
//
// Thread: a worker (it blocks on the network and the disk); `log` is called on that thread.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

#include "interfaces/webpage_settings.h"
#include "shell/clock.h"
#include "shell/status.h"

namespace tavlorin {

using UploadLog = std::function<void(const std::string& line)>;

struct UploadOptions {
  Clock* clock = &SystemClock();  // the wait before the second attempt
  std::chrono::milliseconds retryWait{500};
  int attempts = 2;  // of the put and its check
  const std::atomic<bool>* abort = nullptr;
};

// Uploads `built` as `remoteName` (the template's file name) to config's host and directory.
// Ok when the copy arrived (and, by FTP, read back equal); else why not.
Status UploadWebPage(const std::filesystem::path& built, const std::string& remoteName,
                     const WebPageConfig& config, const std::string& timestamp,
                     const UploadLog& log, const UploadOptions& options = {});

// True when both files hold the same text; "\r\n" and "\n" count as the same line end, since
// an ASCII transfer may change them.
bool SameText(const std::filesystem::path& a, const std::filesystem::path& b);

}  // namespace tavlorin
