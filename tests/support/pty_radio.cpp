#include "support/pty_radio.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace tavlorin::testing {

void LineSimulator::OnBytes(std::string_view bytes, std::vector<Emission>& out) {
  for (char c : bytes) {
    pending_ += c;
    if (c == terminator_) {
      std::string reply = answer_(pending_);
      pending_.clear();
      if (!reply.empty()) {
        out.push_back({std::move(reply), std::chrono::milliseconds(0)});
      }
    }
  }
}

PtyRadio::PtyRadio(Simulator& simulator) : simulator_(simulator) {
  char name[256] = {};
  termios raw{};
  ::cfmakeraw(&raw);
  if (::openpty(&master_, &slave_, name, &raw, nullptr) != 0) {
    master_ = slave_ = -1;
    return;
  }
  ::fcntl(master_, F_SETFD, FD_CLOEXEC);
  ::fcntl(slave_, F_SETFD, FD_CLOEXEC);
  path_ = name;
  thread_ = std::thread([this] { Run(); });
}

PtyRadio::~PtyRadio() {
  stop_ = true;
  if (thread_.joinable()) {
    thread_.join();
  }
  if (master_ >= 0) {
    ::close(master_);
  }
  if (slave_ >= 0) {
    ::close(slave_);
  }
}

void PtyRadio::Send(std::string bytes) {
  std::lock_guard lock(mutex_);
  scheduled_.emplace_back(std::chrono::steady_clock::now(), std::move(bytes));
}

void PtyRadio::Hangup() {
  stop_ = true;
  if (thread_.joinable()) {
    thread_.join();
  }
  // The fixture's own slave descriptor would keep the line up: close both sides.
  if (slave_ >= 0) {
    ::close(slave_);
    slave_ = -1;
  }
  if (master_ >= 0) {
    ::close(master_);
    master_ = -1;
  }
}

bool PtyRadio::ReadTermios(struct termios* settings) const {
  return slave_ >= 0 && ::tcgetattr(slave_, settings) == 0;
}

std::string PtyRadio::Received() const {
  std::lock_guard lock(mutex_);
  return received_;
}

bool PtyRadio::WaitForReceived(size_t count, std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  return received_cv_.wait_for(lock, limit, [&] { return received_.size() >= count; });
}

void PtyRadio::WriteAll(const std::string& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    ssize_t n = ::write(master_, bytes.data() + done, bytes.size() - done);
    if (n > 0) {
      done += static_cast<size_t>(n);
    } else if (n < 0 && errno != EINTR && errno != EAGAIN) {
      return;
    }
  }
}

void PtyRadio::Run() {
  char buffer[4096];
  while (!stop_) {
    std::vector<std::string> due;
    int waitMs = 20;
    {
      std::lock_guard lock(mutex_);
      const auto now = std::chrono::steady_clock::now();
      std::stable_sort(scheduled_.begin(), scheduled_.end(),
                       [](const auto& a, const auto& b) { return a.first < b.first; });
      while (!scheduled_.empty() && scheduled_.front().first <= now) {
        due.push_back(std::move(scheduled_.front().second));
        scheduled_.erase(scheduled_.begin());
      }
      if (!scheduled_.empty()) {
        auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(scheduled_.front().first - now);
        waitMs = std::clamp(static_cast<int>(left.count()), 0, 20);
      }
    }
    for (const std::string& bytes : due) {
      WriteAll(bytes);
    }
    pollfd p{master_, POLLIN, 0};
    if (::poll(&p, 1, waitMs) <= 0 || !(p.revents & POLLIN)) {
      continue;
    }
    ssize_t n = ::read(master_, buffer, sizeof buffer);
    if (n <= 0) {
      continue;
    }
    std::vector<Emission> out;
    simulator_.OnBytes(std::string_view(buffer, static_cast<size_t>(n)), out);
    std::lock_guard lock(mutex_);
    received_.append(buffer, static_cast<size_t>(n));
    received_cv_.notify_all();
    const auto now = std::chrono::steady_clock::now();
    for (Emission& e : out) {
      scheduled_.emplace_back(now + e.delay, std::move(e.bytes));
    }
  }
}

}  // namespace tavlorin::testing
