#include "spots/http_transfer.h"

#include "shell/curl_easy.h"

namespace tavlorin {
namespace {

constexpr size_t kPieceSize = 1024;

struct Sink {
  HttpReply* reply;
  const std::function<void(std::string_view)>* onPiece;
};

size_t OnData(char* data, size_t size, size_t count, void* user) {
  Sink* sink = static_cast<Sink*>(user);
  std::string_view bytes(data, size * count);
  sink->reply->body.append(bytes);
  if (sink->onPiece != nullptr && *sink->onPiece) {
    for (size_t at = 0; at < bytes.size(); at += kPieceSize) {
      (*sink->onPiece)(bytes.substr(at, kPieceSize));
    }
  }
  return bytes.size();
}

Status Run(CurlEasy& curl, const std::string& url, HttpReply* reply, Sink* sink,
           const std::atomic<bool>* abort) {
  *reply = HttpReply{};
  curl_easy_setopt(curl.get(), CURLOPT_URL, url.c_str());
  curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, &OnData);
  curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, sink);
  // The reply is read in pieces of at most 1024 bytes.
  curl_easy_setopt(curl.get(), CURLOPT_BUFFERSIZE, static_cast<long>(kPieceSize));
  curl.SetAbortFlag(abort);
  Status s = curl.Perform();
  reply->status = curl.ResponseCode();
  return s;
}

}  // namespace

Status HttpGet(const std::string& url, HttpReply* reply, const std::atomic<bool>* abort) {
  CurlEasy curl;
  Sink sink{reply, nullptr};
  curl_easy_setopt(curl.get(), CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(curl.get(), CURLOPT_MAXREDIRS, 5L);
  Status s = Run(curl, url, reply, &sink, abort);
  if (!s.ok()) {
    return s;
  }
  if (reply->status < 200 || reply->status > 299) {
    return Status::Error("HTTP status " + std::to_string(reply->status) + " from " + url);
  }
  return Status::Ok();
}

Status HttpPost(const std::string& url, std::string_view contentType, std::string_view body,
                HttpReply* reply, const std::function<void(std::string_view)>& onPiece,
                const std::atomic<bool>* abort) {
  CurlEasy curl;
  Sink sink{reply, &onPiece};
  const std::string header = "Content-Type: " + std::string(contentType);
  curl_slist* headers = curl_slist_append(nullptr, header.c_str());
  // No "Expect: 100-continue" round trip: the bodies are small.
  headers = curl_slist_append(headers, "Expect:");
  curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, headers);
  curl_easy_setopt(curl.get(), CURLOPT_POST, 1L);
  curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDS, body.data());
  curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
  Status s = Run(curl, url, reply, &sink, abort);
  curl_slist_free_all(headers);
  return s;
}

}  // namespace tavlorin
