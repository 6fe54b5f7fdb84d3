#include "link/emul_com_port_thread.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "link/pseudo_terminal_port.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

constexpr char kTerminator = ';';
// A partial command older than this is a dead client's leftover, not the start of a command.
constexpr milliseconds kPartialLifetime{2000};

// "57600,n,8,1". A read gives up after 100 ms of silence, so Stop is seen promptly.
LineSettings EmulatedPortSettings() {
  LineSettings s;
  s.text = "57600,n,8,1";
  s.speedText = "57600";
  s.stopBits = 1;
  s.dtr = ModemLine::kRaise;
  s.rts = ModemLine::kRaise;
  s.timeouts.readInterval = milliseconds(50);
  s.timeouts.readTotalMultiplier = milliseconds(0);
  s.timeouts.readTotalConstant = milliseconds(100);
  s.timeouts.writeTotalMultiplier = milliseconds(10);
  s.timeouts.writeTotalConstant = milliseconds(500);
  return s;
}

std::string OpeningError(const std::string& name, const std::string& reason) {
  return "Error opening " + name + " - " + reason;
}

}  // namespace

// One command waiting for its answer on the owner's thread.
struct CEmulComPortThread::Exchange {
  std::mutex mutex;
  std::condition_variable answered;
  bool done = false;
  bool abandoned = false;  // Stop came first: the answerer must not run any more
  std::string answer;
};

CEmulComPortThread::CEmulComPortThread(Options options, Poster post, Answerer answer)
    : options_(std::move(options)), post_(std::move(post)), answer_(std::move(answer)) {}

CEmulComPortThread::~CEmulComPortThread() { Stop(); }

bool CEmulComPortThread::OpenPort(std::string* message) {
  if (!options_.device.empty()) {
    path_ = options_.device;
    if (!link_.Open(options_.device, EmulatedPortSettings(), message)) {
      if (link_.deviceRefused()) {
        *message = OpeningError(options_.device, *message);
      }
      return false;
    }
    return true;
  }
  std::string error;
  std::unique_ptr<PseudoTerminalPort> port = PseudoTerminalPort::Create(&error);
  if (!port) {
    *message = OpeningError("/dev/ptmx", error);
    return false;
  }
  path_ = port->path();
  return link_.Attach(std::move(port), EmulatedPortSettings(), message);
}

bool CEmulComPortThread::MakeLink(std::string* message) {
  const std::string& link = options_.linkPath;
  struct stat st {};
  if (::lstat(link.c_str(), &st) == 0) {
    if (!S_ISLNK(st.st_mode)) {
      *message = OpeningError(link, std::strerror(EEXIST));
      return false;
    }
    ::unlink(link.c_str());  // a link left behind by an earlier run
  }
  if (::symlink(path_.c_str(), link.c_str()) != 0) {
    *message = OpeningError(link, std::strerror(errno));
    return false;
  }
  linkMade_ = true;
  return true;
}

bool CEmulComPortThread::Start(std::string* message) {
  if (running()) {
    return true;
  }
  stop_ = false;
  if (!OpenPort(message) ||
      (options_.device.empty() && !options_.linkPath.empty() && !MakeLink(message))) {
    DebugLog::Write("%s", message->c_str());
    link_.Close();
    return false;
  }
  DebugLog::Write("CEmulComPortThread serving %s", path_.c_str());
  thread_ = std::thread([this] { Run(); });
  return true;
}

void CEmulComPortThread::Stop() {
  stop_ = true;
  {
    std::lock_guard lock(mutex_);
    if (waiting_) {
      std::lock_guard exchangeLock(waiting_->mutex);
      waiting_->abandoned = true;
      waiting_->answered.notify_all();
    }
  }
  if (thread_.joinable()) {
    thread_.join();
  }
  link_.Close();
  if (linkMade_) {
    char target[256] = {};
    ssize_t n = ::readlink(options_.linkPath.c_str(), target, sizeof target - 1);
    if (n > 0 && path_ == std::string(target, static_cast<size_t>(n))) {
      ::unlink(options_.linkPath.c_str());
    }
    linkMade_ = false;
  }
}

bool CEmulComPortThread::HandOver(const std::string& command, std::string* answer) {
  auto exchange = std::make_shared<Exchange>();
  {
    std::lock_guard lock(mutex_);
    if (stop_) {
      return false;
    }
    waiting_ = exchange;
  }
  post_([exchange, answerer = answer_, port = options_.portNumber, command] {
    {
      std::lock_guard lock(exchange->mutex);
      if (exchange->abandoned) {
        return;
      }
    }
    std::string reply = answerer(port, command);
    std::lock_guard lock(exchange->mutex);
    exchange->answer = std::move(reply);
    exchange->done = true;
    exchange->answered.notify_all();
  });
  std::unique_lock lock(exchange->mutex);
  exchange->answered.wait(lock, [&] { return exchange->done || exchange->abandoned; });
  const bool done = exchange->done;
  *answer = std::move(exchange->answer);
  lock.unlock();
  std::lock_guard guard(mutex_);
  waiting_.reset();
  return done;
}

bool CEmulComPortThread::Serve(const std::string& command) {
  DebugLog::Write("CEmulComPortThread RX: %s", command.c_str());
  std::string answer;
  if (!HandOver(command, &answer)) {
    return false;
  }
  if (answer.empty()) {
    return true;
  }
  DebugLog::Write("CEmulComPortThread TX: %s", answer.c_str());
  return link_.Write(answer) || !link_.lost();
}

void CEmulComPortThread::Run() {
  std::string pending;
  auto lastByte = std::chrono::steady_clock::now();
  uint8_t buffer[kMaxCommand];
  while (!stop_) {
    const size_t room = kMaxCommand - pending.size();
    size_t got = 0;
    link_.ReadUntil(buffer, room, static_cast<uint8_t>(kTerminator), &got);
    if (link_.lost()) {
      DebugLog::Write("CEmulComPortThread-Read status %d bytes %d", 0, static_cast<int>(got));
      break;
    }
    const auto now = std::chrono::steady_clock::now();
    if (got == 0) {
      if (!pending.empty() && now - lastByte > kPartialLifetime) {
        pending.clear();
      }
      continue;
    }
    lastByte = now;
    pending.append(reinterpret_cast<const char*>(buffer), got);
    if (pending.back() != kTerminator && pending.size() < kMaxCommand) {
      continue;  // the rest of the command is still on its way
    }
    const bool keepServing = Serve(pending);
    pending.clear();
    if (!keepServing) {
      break;
    }
  }
}

}  // namespace tavlorin
