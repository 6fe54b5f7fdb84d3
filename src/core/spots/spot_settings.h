// The settings keys of the DX spot subsystem (the DX cluster window, the spot submission and the
// cluster status record), with their defaults, in one place.
#pragma once

#include "shell/settings.h"

namespace tavlorin::spot_settings {

// The DX cluster window.
inline constexpr IntSetting kCluster{"CDXClusterDyn::m_nCluster", 0};  // SpotSource number
inline constexpr IntSetting kFontSize{"CDXClusterDyn::m_nFontSize", 10};
inline constexpr TextSetting kCustomLogfile{"CDXClusterDyn::m_strCustomLogfile", ""};
inline constexpr FlagSetting kStart{"CDXClusterDyn::start", false};
inline constexpr IntSetting kRefreshSeconds{"CDXClusterDyn::m_nRefreshSeconds", 60};
inline constexpr TextSetting kChoice{"CDXClusterDyn::m_strChoice", "25 DX"};
inline constexpr FlagSetting kLookupCountry{"CDXClusterDyn::m_bLookupCountry", true};
// The servers point nowhere until the user names them: "host" or "host:port" (or a whole
// "https://host" address). A is the web pages' server, B the CSV files' server.
inline constexpr TextSetting kHostA{"CDXClusterDyn::m_strHostA", ""};
inline constexpr TextSetting kHostB{"CDXClusterDyn::m_strHostB", ""};
inline constexpr TextSetting kLookupHost{"CDXClusterDyn::m_strLookupHost", ""};
// The telnet cluster node.
inline constexpr TextSetting kTelnetHost{"CDXClusterDyn::m_strTelnetHost", ""};
inline constexpr IntSetting kTelnetPort{"CDXClusterDyn::m_nTelnetPort", 7300};
inline constexpr TextSetting kTelnetCall{"CDXClusterDyn::m_strTelnetCall", ""};
inline constexpr TextSetting kTelnetPassword{"CDXClusterDyn::m_strTelnetPassword", ""};
// The desktop program formats the geometry key with the window's number.
inline constexpr const char* kWindowGeometryFormat = "Window Geometry %08X";
inline constexpr const char* kListFont = "Courier";

// The spot submission dialog.
inline constexpr TextSetting kMyCall{"CSubmitSpot::m_strMyCall", ""};
inline constexpr TextSetting kSubmitHost{"CSubmitSpot::m_strHost", ""};

// The cluster status record.
inline constexpr TextSetting kStatusCallsign{"CTVRClusterUpdate::m_strCallsign", ""};
inline constexpr TextSetting kStatusName{"CTVRClusterUpdate::m_strName", ""};
inline constexpr TextSetting kStatusComment{"CTVRClusterUpdate::m_strComment", ""};
inline constexpr TextSetting kStatusLocator{"CTVRClusterUpdate::m_strLocator", ""};
inline constexpr TextSetting kStatusDxcc{"CTVRClusterUpdate::m_strDXCC", ""};
inline constexpr TextSetting kStatusHost{"CTVRClusterUpdate::m_strHost", ""};
inline constexpr TextSetting kStatusPort{"CTVRClusterUpdate::m_strPort", ""};
inline constexpr FlagSetting kStatusAutoOn{"CTVRClusterUpdate::m_bAutoOn", false};
inline constexpr IntSetting kStatusUpdateMinutes{"CTVRClusterUpdate::m_nUpdateMinutes", 10};

}  // namespace tavlorin::spot_settings
