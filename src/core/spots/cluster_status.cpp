#include "spots/cluster_status.h"

#include <algorithm>
#include <chrono>

#include "spots/http_transfer.h"
#include "spots/spot_choices.h"
#include "spots/spot_settings.h"

namespace tavlorin {
namespace {

constexpr int kStatusTimer = 1;

std::string Field(std::string_view text) {
  std::string out(text);
  std::replace(out.begin(), out.end(), ':', ';');
  return out;
}

}  // namespace

ClusterStation ClusterStation::Load(const Settings& settings) {
  using namespace spot_settings;
  ClusterStation s;
  s.callsign = settings.Get(kStatusCallsign);
  s.name = settings.Get(kStatusName);
  s.dxcc = settings.Get(kStatusDxcc);
  s.locator = settings.Get(kStatusLocator);
  s.comment = settings.Get(kStatusComment);
  s.host = settings.Get(kStatusHost);
  s.port = settings.Get(kStatusPort);
  s.autoOn = settings.Get(kStatusAutoOn);
  s.updateMinutes = settings.Get(kStatusUpdateMinutes);
  return s;
}

Status ClusterStation::Save(Settings& settings) const {
  using namespace spot_settings;
  for (Status s : {settings.Set(kStatusCallsign, callsign), settings.Set(kStatusName, name),
                   settings.Set(kStatusDxcc, dxcc), settings.Set(kStatusLocator, locator),
                   settings.Set(kStatusComment, comment), settings.Set(kStatusHost, host),
                   settings.Set(kStatusPort, port), settings.Set(kStatusAutoOn, autoOn),
                   settings.Set(kStatusUpdateMinutes, updateMinutes)}) {
    if (!s.ok()) {
      return s;
    }
  }
  return Status::Ok();
}

std::string BuildStatusRecord(const ClusterStation& station, const RadioStatusValues& radio) {
  const std::string_view fields[kStatusRecordFields] = {
      station.callsign, station.name, station.dxcc, station.locator, radio.frequency,
      radio.mode,       radio.radio,  "",           "",              "",
      "",               "",           station.comment};
  std::string record = kStatusRecordTag;
  for (std::string_view field : fields) {
    record += ':';
    record += Field(field);
  }
  return record;
}

Status SendStatusRecord(const ClusterStation& station, const std::string& record,
                        std::string* answer, const std::atomic<bool>* abort) {
  if (station.host.find_first_not_of(' ') == std::string::npos) {
    return Status::Error("No cluster status server is set");
  }
  std::string host = station.host;
  if (station.port.find_first_not_of(' ') != std::string::npos) {
    host += ":" + station.port;
  }
  HttpReply reply;
  Status s = HttpPost(ServerAddress(host, ""), "text/plain; charset=utf-8", record, &reply, {},
                      abort);
  *answer = reply.body;
  if (!s.ok()) {
    return s;
  }
  if (reply.status < 200 || reply.status > 299) {
    return Status::Error("Failed: status = " + std::to_string(reply.status));
  }
  return Status::Ok();
}

void ClusterStatusUpdater::Configure(const ClusterStation& station) {
  int minutes = std::max(station.updateMinutes, 1);
  bool on = station.autoOn && station.host.find_first_not_of(' ') != std::string::npos;
  {
    std::lock_guard lock(mutex_);
    station_ = station;
  }
  worker_.SetPeriodic(kStatusTimer, on, minute_ * minutes, [this] { Send(); });
}

void ClusterStatusUpdater::SetRadioValues(RadioStatusValues values) {
  std::lock_guard lock(mutex_);
  values_ = std::move(values);
}

void ClusterStatusUpdater::SendNow() {
  worker_.Post([this] { Send(); });
}

void ClusterStatusUpdater::Send() {
  ClusterStation station;
  RadioStatusValues values;
  {
    std::lock_guard lock(mutex_);
    station = station_;
    values = values_;
  }
  std::string answer;
  Status s = SendStatusRecord(station, BuildStatusRecord(station, values), &answer, &abort_);
  if (report_) {
    report_(s, answer);
  }
}

}  // namespace tavlorin
