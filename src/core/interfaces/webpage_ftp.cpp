#include "interfaces/webpage_ftp.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace tavlorin {
namespace {

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

size_t WriteToFile(char* data, size_t size, size_t count, void* file) {
  return std::fwrite(data, size, count, static_cast<std::FILE*>(file)) * size;
}

size_t Discard(char*, size_t size, size_t count, void*) { return size * count; }

size_t ReadFromFile(char* data, size_t size, size_t count, void* file) {
  return std::fread(data, size, count, static_cast<std::FILE*>(file)) * size;
}

}  // namespace

WebPageFtp::WebPageFtp(std::string host, std::string user, std::string password,
                       const std::atomic<bool>* abort)
    : base_(host.find("://") == std::string::npos ? "ftp://" + host : host) {
  while (!base_.empty() && base_.back() == '/') {
    base_.pop_back();
  }
  if (curl_.get() != nullptr) {
    curl_easy_setopt(curl_.get(), CURLOPT_USERNAME, user.c_str());
    curl_easy_setopt(curl_.get(), CURLOPT_PASSWORD, password.c_str());
  }
  curl_.SetAbortFlag(abort);
}

std::string WebPageFtp::Address(const std::string& name) const {
  std::string address = base_ + "/";
  auto append = [this, &address](const std::string& part) {
    char* escaped = curl_easy_escape(curl_.get(), part.c_str(), static_cast<int>(part.size()));
    if (escaped != nullptr) {
      address += escaped;
      curl_free(escaped);
    }
  };
  std::string dir = directory_;
  if (!dir.empty() && dir.front() == '/') {
    address += "%2F";  // an absolute directory, not one below the login directory
    dir.erase(0, dir.find_first_not_of('/'));
  }
  for (size_t start = 0; start < dir.size();) {
    size_t end = std::min(dir.find('/', start), dir.size());
    if (end > start) {
      append(dir.substr(start, end - start));
      address += '/';
    }
    start = end + 1;
  }
  append(name);
  return address;
}

void WebPageFtp::ResetTransfer() {
  CURL* c = curl_.get();
  curl_easy_setopt(c, CURLOPT_NOBODY, 0L);
  curl_easy_setopt(c, CURLOPT_UPLOAD, 0L);
  curl_easy_setopt(c, CURLOPT_TRANSFERTEXT, 0L);
  // Nothing of one step may reach the file of another.
  curl_easy_setopt(c, CURLOPT_READDATA, nullptr);
  curl_easy_setopt(c, CURLOPT_WRITEFUNCTION, &Discard);
  curl_easy_setopt(c, CURLOPT_WRITEDATA, nullptr);
}

Status WebPageFtp::Open() {
  if (curl_.get() == nullptr) {
    return curl_.Perform();
  }
  ResetTransfer();
  std::string root = base_ + "/";
  curl_easy_setopt(curl_.get(), CURLOPT_URL, root.c_str());
  curl_easy_setopt(curl_.get(), CURLOPT_NOBODY, 1L);
  return curl_.Perform();
}

Status WebPageFtp::ChangeDirectory(const std::string& directory) {
  directory_ = directory;
  ResetTransfer();
  std::string address = Address("");
  curl_easy_setopt(curl_.get(), CURLOPT_URL, address.c_str());
  curl_easy_setopt(curl_.get(), CURLOPT_NOBODY, 1L);
  return curl_.Perform();
}

Status WebPageFtp::PutAscii(const std::filesystem::path& local, const std::string& remoteName) {
  File file(std::fopen(local.c_str(), "rb"));
  if (!file) {
    return Status::Error("Cannot read " + local.string() + ": " + std::strerror(errno));
  }
  ResetTransfer();
  std::string address = Address(remoteName);
  std::error_code ec;
  const auto size = std::filesystem::file_size(local, ec);
  CURL* c = curl_.get();
  curl_easy_setopt(c, CURLOPT_URL, address.c_str());
  curl_easy_setopt(c, CURLOPT_UPLOAD, 1L);
  curl_easy_setopt(c, CURLOPT_TRANSFERTEXT, 1L);
  curl_easy_setopt(c, CURLOPT_READFUNCTION, &ReadFromFile);
  curl_easy_setopt(c, CURLOPT_READDATA, file.get());
  curl_easy_setopt(c, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(ec ? 0 : size));
  return curl_.Perform();
}

Status WebPageFtp::GetAscii(const std::string& remoteName, const std::filesystem::path& local) {
  File file(std::fopen(local.c_str(), "wb"));
  if (!file) {
    return Status::Error("Cannot write " + local.string() + ": " + std::strerror(errno));
  }
  ResetTransfer();
  std::string address = Address(remoteName);
  CURL* c = curl_.get();
  curl_easy_setopt(c, CURLOPT_URL, address.c_str());
  curl_easy_setopt(c, CURLOPT_TRANSFERTEXT, 1L);
  curl_easy_setopt(c, CURLOPT_WRITEFUNCTION, &WriteToFile);
  curl_easy_setopt(c, CURLOPT_WRITEDATA, file.get());
  Status s = curl_.Perform();
  if (std::fflush(file.get()) != 0 && s.ok()) {
    return Status::Error("Cannot write " + local.string() + ": " + std::strerror(errno));
  }
  return s;
}

}  // namespace tavlorin
