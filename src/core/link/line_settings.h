// LineSettings: how a serial port is set up for one radio family, and the family table that
// produces it (stop bits, flow control, modem lines, time-outs).
//
// FamilyLineSettings is pure: it turns a family code, the speed text of the connection and its
// line options into the settings the port applies. The time-outs follow the model of a read of
// N bytes: the first byte may take total = multiplier x N + constant; each later byte may follow
// the previous one by at most the interval.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "link/manufacturer.h"

namespace tavlorin {

struct PortTimeouts {
  std::chrono::milliseconds readInterval{0};
  std::chrono::milliseconds readTotalMultiplier{0};
  std::chrono::milliseconds readTotalConstant{0};
  std::chrono::milliseconds writeTotalMultiplier{0};
  std::chrono::milliseconds writeTotalConstant{0};
};

enum class ModemLine { kDrop, kRaise };

struct LineSettings {
  std::string text;  // "4800,n,8,2": what the debug log shows
  std::string speedText;
  int stopBits = 1;
  bool ctsFlowControl = false;
  ModemLine dtr = ModemLine::kDrop;
  ModemLine rts = ModemLine::kDrop;
  PortTimeouts timeouts;
};

// The settings of `family` (a Manufacturer code; unknown codes get the ICOM-like defaults).
// `commsRxTimeoutMs` is the setting "m_nCommsRxTimeout"; it is clamped to 50..500.
LineSettings FamilyLineSettings(int family, std::string_view speedText, bool cts, bool dtr,
                                bool rts, int commsRxTimeoutMs);

// Bit rate of a speed text ("4800"); 0 when the text is not a whole positive number.
int ParseSpeed(std::string_view speedText);

inline constexpr int kDefaultCommsRxTimeoutMs = 500;
inline constexpr int kMinCommsRxTimeoutMs = 50;
inline constexpr int kMaxCommsRxTimeoutMs = 500;

}  // namespace tavlorin
