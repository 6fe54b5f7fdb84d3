// DxClusterHost: what the DX cluster window's logic (CDXClusterDyn) needs from the program
// around it: a window timer, a way to queue calls onto the window's thread, and the places it
// shows things (status pane, message line, progress bar, title, list).
//
// The desktop program implements it with its widgets and a Qt timer, the command-line tool with
// its event loop and printed lines, tests with a recording fake. Every call except PostToWindow
// comes on the window's thread. Timers behave like window timers: they fire again and again at
// their interval until killed; arming an armed timer restarts it.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "spots/spot_list_model.h"

namespace tavlorin {

class DxClusterHost {
 public:
  virtual ~DxClusterHost() = default;

  virtual void SetTimer(int id, std::chrono::milliseconds interval) = 0;
  virtual void KillTimer(int id) = 0;
  // Queues `call` to run later on the window's thread. Any thread may call it.
  virtual void PostToWindow(std::function<void()> call) = 0;

  // "<->" while a fetch is under way, "DX " once it finished.
  virtual void ShowStatusPane(const std::string& /*text*/) {}
  // The message line: a failed fetch's error text, the telnet connection's state.
  virtual void ShowMessage(const std::string& /*text*/) {}
  // The progress bar towards the next refresh: `elapsed` seconds of 0..`range`.
  virtual void ShowProgress(int /*elapsed*/, int /*range*/) {}
  virtual void ShowTitle(const std::string& /*title*/) {}
  // The list changed as `update` says; list.rows() is the new content.
  virtual void ShowList(const SpotListModel& /*list*/, const SpotListModel::Update& /*update*/) {}
  // A line of a telnet cluster that is not a spot (announcements, talk, the node's replies).
  virtual void ShowClusterLine(const std::string& /*line*/) {}
};

}  // namespace tavlorin
