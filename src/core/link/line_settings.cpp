#include "link/line_settings.h"

#include <algorithm>
#include <charconv>

namespace tavlorin {
namespace {

using std::chrono::milliseconds;

ModemLine Line(bool option) { return option ? ModemLine::kRaise : ModemLine::kDrop; }

}  // namespace

int ParseSpeed(std::string_view speedText) {
  int speed = 0;
  auto [end, ec] = std::from_chars(speedText.data(), speedText.data() + speedText.size(), speed);
  if (ec != std::errc() || end != speedText.data() + speedText.size() || speed <= 0) {
    return 0;
  }
  return speed;
}

LineSettings FamilyLineSettings(int family, std::string_view speedText, bool cts, bool dtr,
                                bool rts, int commsRxTimeoutMs) {
  LineSettings s;
  s.speedText = std::string(speedText);
  switch (family) {
    case kElecraft:
    case kYaesu:
    case kDemonstration:
      s.stopBits = 2;
      break;
    case kKenwood:
      s.stopBits = speedText == "4800" ? 2 : 1;
      break;
    default:
      s.stopBits = 1;
  }
  s.text = s.speedText + ",n,8," + std::to_string(s.stopBits);

  s.ctsFlowControl =
      (family == kKenwood || family == kTenTec || family == kNrd535 || family == kYaesuAscii) && cts;
  // The modem lines as the open procedure leaves them: Elecraft always dropped, the PCR-1000
  // always raised, every other family as the connection's options say.
  switch (family) {
    case kElecraft:
      s.dtr = s.rts = ModemLine::kDrop;
      break;
    case kGeneral:
      s.dtr = s.rts = ModemLine::kRaise;
      break;
    default:
      s.dtr = Line(dtr);
      s.rts = Line(rts);
  }

  const int interval = std::clamp(commsRxTimeoutMs, kMinCommsRxTimeoutMs, kMaxCommsRxTimeoutMs);
  s.timeouts.readInterval = milliseconds(interval);
  if (family == kYaesu || family == kGeneral) {
    s.timeouts.readTotalMultiplier = milliseconds(500);
    s.timeouts.readTotalConstant = milliseconds(500);
    s.timeouts.writeTotalMultiplier = milliseconds(500);
    s.timeouts.writeTotalConstant = milliseconds(1000);
  } else {
    s.timeouts.readTotalMultiplier = milliseconds(250);
    s.timeouts.readTotalConstant = milliseconds(250);
    s.timeouts.writeTotalMultiplier = milliseconds(250);
    s.timeouts.writeTotalConstant = milliseconds(250);
  }
  return s;
}

}  // namespace tavlorin
