// DxClusterConfig: what the "DX Cluster configuration" dialog sets: the source, the chosen list,
// the servers, the telnet node, the refresh interval and the country look-up switch, read from
// and written to the settings under the window's keys.
//
// A plain value; any thread.
#pragma once

#include "shell/settings.h"
#include "spots/spot_choices.h"
#include "spots/telnet_cluster.h"

namespace tavlorin {

inline constexpr int kShortestRefreshSeconds = 10;

struct DxClusterConfig {
  SpotSource source = SpotSource::kWebPages;
  std::string choice = "25 DX";
  SpotServers servers;
  TelnetClusterConfig telnet;
  int refreshSeconds = 60;  // never below kShortestRefreshSeconds
  bool lookupCountry = true;

  static DxClusterConfig Load(const Settings& settings);
  Status Save(Settings& settings) const;
};

}  // namespace tavlorin
