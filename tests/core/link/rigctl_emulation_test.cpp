// An outside program drives the emulated port: Hamlib's rigctl, as a TS-2000, reads and sets
// the frequency and mode of a demonstration radio served by `tavlorin-cli emulate --pty`.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

extern char** environ;

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kProgramLimit{30000};

// A child process with its standard output on a pipe; killed if still running at the end.
class Child {
 public:
  explicit Child(const std::vector<std::string>& argv) {
    int pipeFds[2];
    if (::pipe2(pipeFds, O_CLOEXEC) != 0) {
      return;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], STDOUT_FILENO);
    std::vector<char*> args;
    for (const std::string& a : argv) {
      args.push_back(const_cast<char*>(a.c_str()));
    }
    args.push_back(nullptr);
    if (posix_spawnp(&pid_, args[0], &actions, nullptr, args.data(), environ) != 0) {
      pid_ = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeFds[1]);
    out_ = pipeFds[0];
  }
  ~Child() {
    if (pid_ > 0) {
      ::kill(pid_, SIGKILL);
      ::waitpid(pid_, nullptr, 0);
    }
    if (out_ >= 0) {
      ::close(out_);
    }
  }
  bool started() const { return pid_ > 0; }
  const std::string& output() const { return output_; }

  // Reads output until `done(output)` holds, the pipe closes or `limit` passes.
  bool ReadUntil(const std::function<bool(const std::string&)>& done, milliseconds limit) {
    const auto end = steady_clock::now() + limit;
    while (!done(output_) && steady_clock::now() < end) {
      pollfd p{out_, POLLIN, 0};
      if (::poll(&p, 1, 50) <= 0) {
        continue;
      }
      char buffer[4096];
      ssize_t n = ::read(out_, buffer, sizeof buffer);
      if (n <= 0) {
        break;
      }
      output_.append(buffer, static_cast<size_t>(n));
    }
    return done(output_);
  }
  // Sends `signal` and waits (bounded) for the exit; the exit status, or -1 on time-out.
  int Stop(int signal, milliseconds limit) {
    if (signal != 0) {
      ::kill(pid_, signal);
    }
    const auto end = steady_clock::now() + limit;
    while (steady_clock::now() < end) {
      int status = 0;
      if (::waitpid(pid_, &status, WNOHANG) == pid_) {
        pid_ = -1;
        Drain();
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
      }
      ReadUntil([](const std::string&) { return false; }, milliseconds(20));
    }
    return -1;
  }

 private:
  // Takes what the child wrote before it ended (the pipe holds it until read).
  void Drain() {
    char buffer[4096];
    ssize_t n = 0;
    while ((n = ::read(out_, buffer, sizeof buffer)) > 0) {
      output_.append(buffer, static_cast<size_t>(n));
    }
  }

  pid_t pid_ = -1;
  int out_ = -1;
  std::string output_;
};

// Runs a program to its end (bounded); returns its output, sets *status.
std::string RunToEnd(const std::vector<std::string>& argv, int* status) {
  Child child(argv);
  if (!child.started()) {
    *status = -1;
    return {};
  }
  *status = child.Stop(0, kProgramLimit);
  return child.output();
}

bool HaveRigctl() {
  for (std::string dir : {"/usr/bin", "/usr/local/bin", "/bin"}) {
    if (::access((dir + "/rigctl").c_str(), X_OK) == 0) {
      return true;
    }
  }
  return false;
}

// The model number rigctl gives the TS-2000 ("rigctl -l").
std::string Ts2000Model() {
  int status = 0;
  std::istringstream lines(RunToEnd({"rigctl", "-l"}, &status));
  std::string line;
  const std::regex row(R"(^\s*(\d+)\s+Kenwood\s+TS-2000\s)");
  std::smatch m;
  while (std::getline(lines, line)) {
    if (std::regex_search(line, m, row)) {
      return m[1];
    }
  }
  return {};
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    out.push_back(line);
  }
  return out;
}

TEST(RigctlEmulationTest, ReadsAndSetsADemonstrationRadio) {
  if (!HaveRigctl()) {
    GTEST_SKIP() << "rigctl is not installed (Debian package libhamlib-utils): "
                    "the outside-client test of the emulated port cannot run here";
  }
  const std::string model = Ts2000Model();
  ASSERT_FALSE(model.empty()) << "rigctl -l lists no TS-2000";
  const std::string link =
      (std::filesystem::temp_directory_path() / ("tavlorin-rigctl-" + std::to_string(::getpid())))
          .string();
  Child server({TAVLORIN_CLI_PATH, "emulate", "--model", "TS-2000: Demo", "--pty", "--link", link});
  ASSERT_TRUE(server.started());
  ASSERT_TRUE(server.ReadUntil(
      [](const std::string& out) { return out.find('\n') != std::string::npos; }, kProgramLimit));
  const std::string served = Lines(server.output())[0];
  EXPECT_EQ(served.rfind("/dev/pts/", 0), 0u) << served;
  ASSERT_EQ(std::filesystem::read_symlink(link).string(), served);

  auto rigctl = [&](std::vector<std::string> commands) {
    std::vector<std::string> argv = {"rigctl", "-m", model, "-r", link, "-s", "57600"};
    argv.insert(argv.end(), commands.begin(), commands.end());
    int status = 0;
    std::string out = RunToEnd(argv, &status);
    EXPECT_EQ(status, 0) << out;
    return Lines(out);
  };
  std::vector<std::string> before = rigctl({"f", "m"});
  ASSERT_GE(before.size(), 2u);
  EXPECT_EQ(before[0], "14235000");
  EXPECT_EQ(before[1], "LSB");

  rigctl({"F", "7074000", "M", "USB", "0"});
  std::vector<std::string> after = rigctl({"f", "m"});
  ASSERT_GE(after.size(), 2u);
  EXPECT_EQ(after[0], "7074000");
  EXPECT_EQ(after[1], "USB");
  // The demonstration radio itself took the new values: the server's poll reports them.
  EXPECT_TRUE(server.ReadUntil(
      [](const std::string& out) {
        return out.find("7074000 7.074.000 mode 2") != std::string::npos;
      },
      kProgramLimit))
      << server.output();

  EXPECT_EQ(server.Stop(SIGTERM, kProgramLimit), 0);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link)));
}

}  // namespace
