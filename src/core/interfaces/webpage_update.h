// CWebPageUpdate: the web page update without its dialog. It builds the page from the template
// and the radio window's latest values and uploads it, on demand ("Test FTP") or every
// m_nUpdateMinutes while automatic updates are on; "Preview" builds without uploading.
//
// All work runs on the updater's own thread, so a window never waits on FTP or the disk. The
// radio window pushes its current values with SetValues; each update uses the latest. A failed
// upload changes no setting; the next automatic update tries again.
//
// Thread: any thread may call the members; the callbacks are called on the updater's thread
// (post them on to a window). The destructor stops the timer and aborts an upload under way.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <mutex>

#include "interfaces/webpage_builder.h"
#include "interfaces/webpage_settings.h"
#include "interfaces/webpage_upload.h"
#include "shell/loop_thread.h"

namespace tavlorin {

class CWebPageUpdate {
 public:
  struct Callbacks {
    UploadLog log;                                // each line of the upload log
    std::function<void(const Status&)> finished;  // after each update
  };

  // `folder` receives the built page and its "_check" copy (the program's data folder).
  // `minute` is the unit of m_nUpdateMinutes (shorter in tests).
  CWebPageUpdate(Callbacks callbacks, std::filesystem::path folder, UploadOptions options = {},
                 std::chrono::milliseconds minute = std::chrono::minutes(1));
  ~CWebPageUpdate() { abort_ = true; }

  // New settings; automatic updates start (or stop) as config.autoOn says.
  void Configure(WebPageConfig config);
  void SetValues(WebPageValues values);
  // "Test FTP": builds and uploads now.
  void UpdateNow();
  // "Preview": builds the page; `done` gets the page's path or why not.
  void Preview(std::function<void(const Status&, const std::filesystem::path&)> done);

  // One whole update on the calling thread: build, then upload; the build's error is logged too.
  static Status Update(const WebPageConfig& config, const WebPageValues& values,
                       const std::filesystem::path& folder, const UploadLog& log,
                       const UploadOptions& options);

 private:
  void RunUpdate();

  const Callbacks callbacks_;
  const std::filesystem::path folder_;
  UploadOptions options_;
  const std::chrono::milliseconds minute_;
  std::mutex mutex_;
  WebPageConfig config_;
  WebPageValues values_;
  std::atomic<bool> abort_{false};
  LoopThread worker_;  // last: stopped while the members above still live
};

}  // namespace tavlorin
