// The emulated port thread over real pseudo-terminals: another program's side opens the
// device (or the link to it) and talks; the owner answers on its own thread.
#include "link/emul_com_port_thread.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>

#include "radio/emulation/kenwood_emulation_answerer.h"
#include "shell/debug_log.h"
#include "shell/event_loop.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kHangGuard{10000};

// The other program: opens the device raw and exchanges text with generous time limits.
class Client {
 public:
  explicit Client(const std::string& path) : fd_(::open(path.c_str(), O_RDWR | O_NOCTTY)) {
    termios raw{};
    if (fd_ >= 0 && ::tcgetattr(fd_, &raw) == 0) {
      ::cfmakeraw(&raw);
      ::tcsetattr(fd_, TCSANOW, &raw);
    }
  }
  explicit Client(int fd) : fd_(fd) {}
  ~Client() {
    if (fd_ >= 0) {
      ::close(fd_);
    }
  }
  bool ok() const { return fd_ >= 0; }
  void Send(const std::string& text) {
    ASSERT_EQ(::write(fd_, text.data(), text.size()), ssize_t(text.size()));
  }
  // Reads until `count` replies (";"-ended) arrived or the hang guard ran out.
  std::string Receive(int count) {
    std::string got;
    const auto end = std::chrono::steady_clock::now() + kHangGuard;
    while (std::count(got.begin(), got.end(), ';') < count &&
           std::chrono::steady_clock::now() < end) {
      pollfd p{fd_, POLLIN, 0};
      if (::poll(&p, 1, 50) > 0) {
        char buffer[256];
        ssize_t n = ::read(fd_, buffer, sizeof buffer);
        if (n > 0) {
          got.append(buffer, static_cast<size_t>(n));
        }
      }
    }
    return got;
  }

 private:
  int fd_;
};

// The owner: an event loop on its own thread answering as the emulated radio would.
class Owner {
 public:
  Owner() : thread_([this] { loop_.Run(std::chrono::hours(1), &stop_); }) {}
  ~Owner() {
    stop_ = true;
    thread_.join();
  }
  CEmulComPortThread::Poster poster() {
    return [this](std::function<void()> call) { loop_.Post(std::move(call)); };
  }
  CEmulComPortThread::Answerer answerer() {
    return [this](int port, const std::string& command) {
      lastPort = port;
      EXPECT_EQ(std::this_thread::get_id(), thread_.get_id());
      EmulatedRadioState state;
      state.frequencyA = 14074000;
      state.mode = 2;
      return AnswerKenwoodCommand(command, state).reply;
    };
  }
  std::atomic<int> lastPort{0};

 private:
  EventLoop loop_;
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

// Records the debug log while it lives.
class LogLines {
 public:
  LogLines() {
    DebugLog::SetObserver([this](const std::string& line) {
      std::lock_guard lock(mutex_);
      log_ += line + "\n";
    });
  }
  ~LogLines() { DebugLog::SetObserver(nullptr); }
  // Waits (bounded) until `text` was logged.
  bool WaitFor(const std::string& text) {
    const auto end = std::chrono::steady_clock::now() + kHangGuard;
    for (; std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(milliseconds(10))) {
      std::lock_guard lock(mutex_);
      if (log_.find(text) != std::string::npos) {
        return true;
      }
    }
    return false;
  }

 private:
  std::mutex mutex_;
  std::string log_;
};

std::string TempPath(const std::string& name) {
  return (std::filesystem::temp_directory_path() /
          ("tavlorin-" + std::to_string(::getpid()) + "-" + name))
      .string();
}

TEST(EmulComPortThreadTest, AnswersEachCommandThroughItsLink) {
  LogLines log;
  Owner owner;
  const std::string link = TempPath("radio");
  CEmulComPortThread port({3, "", link}, owner.poster(), owner.answerer());
  std::string message;
  ASSERT_TRUE(port.Start(&message)) << message;
  ASSERT_EQ(std::filesystem::read_symlink(link).string(), port.path());
  {
    Client client(link);
    ASSERT_TRUE(client.ok());
    struct Case {
      std::string sent;
      std::string reply;
    } cases[] = {
        {"FA;", "FA00014074000;"},
        {"XX;", "?;"},
        {"\x01\x02;", "?;"},
        // A set-command is answered by silence: the next reply is the one to "ID;".
        {"FA00007074000;ID;", "ID019;"},
        {std::string(1100, 'x') + "ID;", "?;?;"},  // 1024 bytes, then the rest with "ID;"
    };
    for (const Case& c : cases) {
      client.Send(c.sent);
      EXPECT_EQ(client.Receive(int(std::count(c.reply.begin(), c.reply.end(), ';'))), c.reply)
          << c.sent;
    }
    client.Send("F");
    std::this_thread::sleep_for(milliseconds(300));  // longer than one read of the thread
    client.Send("A;");
    EXPECT_EQ(client.Receive(1), "FA00014074000;");
  }
  Client again(link);  // another program may close the port and come back
  again.Send("ID;");
  EXPECT_EQ(again.Receive(1), "ID019;");
  EXPECT_EQ(owner.lastPort, 3);
  EXPECT_TRUE(log.WaitFor("CEmulComPortThread RX: FA;"));
  EXPECT_TRUE(log.WaitFor("CEmulComPortThread TX: FA00014074000;"));
  EXPECT_TRUE(log.WaitFor("CEmulComPortThread RX: FA00007074000;"));
  port.Stop();
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link)));
}

TEST(EmulComPortThreadTest, StopsWhileTheOwnerNeverAnswers) {
  LogLines log;
  std::vector<std::function<void()>> parked;
  std::mutex parkedMutex;
  std::atomic<int> calls{0};
  CEmulComPortThread port(
      {1, "", ""},
      [&](std::function<void()> call) {
        std::lock_guard lock(parkedMutex);
        parked.push_back(std::move(call));
      },
      [&](int, const std::string&) {
        ++calls;
        return std::string("?;");
      });
  std::string message;
  ASSERT_TRUE(port.Start(&message)) << message;
  Client client(port.path());
  client.Send("FA;");
  ASSERT_TRUE(log.WaitFor("CEmulComPortThread RX: FA;"));
  auto stopped = std::async(std::launch::async, [&] { port.Stop(); });
  ASSERT_EQ(stopped.wait_for(kHangGuard), std::future_status::ready);
  EXPECT_FALSE(port.running());
  std::lock_guard lock(parkedMutex);
  ASSERT_EQ(parked.size(), 1u);
  parked[0]();  // the owner gets round to it after all: too late, nothing is answered
  EXPECT_EQ(calls, 0);
}

TEST(EmulComPortThreadTest, ServesASerialDeviceAndNoticesItGoing) {
  LogLines log;
  int master = -1;
  int slave = -1;
  char name[256] = {};
  ASSERT_EQ(::openpty(&master, &slave, name, nullptr, nullptr), 0);
  Owner owner;
  CEmulComPortThread port({2, name, ""}, owner.poster(), owner.answerer());
  std::string message;
  ASSERT_TRUE(port.Start(&message)) << message;
  EXPECT_EQ(port.path(), name);
  {
    Client client(master);
    client.Send("FA;");
    EXPECT_EQ(client.Receive(1), "FA00014074000;");
    ::close(slave);  // our own copy; the thread still has the device open
  }                  // closing the other end pulls the cable
  EXPECT_TRUE(log.WaitFor("CEmulComPortThread-Read status 0 bytes 0"));
  port.Stop();
}

TEST(EmulComPortThreadTest, OpeningErrors) {
  Owner owner;
  const std::string file = TempPath("occupied");
  std::ofstream(file) << "not a link";
  const std::string stale = TempPath("stale");
  std::filesystem::remove(stale);
  std::filesystem::create_symlink("/dev/pts/does-not-exist", stale);
  struct Case {
    CEmulComPortThread::Options options;
    std::string message;  // "" = opens, replacing a stale link
  } cases[] = {
      {{1, "/dev/tavlorin-no-such-port", ""},
       "Error opening /dev/tavlorin-no-such-port - No such file or directory"},
      {{1, "", file}, "Error opening " + file + " - File exists"},
      {{1, "", stale}, ""},
  };
  for (const Case& c : cases) {
    CEmulComPortThread port(c.options, owner.poster(), owner.answerer());
    std::string message;
    EXPECT_EQ(port.Start(&message), c.message.empty());
    EXPECT_EQ(message, c.message);
    if (c.message.empty()) {
      EXPECT_EQ(std::filesystem::read_symlink(stale).string(), port.path());
    }
  }
  EXPECT_TRUE(std::filesystem::is_regular_file(file));  // never removed what was not ours
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(stale)));
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace tavlorin
