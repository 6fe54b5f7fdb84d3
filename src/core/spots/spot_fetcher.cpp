#include "spots/spot_fetcher.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "spots/http_transfer.h"

namespace tavlorin {

SpotFetcher::~SpotFetcher() { abort_ = true; }

void SpotFetcher::SetClusterBody(std::function<std::string()> body) {
  std::lock_guard lock(mutex_);
  clusterBody_ = std::move(body);
}

void SpotFetcher::Fetch(SpotRequest request) {
  worker_.Post([this, request = std::move(request)] {
    FetchResult started;
    started.source = request.source;
    deliver_(kFetchUnderWay, std::move(started));
    deliver_(kFetchFinished, Run(request));
  });
}

FetchResult SpotFetcher::Run(const SpotRequest& request) {
  FetchResult result;
  result.source = request.source;
  if (request.target.empty()) {
    result.error = request.error.empty() ? "Nothing to fetch" : request.error;
    return result;
  }
  Status s;
  switch (request.source) {
    case SpotSource::kWebPages:
    case SpotSource::kCsvFiles: {
      HttpReply reply;
      s = HttpGet(request.target, &reply, &abort_);
      result.body = std::move(reply.body);
      break;
    }
    case SpotSource::kLogFile: {
      // "path<TAB>low<TAB>high<TAB>count": the range is the last three fields.
      size_t cut = request.target.size();
      for (int i = 0; i < 3 && cut != std::string::npos && cut > 0; ++i) {
        cut = request.target.rfind('\t', cut - 1);
      }
      if (cut == std::string::npos) {
        s = Status::Error("Bad spot log request");
        break;
      }
      result.range = ParseBandRange(std::string_view(request.target).substr(cut + 1));
      s = ReadSpotLogFile(request.target.substr(0, cut), &result.body);
      break;
    }
    case SpotSource::kTelnet: {
      result.range = ParseBandRange(request.target);
      std::lock_guard lock(mutex_);
      if (!clusterBody_) {
        s = Status::Error("No telnet cluster is connected");
        break;
      }
      result.body = clusterBody_();
      break;
    }
  }
  if (!s.ok()) {
    result.body.clear();
    result.error = s.message();
    return result;
  }
  result.ok = true;
  return result;
}

Status ReadSpotLogFile(const std::string& path, std::string* body, size_t limit) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    return Status::Error("Cannot read the spot log file " + path + ": " + std::strerror(errno));
  }
  in.seekg(0, std::ios::end);
  const std::streamoff size = in.tellg();
  const std::streamoff start = size > std::streamoff(limit) ? size - std::streamoff(limit) : 0;
  in.seekg(start);
  body->assign(size_t(size - start), '\0');
  in.read(body->data(), std::streamsize(body->size()));
  body->resize(size_t(in.gcount()));
  if (start > 0) {
    body->erase(0, body->find('\n') + 1);  // the first line was cut
  }
  return Status::Ok();
}

}  // namespace tavlorin
