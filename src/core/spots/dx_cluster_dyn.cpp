#include "spots/dx_cluster_dyn.h"

#include <algorithm>

#include "spots/spot_settings.h"

namespace tavlorin {

CDXClusterDyn::CDXClusterDyn(DxClusterHost& host, DxClusterConfig config,
                             const CountryTables* countries, Settings* settings)
    : host_(host),
      config_(std::move(config)),
      settings_(settings),
      list_(countries),
      fetcher_([this](int code, FetchResult result) {
        Post([this, code, result = std::move(result)]() mutable {
          OnFetch(code, std::move(result));
        });
      }) {
  config_.refreshSeconds = std::max(config_.refreshSeconds, kShortestRefreshSeconds);
  list_.SetLookupCountry(config_.lookupCountry);
}

CDXClusterDyn::~CDXClusterDyn() { host_.KillTimer(kRefreshTimer); }

void CDXClusterDyn::Post(std::function<void()> call) {
  std::weak_ptr<int> alive = alive_;
  host_.PostToWindow([alive, call = std::move(call)] {
    if (alive.lock()) {
      call();
    }
  });
}

void CDXClusterDyn::Open() {
  if (config_.source == SpotSource::kTelnet) {
    StartTelnet();
  }
  host_.ShowProgress(0, config_.refreshSeconds);
  if (settings_ != nullptr && settings_->Get(spot_settings::kStart)) {
    SetDisplayUpdates(true, false);
  }
}

void CDXClusterDyn::Close() {
  SetDisplayUpdates(false, false);
  StopTelnet();
}

void CDXClusterDyn::Configure(DxClusterConfig config) {
  config.refreshSeconds = std::max(config.refreshSeconds, kShortestRefreshSeconds);
  const bool telnetChanged =
      config.source != config_.source || config.telnet.host != config_.telnet.host ||
      config.telnet.port != config_.telnet.port ||
      config.telnet.callsign != config_.telnet.callsign ||
      config.telnet.password != config_.telnet.password;
  config_ = std::move(config);
  if (settings_ != nullptr) {
    if (Status s = config_.Save(*settings_); !s.ok()) {
      host_.ShowMessage(s.message());
    }
  }
  list_.SetLookupCountry(config_.lookupCountry);
  list_.ForgetBody();
  if (telnetChanged) {
    StopTelnet();
    if (config_.source == SpotSource::kTelnet) {
      StartTelnet();
    }
  }
  host_.ShowProgress(elapsed_, config_.refreshSeconds);
}

void CDXClusterDyn::StartTelnet() {
  if (config_.telnet.host.empty() || config_.telnet.callsign.empty()) {
    host_.ShowMessage("Set the telnet cluster's host and login callsign first");
    return;
  }
  TelnetCluster::Callbacks callbacks;
  callbacks.spotLine = [this](const std::string&) {
    Post([this] {
      if (displayUpdates_) {
        Refresh();
      }
    });
  };
  callbacks.otherLine = [this](const std::string& line) {
    Post([this, line] { host_.ShowClusterLine(line); });
  };
  callbacks.status = [this](const std::string& text) {
    Post([this, text] { host_.ShowMessage(text); });
  };
  telnet_ = std::make_unique<TelnetCluster>(config_.telnet, std::move(callbacks));
  TelnetCluster* cluster = telnet_.get();
  fetcher_.SetClusterBody([cluster] { return cluster->SpotBody(); });
}

void CDXClusterDyn::StopTelnet() {
  fetcher_.SetClusterBody(nullptr);
  telnet_.reset();
}

void CDXClusterDyn::Refresh() {
  if (fetching_) {
    refreshAgain_ = true;
    return;
  }
  fetching_ = true;
  fetcher_.Fetch(MakeSpotRequest(config_.source, config_.choice, config_.servers));
}

void CDXClusterDyn::OnFetch(int code, FetchResult result) {
  if (code == kFetchUnderWay) {
    host_.ShowStatusPane(kStatusFetching);
    return;
  }
  host_.ShowStatusPane(kStatusShowing);
  fetching_ = false;
  SpotListModel::Update update = list_.Apply(result);
  if (update.kind == SpotListModel::Update::Kind::kFailed) {
    host_.ShowMessage(update.message);
  } else if (update.kind == SpotListModel::Update::Kind::kRedrawn) {
    host_.ShowTitle(list_.title());
    host_.ShowList(list_, update);
  }
  elapsed_ = 0;
  host_.ShowProgress(elapsed_, config_.refreshSeconds);
  if (displayUpdates_) {
    host_.SetTimer(kRefreshTimer, kTick);
  }
  if (refreshAgain_) {
    refreshAgain_ = false;
    Refresh();
  }
}

void CDXClusterDyn::OnTimer(int id) {
  if (id != kRefreshTimer || !displayUpdates_) {
    return;
  }
  ++elapsed_;
  host_.ShowProgress(elapsed_, config_.refreshSeconds);
  if (elapsed_ >= config_.refreshSeconds) {
    // The finished fetch arms the timer again, so a slow server is not asked twice.
    host_.KillTimer(kRefreshTimer);
    Refresh();
  }
}

int CDXClusterDyn::SetRefreshInterval(int seconds) {
  config_.refreshSeconds = std::max(seconds, kShortestRefreshSeconds);
  if (settings_ != nullptr) {
    settings_->Set(spot_settings::kRefreshSeconds, config_.refreshSeconds);
  }
  elapsed_ = 0;
  host_.ShowProgress(elapsed_, config_.refreshSeconds);
  if (displayUpdates_) {
    host_.SetTimer(kRefreshTimer, kTick);
  }
  return config_.refreshSeconds;
}

void CDXClusterDyn::SetDisplayUpdates(bool on, bool remember) {
  displayUpdates_ = on;
  if (on) {
    list_.ForgetBody();
    Refresh();
    host_.SetTimer(kRefreshTimer, kTick);
  } else {
    host_.KillTimer(kRefreshTimer);
    elapsed_ = 0;
    host_.ShowProgress(elapsed_, config_.refreshSeconds);
  }
  if (remember && settings_ != nullptr) {
    settings_->Set(spot_settings::kStart, on);
  }
}

void CDXClusterDyn::SetLookupCountry(bool on) {
  config_.lookupCountry = on;
  list_.SetLookupCountry(on);
  if (settings_ != nullptr) {
    settings_->Set(spot_settings::kLookupCountry, on);
  }
}

bool CDXClusterDyn::ChooseSpot(size_t row) {
  std::optional<Frequency> hz = list_.HertzOfRow(row);
  if (!hz || *hz == 0 || !tune_) {
    return false;
  }
  tune_(*hz);
  return true;
}

}  // namespace tavlorin
