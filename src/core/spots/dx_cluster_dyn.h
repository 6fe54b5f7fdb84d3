// CDXClusterDyn: the logic of the DX cluster window without its widgets: the refresh timer, the
// background fetches, the list rules, the telnet cluster connection, and tuning the radio to a
// chosen spot.
//
// A refresh builds the request for the current source and choice and hands it to the
// SpotFetcher; the window's thread never waits on the network or a file. With display updates
// on, timer 100 ticks each second towards the refresh interval (at least 10 s); a finished
// fetch starts the count again. A telnet cluster is kept connected while it is the source, and
// each new spot line refreshes the list at once when display updates are on.
//
// Tuning goes through one entry point, the "tune to hertz" callback: the desktop program sends
// the active radio window's set-frequency message from it; the command-line tool sets the radio
// directly. With no callback (no radio window open) choosing a spot does nothing.
//
// Thread: the window's thread only; the host, the country tables and the settings (optional;
// without them nothing is remembered) must outlive it. Destroying it stops the fetcher and the
// telnet connection; results that arrive later are dropped.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "geo/country_tables.h"
#include "radio/frequency.h"
#include "shell/settings.h"
#include "spots/dx_cluster_config.h"
#include "spots/dx_cluster_host.h"
#include "spots/spot_fetcher.h"
#include "spots/spot_list_model.h"
#include "spots/telnet_cluster.h"

namespace tavlorin {

using TuneToHertz = std::function<void(Frequency hz)>;

class CDXClusterDyn {
 public:
  static constexpr int kRefreshTimer = 100;
  static constexpr std::chrono::milliseconds kTick{1000};

  CDXClusterDyn(DxClusterHost& host, DxClusterConfig config, const CountryTables* countries,
                Settings* settings);
  ~CDXClusterDyn();
  CDXClusterDyn(const CDXClusterDyn&) = delete;
  CDXClusterDyn& operator=(const CDXClusterDyn&) = delete;

  // Creation: starts display updates when "CDXClusterDyn::start" was on.
  void Open();
  // Display updates off and the telnet connection closed. The remembered "start" is left as it
  // is, so the next opening resumes what the user had chosen.
  void Close();

  // The configuration dialog's result; written to the settings (when there are any). A change of
  // source or list draws the next body whatever it holds.
  void Configure(DxClusterConfig config);
  const DxClusterConfig& config() const { return config_; }

  // "Refresh display": a fetch now (after the one under way, if any).
  void Refresh();
  void OnTimer(int id);
  // "Set refresh interval": below 10 becomes 10. Returns the interval stored and used.
  int SetRefreshInterval(int seconds);
  // "Start display updates" on or off; `remember` writes "CDXClusterDyn::start".
  void SetDisplayUpdates(bool on, bool remember = true);
  void ToggleDisplayUpdates() { SetDisplayUpdates(!displayUpdates_); }
  bool displayUpdates() const { return displayUpdates_; }
  void SetLookupCountry(bool on);

  void SetTuneToHertz(TuneToHertz tune) { tune_ = std::move(tune); }
  // The list's activation of a row: tunes the radio. False when the row cannot be tuned to or
  // no radio window is there.
  bool ChooseSpot(size_t row);

  const SpotListModel& list() const { return list_; }
  int elapsedSeconds() const { return elapsed_; }
  bool fetching() const { return fetching_; }
  // The telnet connection while the source is a telnet cluster, else nullptr.
  TelnetCluster* telnet() { return telnet_.get(); }

 private:
  void OnFetch(int code, FetchResult result);
  void StartTelnet();
  void StopTelnet();
  // Runs `call` on the window's thread unless this object is gone by then.
  void Post(std::function<void()> call);

  DxClusterHost& host_;
  DxClusterConfig config_;
  Settings* settings_;
  SpotListModel list_;
  TuneToHertz tune_;
  bool displayUpdates_ = false;
  int elapsed_ = 0;
  bool fetching_ = false;
  bool refreshAgain_ = false;
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);
  std::unique_ptr<TelnetCluster> telnet_;
  SpotFetcher fetcher_;  // after telnet_: stopped before the connection it reads
};

}  // namespace tavlorin
