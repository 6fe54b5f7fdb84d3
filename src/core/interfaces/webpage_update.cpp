#include "interfaces/webpage_update.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace tavlorin {
namespace {

constexpr int kAutoUpdateTimer = 1;

}  // namespace

CWebPageUpdate::CWebPageUpdate(Callbacks callbacks, std::filesystem::path folder,
                               UploadOptions options, std::chrono::milliseconds minute)
    : callbacks_(std::move(callbacks)),
      folder_(std::move(folder)),
      options_(options),
      minute_(minute) {
  options_.abort = &abort_;
}

void CWebPageUpdate::Configure(WebPageConfig config) {
  const bool on = config.autoOn;
  const int minutes = std::max(config.updateMinutes, 1);
  {
    std::lock_guard lock(mutex_);
    config_ = std::move(config);
  }
  worker_.SetPeriodic(kAutoUpdateTimer, on, minute_ * minutes, [this] { RunUpdate(); });
}

void CWebPageUpdate::SetValues(WebPageValues values) {
  std::lock_guard lock(mutex_);
  values_ = std::move(values);
}

void CWebPageUpdate::UpdateNow() {
  worker_.Post([this] { RunUpdate(); });
}

void CWebPageUpdate::Preview(
    std::function<void(const Status&, const std::filesystem::path&)> done) {
  worker_.Post([this, done = std::move(done)] {
    WebPageConfig config;
    WebPageValues values;
    {
      std::lock_guard lock(mutex_);
      config = config_;
      values = values_;
    }
    std::filesystem::path built;
    Status s = BuildWebPage(config.templatePath, values, std::time(nullptr), folder_, &built);
    done(s, built);
  });
}

void CWebPageUpdate::RunUpdate() {
  WebPageConfig config;
  WebPageValues values;
  {
    std::lock_guard lock(mutex_);
    config = config_;
    values = values_;
  }
  Status s = Update(config, values, folder_, callbacks_.log ? callbacks_.log : UploadLog([](auto&) {}),
                    options_);
  if (callbacks_.finished) {
    callbacks_.finished(s);
  }
}

Status CWebPageUpdate::Update(const WebPageConfig& config, const WebPageValues& values,
                              const std::filesystem::path& folder, const UploadLog& log,
                              const UploadOptions& options) {
  if (std::string invalid = ValidateWebPageConfig(config); !invalid.empty()) {
    log(">> " + invalid);
    return Status::Error(invalid);
  }
  const std::time_t now = std::time(nullptr);
  std::filesystem::path built;
  if (Status s = BuildWebPage(config.templatePath, values, now, folder, &built); !s.ok()) {
    log(">> " + s.message());
    return s;
  }
  const std::string remoteName = std::filesystem::path(config.templatePath).filename().string();
  return UploadWebPage(built, remoteName, config, WebPageTimestamp(now), log, options);
}

}  // namespace tavlorin
