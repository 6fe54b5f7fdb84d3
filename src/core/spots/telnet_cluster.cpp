#include "spots/telnet_cluster.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <utility>

#include "shell/debug_log.h"
#include "spots/spot_parsers.h"
#include "spots/telnet_codec.h"

namespace tavlorin {
namespace {

// A node that sends this much without a line end is not a cluster; the text is cut into lines.
constexpr size_t kLongestLine = 4096;

std::string Lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return out;
}

bool IsLoginPrompt(std::string_view text) {
  std::string lower = Lower(text);
  return lower.find("login:") != std::string::npos || lower.find("call:") != std::string::npos ||
         lower.find("callsign:") != std::string::npos;
}

bool IsPasswordPrompt(std::string_view text) {
  return Lower(text).find("password:") != std::string::npos;
}

}  // namespace

TelnetCluster::TelnetCluster(TelnetClusterConfig config, Callbacks callbacks)
    : config_(std::move(config)), callbacks_(std::move(callbacks)) {
  int fds[2];
  if (::pipe2(fds, O_CLOEXEC | O_NONBLOCK) == 0) {
    wakeRead_ = fds[0];
    wakeWrite_ = fds[1];
  }
  thread_ = std::thread([this] { Run(); });
}

TelnetCluster::~TelnetCluster() {
  stopping_ = true;
  Wake();
  thread_.join();
  for (int fd : {wakeRead_, wakeWrite_}) {
    if (fd >= 0) {
      ::close(fd);
    }
  }
}

std::string TelnetCluster::SpotBody() const {
  std::lock_guard lock(mutex_);
  std::string body;
  for (const std::string& line : spotLines_) {
    body += line;
    body += '\n';
  }
  return body;
}

Status TelnetCluster::Send(std::string_view line) {
  if (!loggedIn_) {
    return Status::Error("Not logged in to the cluster " + config_.host);
  }
  {
    std::lock_guard lock(mutex_);
    outgoing_ += TelnetEscape(line);
    outgoing_ += "\r\n";
  }
  Wake();
  return Status::Ok();
}

void TelnetCluster::Wake() {
  if (wakeWrite_ >= 0) {
    char byte = 1;
    [[maybe_unused]] ssize_t ignored = ::write(wakeWrite_, &byte, 1);
  }
}

void TelnetCluster::DrainWake() {
  char buffer[64];
  while (wakeRead_ >= 0 && ::read(wakeRead_, buffer, sizeof buffer) > 0) {
  }
}

void TelnetCluster::Report(const std::string& text) {
  DebugLog::Write("Telnet cluster: %s", text.c_str());
  if (callbacks_.status) {
    callbacks_.status(text);
  }
}

bool TelnetCluster::Wait(std::chrono::milliseconds duration) {
  const auto end = std::chrono::steady_clock::now() + duration;
  while (!stopping_) {
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        end - std::chrono::steady_clock::now());
    if (left.count() <= 0) {
      return true;
    }
    pollfd p{wakeRead_, POLLIN, 0};
    ::poll(&p, 1, static_cast<int>(left.count()));
    DrainWake();
  }
  return false;
}

void TelnetCluster::Run() {
  const std::string where = config_.host + ":" + std::to_string(config_.port);
  std::chrono::milliseconds wait = config_.firstRetry;
  while (!stopping_) {
    Report("Connecting to " + where);
    int fd = -1;
    Status s = Connect(&fd);
    if (s.ok()) {
      Report("Connected to " + where);
      sentCall_ = false;
      sentPassword_ = false;
      std::string ended = Session(fd);
      ::close(fd);
      loggedIn_ = false;
      if (stopping_) {
        break;
      }
      Report("Connection to " + where + " ended: " + ended);
      if (sentCall_) {
        wait = config_.firstRetry;  // the node took us: a drop is news, not a pattern
      }
    } else {
      Report("Cannot connect to " + where + ": " + s.message());
    }
    Report("Next attempt in " + std::to_string(wait.count()) + " ms");
    if (!Wait(wait)) {
      break;
    }
    wait = std::min(wait * 2, config_.longestRetry);
  }
}

// getaddrinfo cannot be interrupted: a name server that never answers would hold the
// connection thread, and so the window that closes the connection, for as long as the
// resolver's own time-outs. The name is therefore resolved on a thread of its own, which is left
// behind when the connection stops or gives up; it owns nothing but its shared result.
struct TelnetCluster::Resolution {
  std::mutex mutex;
  std::condition_variable done;
  bool finished = false;
  int rc = 0;
  addrinfo* result = nullptr;
  ~Resolution() {
    if (result != nullptr) {
      ::freeaddrinfo(result);
    }
  }
};

Status TelnetCluster::Resolve(std::unique_ptr<addrinfo, void (*)(addrinfo*)>* found) {
  auto resolution = std::make_shared<Resolution>();
  std::thread([resolution, host = config_.host, port = std::to_string(config_.port)] {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* result = nullptr;
    int rc = ::getaddrinfo(host.c_str(), port.c_str(), &hints, &result);
    std::lock_guard lock(resolution->mutex);
    resolution->rc = rc;
    resolution->result = result;
    resolution->finished = true;
    resolution->done.notify_all();
  }).detach();
  const auto end = std::chrono::steady_clock::now() + config_.connectTimeout;
  std::unique_lock lock(resolution->mutex);
  while (!resolution->finished && !stopping_ && std::chrono::steady_clock::now() < end) {
    resolution->done.wait_for(lock, std::chrono::milliseconds(100));
  }
  if (!resolution->finished) {
    return Status::Error(stopping_ ? "stopped" : "the name " + config_.host + " was not resolved");
  }
  if (resolution->rc != 0) {
    return Status::Error(::gai_strerror(resolution->rc));
  }
  found->reset(std::exchange(resolution->result, nullptr));
  return Status::Ok();
}

Status TelnetCluster::Connect(int* fd) {
  std::unique_ptr<addrinfo, void (*)(addrinfo*)> found(nullptr, ::freeaddrinfo);
  if (Status s = Resolve(&found); !s.ok()) {
    return s;
  }
  std::string reason = "no address";
  for (addrinfo* a = found.get(); a != nullptr && !stopping_; a = a->ai_next) {
    int s = ::socket(a->ai_family, a->ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, a->ai_protocol);
    if (s < 0) {
      reason = std::strerror(errno);
      continue;
    }
    int err = 0;
    if (::connect(s, a->ai_addr, a->ai_addrlen) != 0) {
      err = errno;
      if (err == EINPROGRESS) {
        pollfd p[2] = {{s, POLLOUT, 0}, {wakeRead_, POLLIN, 0}};
        int n = ::poll(p, 2, static_cast<int>(config_.connectTimeout.count()));
        socklen_t len = sizeof err;
        if (n <= 0 || (p[0].revents == 0)) {
          err = n == 0 ? ETIMEDOUT : ECANCELED;
        } else if (::getsockopt(s, SOL_SOCKET, SO_ERROR, &err, &len) != 0) {
          err = errno;
        }
      }
    }
    if (err == 0) {
      *fd = s;
      return Status::Ok();
    }
    reason = std::strerror(err);
    ::close(s);
  }
  return Status::Error(reason);
}

// send() with MSG_NOSIGNAL rather than the link's descriptor writer: a node that has gone must
// give an error here, not a SIGPIPE that ends the program.
bool TelnetCluster::WriteAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    ssize_t n = ::send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (n > 0) {
      bytes.remove_prefix(size_t(n));
      continue;
    }
    if (n < 0 && errno != EAGAIN && errno != EINTR) {
      return false;
    }
    pollfd p{fd, POLLOUT, 0};
    if (::poll(&p, 1, 5000) <= 0) {
      return false;
    }
  }
  return true;
}

std::string TelnetCluster::Session(int fd) {
  {
    std::lock_guard lock(mutex_);
    outgoing_.clear();  // nothing of an earlier session is sent into this one
  }
  TelnetDecoder decoder;
  std::string partial;
  for (;;) {
    pollfd p[2] = {{fd, POLLIN, 0}, {wakeRead_, POLLIN, 0}};
    if (::poll(p, 2, -1) < 0 && errno != EINTR) {
      return std::strerror(errno);
    }
    if (p[1].revents != 0) {
      DrainWake();
      if (stopping_) {
        return "stopped";
      }
      std::string out;
      {
        std::lock_guard lock(mutex_);
        out.swap(outgoing_);
      }
      if (!WriteAll(fd, out)) {
        return std::strerror(errno);
      }
    }
    if (p[0].revents == 0) {
      continue;
    }
    char buffer[4096];
    ssize_t n = ::recv(fd, buffer, sizeof buffer, 0);
    if (n == 0) {
      return "closed by the node";
    }
    if (n < 0) {
      if (errno == EAGAIN || errno == EINTR) {
        continue;
      }
      return std::strerror(errno);
    }
    std::string text;
    std::string reply;
    decoder.Feed(std::string_view(buffer, size_t(n)), &text, &reply);
    if (!reply.empty() && !WriteAll(fd, reply)) {
      return std::strerror(errno);
    }
    std::string ended;
    if (!HandleText(fd, text, &partial, &ended)) {
      return ended;
    }
  }
}

// Splits the text into lines. Prompts come with or without a line end, so both the complete
// lines and the text still waiting for its end are looked at.
bool TelnetCluster::HandleText(int fd, const std::string& text, std::string* partial,
                               std::string* ended) {
  for (char c : text) {
    if (c == '\n' || partial->size() >= kLongestLine) {
      std::string line;
      line.swap(*partial);
      Prompt prompt = AnswerPrompt(fd, line, ended);
      if (prompt == Prompt::kFailed) {
        return false;
      }
      if (prompt == Prompt::kNone) {
        HandleLine(line);
      }
      if (c == '\n') {
        continue;
      }
    }
    // Nodes ring the bell on spot lines; no control character belongs in a line.
    if (static_cast<unsigned char>(c) >= 0x20 || c == '\t') {
      *partial += c;
    }
  }
  Prompt prompt = AnswerPrompt(fd, *partial, ended);
  if (prompt == Prompt::kAnswered) {
    partial->clear();
  }
  return prompt != Prompt::kFailed;
}

// Answers a login or password prompt in `text`; *ended says why when the session must end.
TelnetCluster::Prompt TelnetCluster::AnswerPrompt(int fd, const std::string& text,
                                                  std::string* ended) {
  std::string answer;
  if (!sentCall_ && IsLoginPrompt(text)) {
    sentCall_ = true;
    answer = config_.callsign;
  } else if (sentCall_ && !sentPassword_ && IsPasswordPrompt(text)) {
    if (config_.password.empty()) {
      *ended = "the node asks for a password, and none is set";
      return Prompt::kFailed;
    }
    sentPassword_ = true;
    answer = config_.password;
  } else {
    return Prompt::kNone;
  }
  if (!WriteAll(fd, TelnetEscape(answer) + "\r\n")) {
    *ended = std::strerror(errno);
    return Prompt::kFailed;
  }
  if (!loggedIn_) {
    loggedIn_ = true;
    Report("Logged in as " + config_.callsign);
  }
  return Prompt::kAnswered;
}

void TelnetCluster::HandleLine(const std::string& line) {
  if (ParseDxLine(line)) {
    {
      std::lock_guard lock(mutex_);
      spotLines_.push_front(line);
      if (spotLines_.size() > config_.keepSpots) {
        spotLines_.pop_back();
      }
    }
    if (callbacks_.spotLine) {
      callbacks_.spotLine(line);
    }
  } else if (callbacks_.otherLine && !line.empty()) {
    callbacks_.otherLine(line);
  }
}

}  // namespace tavlorin
