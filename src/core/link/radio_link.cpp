#include "link/radio_link.h"

#include "link/serial_port.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

constexpr size_t kChunk = 1024;

}  // namespace

RadioLink::RadioLink(Clock& clock) : clock_(clock) {}

RadioLink::~RadioLink() { Close(); }

bool RadioLink::Open(const std::string& portName, const LineSettings& settings,
                     std::string* message) {
  Close();
  std::string error;
  std::unique_ptr<SerialPort> port = SerialPort::Open(portName, &error, &openFailure_);
  if (!port) {
    *message = error;
    return false;
  }
  DebugLog::Write("Opened: %s", portName.c_str());
  device_ = std::move(port);
  return Apply(settings, message);
}

bool RadioLink::Attach(std::unique_ptr<PortDevice> device, const LineSettings& settings,
                       std::string* message) {
  Close();
  openFailure_ = PortOpenFailure::kNone;
  device_ = std::move(device);
  return Apply(settings, message);
}

bool RadioLink::Apply(const LineSettings& settings, std::string* message) {
  lost_ = false;
  lostReason_.clear();
  Purge();
  if (ParseSpeed(settings.speedText) == 0) {
    *message = "Error building device control block - Invalid argument";
    Close();
    return false;
  }
  DebugLog::Write("Build DCB: %s", settings.text.c_str());
  if (Status s = device_->Configure(settings); !s.ok()) {
    *message = "Error setting port status - " + s.message();
    Close();
    return false;
  }
  DebugLog::Write("Set DCB: %s", settings.text.c_str());
  settings_ = settings;
  device_->SetModemLines(settings.dtr, settings.rts);
  Purge();
  const PortTimeouts& t = settings.timeouts;
  DebugLog::Write("Set timeouts:");
  DebugLog::Write("  Read interval timeout ...........: %d", int(t.readInterval.count()));
  DebugLog::Write("  Read Total Timeout Multiplier ...: %d", int(t.readTotalMultiplier.count()));
  DebugLog::Write("  Read Total Timeout Constant .....: %d", int(t.readTotalConstant.count()));
  DebugLog::Write("  Write Total Timeout Multiplier ..: %d", int(t.writeTotalMultiplier.count()));
  DebugLog::Write("  Write Total Timeout Constant ....: %d", int(t.writeTotalConstant.count()));
  return true;
}

bool RadioLink::Reconfigure(const LineSettings& settings, std::string* message) {
  if (!device_) {
    *message = "Error setting port status - Bad file descriptor";
    return false;
  }
  if (ParseSpeed(settings.speedText) == 0) {
    *message = "Error building device control block - Invalid argument";
    Close();
    return false;
  }
  if (Status s = device_->Configure(settings); !s.ok()) {
    *message = "Error setting port status - " + s.message();
    Close();
    return false;
  }
  settings_ = settings;
  device_->SetModemLines(settings.dtr, settings.rts);
  return true;
}

void RadioLink::Close() {
  if (!device_) {
    return;
  }
  if (!lost_) {
    device_->DrainAndPurgeInput(settings_.timeouts.writeTotalConstant);
    device_->SetModemLines(ModemLine::kDrop, ModemLine::kDrop);
  }
  device_.reset();
  buffer_.clear();
  head_ = 0;
}

bool RadioLink::Purge() {
  buffer_.clear();
  head_ = 0;
  if (!device_ || lost_) {
    return false;
  }
  device_->Purge();
  return true;
}

bool RadioLink::SetModemLines(ModemLine dtr, ModemLine rts) {
  return device_ && !lost_ && device_->SetModemLines(dtr, rts).ok();
}

void RadioLink::MarkLost(const char* reason) {
  if (!lost_) {
    lost_ = true;
    lostReason_ = reason;
    DebugLog::Write("Port lost: %s", reason);
  }
}

bool RadioLink::Fill(milliseconds timeout) {
  if (!device_ || lost_) {
    return false;
  }
  if (head_ > 0 && head_ == buffer_.size()) {
    buffer_.clear();
    head_ = 0;
  }
  const size_t old = buffer_.size();
  buffer_.resize(old + kChunk);
  IoOutcome r = device_->ReadSome(buffer_.data() + old, kChunk, timeout);
  buffer_.resize(old + r.count);
  if (r.failed) {
    MarkLost(r.message);
  }
  return r.count > 0;
}

bool RadioLink::Read(uint8_t* buffer, size_t count, size_t* got) {
  *got = 0;
  if (!device_ || lost_) {
    return false;
  }
  const PortTimeouts& t = settings_.timeouts;
  const auto total = t.readTotalMultiplier * static_cast<int>(count) + t.readTotalConstant;
  const auto deadline = clock_.Now() + total;
  while (*got < count) {
    if (Buffered() == 0) {
      auto left = std::chrono::duration_cast<milliseconds>(deadline - clock_.Now());
      if (*got > 0 && t.readInterval.count() > 0) {
        left = std::min(left, t.readInterval);
      }
      if (left.count() <= 0 || !Fill(left)) {
        break;
      }
    }
    size_t n = std::min(count - *got, Buffered());
    std::copy_n(buffer_.begin() + static_cast<std::ptrdiff_t>(head_), n, buffer + *got);
    head_ += n;
    *got += n;
  }
  return !lost_;
}

bool RadioLink::ReadUntil(uint8_t* buffer, size_t maxCount, uint8_t terminator, size_t* got,
                          std::optional<Clock::TimePoint> deadline) {
  *got = 0;
  if (!device_ || lost_) {
    return false;
  }
  const PortTimeouts& t = settings_.timeouts;
  const milliseconds perByte = t.readTotalMultiplier + t.readTotalConstant;
  while (*got < maxCount) {
    if (Buffered() == 0) {
      milliseconds wait = perByte;
      if (deadline) {
        wait = std::min(wait, std::chrono::duration_cast<milliseconds>(*deadline - clock_.Now()));
      }
      if (wait.count() <= 0 || !Fill(wait)) {
        break;
      }
    }
    uint8_t byte = buffer_[head_++];
    buffer[(*got)++] = byte;
    if (byte == terminator) {
      break;
    }
  }
  return *got > 0;
}

bool RadioLink::Write(const uint8_t* data, size_t count) {
  if (!device_ || lost_) {
    return false;
  }
  const PortTimeouts& t = settings_.timeouts;
  const auto timeout = t.writeTotalMultiplier * static_cast<int>(count) + t.writeTotalConstant;
  IoOutcome w = device_->Write(data, count, timeout);
  if (w.failed) {
    MarkLost(w.message);
  }
  return w.count == count && !w.failed;
}

}  // namespace tavlorin
