// The cluster status record (CTVRClusterUpdate): the station details the program reports every
// few minutes to a central cluster server, as one line
//
//   TVRCluster:CALL:NAME:DXCC:LOCATOR:FREQUENCY:MODE:RADIO::::::COMMENT
//
// "TVRCluster" and 13 fields, every element separated by ":"; a ":" inside a field becomes ";"
// so the fields can always be split again. Fields 4 and 5 are the radio window's frequency in
// hertz and its mode; fields 7 to 11 are empty.
//
// Transport: an HTTP POST of the record (text/plain, UTF-8, no line end) to
// http://HOST:PORT/ , the host and port of the settings. A 2xx reply means the server took it;
// its body is the server's answer, shown to the user.
//
// BuildStatusRecord is pure. SendStatusRecord blocks: run it on a worker; ClusterStatusUpdater
// does, on its own thread, every m_nUpdateMinutes while it is on.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

#include "shell/loop_thread.h"
#include "shell/settings.h"
#include "shell/status.h"

namespace tavlorin {

inline constexpr const char* kStatusRecordTag = "TVRCluster";
inline constexpr int kStatusRecordFields = 13;

struct ClusterStation {
  std::string callsign;
  std::string name;
  std::string dxcc;
  std::string locator;
  std::string comment;
  std::string host;
  std::string port;
  bool autoOn = false;
  int updateMinutes = 10;

  static ClusterStation Load(const Settings& settings);
  Status Save(Settings& settings) const;
};

// What the radio window supplies to the record.
struct RadioStatusValues {
  std::string frequency;  // hertz, "%u"
  std::string mode;
  std::string radio;      // the radio model's name
};

std::string BuildStatusRecord(const ClusterStation& station, const RadioStatusValues& radio);

// Posts the record; Ok when the server answered 2xx (its answer in *answer), else
// "Failed: status = %d" or the library's error text.
Status SendStatusRecord(const ClusterStation& station, const std::string& record,
                        std::string* answer, const std::atomic<bool>* abort = nullptr);

// ClusterStatusUpdater: sends the record every station.updateMinutes while on. The radio window
// pushes its current values with SetRadioValues; each send uses the latest. `report` gets the
// outcome of each send ("Sent: answer" or the failure) on the updater's thread.
//
// Thread: any thread may call the members; the destructor stops the timer and aborts a send.
class ClusterStatusUpdater {
 public:
  using Report = std::function<void(const Status& outcome, const std::string& answer)>;

  // `minute` is the unit of m_nUpdateMinutes (shorter in tests).
  explicit ClusterStatusUpdater(Report report,
                                std::chrono::milliseconds minute = std::chrono::minutes(1))
      : report_(std::move(report)), minute_(minute) {}
  ~ClusterStatusUpdater() { abort_ = true; }

  // On when station.autoOn and a host is set; off otherwise.
  void Configure(const ClusterStation& station);
  void SetRadioValues(RadioStatusValues values);
  // Sends once now (on the updater's thread).
  void SendNow();

 private:
  void Send();

  Report report_;
  const std::chrono::milliseconds minute_;
  std::mutex mutex_;
  ClusterStation station_;
  RadioStatusValues values_;
  std::atomic<bool> abort_{false};
  LoopThread worker_;
};

}  // namespace tavlorin
