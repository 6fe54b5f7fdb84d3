#include "support/scripted_device.h"

#include <algorithm>
#include <cstring>

namespace tavlorin::testing {

ScriptedDevice& ScriptedDevice::OnWrite(std::string request, std::string reply,
                                        std::chrono::milliseconds delay) {
  expectations_.push_back({std::move(request), std::move(reply), delay});
  return *this;
}

void ScriptedDevice::Inject(std::string bytes, std::chrono::milliseconds delay) {
  Arrival a{clock_.Now() + delay, std::move(bytes)};
  auto pos = std::upper_bound(arrivals_.begin(), arrivals_.end(), a.at,
                              [](Clock::TimePoint t, const Arrival& x) { return t < x.at; });
  arrivals_.insert(pos, std::move(a));
}

std::string ScriptedDevice::AllWritten() const {
  std::string all;
  for (const std::string& w : writes_) {
    all += w;
  }
  return all;
}

Status ScriptedDevice::Configure(const LineSettings& settings) {
  if (!configureError_.empty()) {
    return Status::Error(configureError_);
  }
  configurations_.push_back(settings);
  return Status::Ok();
}

Status ScriptedDevice::SetModemLines(ModemLine dtr, ModemLine rts) {
  dtr_ = dtr;
  rts_ = rts;
  return Status::Ok();
}

void ScriptedDevice::Purge() {
  ++purges_;
  const auto now = clock_.Now();
  while (!arrivals_.empty() && arrivals_.front().at <= now) {
    arrivals_.pop_front();
  }
}

IoOutcome ScriptedDevice::ReadSome(uint8_t* buffer, size_t capacity,
                                   std::chrono::milliseconds timeout) {
  IoOutcome out;
  if (vanished_) {
    out.failed = true;
    out.message = "Input/output error";
    return out;
  }
  const auto deadline = clock_.Now() + timeout;
  if (arrivals_.empty() || arrivals_.front().at > deadline) {
    clock_.AdvanceTo(deadline);
    return out;
  }
  Arrival& first = arrivals_.front();
  clock_.AdvanceTo(first.at);
  out.count = std::min(capacity, first.bytes.size());
  std::memcpy(buffer, first.bytes.data(), out.count);
  first.bytes.erase(0, out.count);
  if (first.bytes.empty()) {
    arrivals_.pop_front();
  }
  return out;
}

IoOutcome ScriptedDevice::Write(const uint8_t* data, size_t count, std::chrono::milliseconds) {
  IoOutcome out;
  if (vanished_) {
    out.failed = true;
    out.message = "Input/output error";
    return out;
  }
  std::string written(reinterpret_cast<const char*>(data), count);
  writes_.push_back(written);
  out.count = count;
  if (!expectations_.empty() && expectations_.front().request == written) {
    Expectation e = std::move(expectations_.front());
    expectations_.pop_front();
    if (!e.reply.empty()) {
      Inject(std::move(e.reply), e.delay);
    }
  } else if (responder_) {
    if (std::string reply = responder_(written); !reply.empty()) {
      Inject(std::move(reply));
    }
  } else {
    unexpected_.push_back(std::move(written));
  }
  return out;
}

}  // namespace tavlorin::testing
