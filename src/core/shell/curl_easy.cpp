#include "shell/curl_easy.h"

#include <mutex>

namespace tavlorin {
namespace {

void InitialiseOnce() {
  static std::once_flag once;
  std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

}  // namespace

CurlEasy::CurlEasy() {
  InitialiseOnce();
  handle_ = curl_easy_init();
  if (handle_ == nullptr) {
    return;
  }
  curl_easy_setopt(handle_, CURLOPT_ERRORBUFFER, error_);
  // Signals would reach whichever thread runs the transfer; name look-ups then cannot be cut
  // short by alarm(), which the connect time-out below bounds instead.
  curl_easy_setopt(handle_, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(handle_, CURLOPT_CONNECTTIMEOUT, 15L);
  curl_easy_setopt(handle_, CURLOPT_LOW_SPEED_LIMIT, 1L);
  curl_easy_setopt(handle_, CURLOPT_LOW_SPEED_TIME, 30L);
  curl_easy_setopt(handle_, CURLOPT_NOPROGRESS, 0L);
  curl_easy_setopt(handle_, CURLOPT_XFERINFOFUNCTION, &CurlEasy::OnProgress);
  curl_easy_setopt(handle_, CURLOPT_XFERINFODATA, this);
}

CurlEasy::~CurlEasy() {
  if (handle_ != nullptr) {
    curl_easy_cleanup(handle_);
  }
}

int CurlEasy::OnProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  const std::atomic<bool>* abort = static_cast<CurlEasy*>(self)->abort_;
  return abort != nullptr && abort->load() ? 1 : 0;
}

Status CurlEasy::Perform() {
  if (handle_ == nullptr) {
    return Status::Error("The transfer library could not start a transfer (out of memory)");
  }
  error_[0] = '\0';
  CURLcode code = curl_easy_perform(handle_);
  if (code == CURLE_OK) {
    return Status::Ok();
  }
  if (code == CURLE_ABORTED_BY_CALLBACK) {
    return Status::Error("Transfer aborted");
  }
  std::string text = error_[0] != '\0' ? error_ : curl_easy_strerror(code);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
    text.pop_back();
  }
  return Status::Error(text);
}

long CurlEasy::ResponseCode() const {
  long code = 0;
  if (handle_ != nullptr) {
    curl_easy_getinfo(handle_, CURLINFO_RESPONSE_CODE, &code);
  }
  return code;
}

}  // namespace tavlorin
