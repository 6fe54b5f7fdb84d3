// WebPageFtp: the FTP session of the web page upload, over libcurl: log in, change the remote
// directory, put a file in ASCII mode and fetch it back in ASCII mode.
//
// One control connection serves the whole upload (libcurl keeps it open between the steps).
// The password is handed to the library apart from the address, so it never shows in an
// address or an error text. The FTP port and passive mode are libcurl's defaults; a host may
// name another port ("host:2121").
//
// Thread: one worker thread; each call blocks until the server answered (bounded by CurlEasy's
// time-outs) or `abort` turned true.
#pragma once

#include <atomic>
#include <filesystem>
#include <string>

#include "shell/curl_easy.h"
#include "shell/status.h"

namespace tavlorin {

class WebPageFtp {
 public:
  WebPageFtp(std::string host, std::string user, std::string password,
             const std::atomic<bool>* abort = nullptr);

  // Connects and logs in.
  Status Open();
  // The directory the later transfers use; checked on the server at once.
  Status ChangeDirectory(const std::string& directory);
  Status PutAscii(const std::filesystem::path& local, const std::string& remoteName);
  // Writes the remote file to `local`, replacing what was there.
  Status GetAscii(const std::string& remoteName, const std::filesystem::path& local);

 private:
  // ftp://host/ + the directory's parts + name, each part escaped ("/www" -> "%2Fwww").
  std::string Address(const std::string& name) const;
  void ResetTransfer();

  CurlEasy curl_;
  std::string base_;
  std::string directory_;
};

}  // namespace tavlorin
