#include "spots/dx_cluster_config.h"

#include <algorithm>

#include "spots/spot_settings.h"

namespace tavlorin {

DxClusterConfig DxClusterConfig::Load(const Settings& settings) {
  using namespace spot_settings;
  DxClusterConfig c;
  c.source = SpotSourceFromNumber(settings.Get(kCluster)).value_or(SpotSource::kWebPages);
  c.choice = settings.Get(kChoice);
  c.servers.webPagesHost = settings.Get(kHostA);
  c.servers.csvFilesHost = settings.Get(kHostB);
  c.servers.logFile = settings.Get(kCustomLogfile);
  c.servers.lookupHost = settings.Get(kLookupHost);
  c.telnet.host = settings.Get(kTelnetHost);
  c.telnet.port = static_cast<uint16_t>(std::clamp(settings.Get(kTelnetPort), 1, 65535));
  c.telnet.callsign = settings.Get(kTelnetCall);
  c.telnet.password = settings.Get(kTelnetPassword);
  c.refreshSeconds = std::max(settings.Get(kRefreshSeconds), kShortestRefreshSeconds);
  c.lookupCountry = settings.Get(kLookupCountry);
  return c;
}

Status DxClusterConfig::Save(Settings& settings) const {
  using namespace spot_settings;
  Status result;
  auto keep = [&result](Status s) {
    if (result.ok() && !s.ok()) {
      result = s;
    }
  };
  keep(settings.Set(kCluster, static_cast<int>(source)));
  keep(settings.Set(kChoice, choice));
  keep(settings.Set(kHostA, servers.webPagesHost));
  keep(settings.Set(kHostB, servers.csvFilesHost));
  keep(settings.Set(kCustomLogfile, servers.logFile));
  keep(settings.Set(kLookupHost, servers.lookupHost));
  keep(settings.Set(kTelnetHost, telnet.host));
  keep(settings.Set(kTelnetPort, telnet.port));
  keep(settings.Set(kTelnetCall, telnet.callsign));
  keep(settings.Set(kTelnetPassword, telnet.password));
  keep(settings.Set(kRefreshSeconds, std::max(refreshSeconds, kShortestRefreshSeconds)));
  keep(settings.Set(kLookupCountry, lookupCountry));
  return result;
}

}  // namespace tavlorin
