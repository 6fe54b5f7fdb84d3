// PtyRadio: a simulated radio on the far side of a pseudo-terminal, so link and driver tests
// run through the real termios path (SerialPort, RadioLink) exactly as with a USB cable.
//
// The test opens path() as the radio's port. A thread of the fixture reads what the program
// writes and hands it to the Simulator, which answers with bytes to send back, each after an
// optional delay (late replies, unsolicited broadcasts). Hangup() closes the far side, as when
// the cable is pulled: the program's next read fails with an I/O error.
//
// The simulator is called on the fixture's thread only; the fixture's methods may be called
// from the test's thread.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

struct termios;

namespace tavlorin::testing {

// Bytes the simulated radio sends, `delay` after the bytes that caused them arrived.
struct Emission {
  std::string bytes;
  std::chrono::milliseconds delay{0};
};

class Simulator {
 public:
  virtual ~Simulator() = default;
  // Called with every chunk the program wrote; appends what the radio sends back.
  virtual void OnBytes(std::string_view bytes, std::vector<Emission>& out) = 0;
};

// A simulator for line-based command sets: collects bytes up to `terminator` and answers each
// complete command through `answer` ("" = no answer).
class LineSimulator : public Simulator {
 public:
  using Answer = std::function<std::string(const std::string& command)>;
  LineSimulator(char terminator, Answer answer)
      : terminator_(terminator), answer_(std::move(answer)) {}
  void OnBytes(std::string_view bytes, std::vector<Emission>& out) override;

 private:
  char terminator_;
  Answer answer_;
  std::string pending_;
};

class PtyRadio {
 public:
  explicit PtyRadio(Simulator& simulator);
  ~PtyRadio();
  PtyRadio(const PtyRadio&) = delete;
  PtyRadio& operator=(const PtyRadio&) = delete;

  bool ok() const { return master_ >= 0; }
  // The device path the program opens (/dev/pts/N).
  const std::string& path() const { return path_; }
  // Sends bytes to the program now, unasked.
  void Send(std::string bytes);
  // Closes the radio's side: the program's port reads end with an I/O error.
  void Hangup();
  // The line settings the program applied to the port (tcgetattr on the radio's side).
  bool ReadTermios(struct termios* settings) const;
  // Everything the program has written so far.
  std::string Received() const;
  // Waits (up to `limit`) until the program has written at least `count` bytes.
  bool WaitForReceived(size_t count, std::chrono::milliseconds limit);

 private:
  void Run();
  void WriteAll(const std::string& bytes);

  Simulator& simulator_;
  int master_ = -1;
  int slave_ = -1;
  std::string path_;
  std::atomic<bool> stop_{false};
  mutable std::mutex mutex_;
  std::condition_variable received_cv_;
  std::string received_;
  std::vector<std::pair<std::chrono::steady_clock::time_point, std::string>> scheduled_;
  std::thread thread_;
};

}  // namespace tavlorin::testing
