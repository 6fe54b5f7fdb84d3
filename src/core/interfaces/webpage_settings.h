// WebPageConfig: the settings of the web page update (CWebPageUpdate) under their keys, the
// dialog's validation and its help text.
//
// The FTP password lives in the settings file like every other setting (a file only its owner
// may read) and is never written to any log. A plain value; any thread.
#pragma once

#include <string>

#include "shell/settings.h"

namespace tavlorin {

namespace webpage_settings {
inline constexpr TextSetting kFilename{"CWebPageUpdate::m_strFilename", ""};
inline constexpr TextSetting kFtpHostName{"CWebPageUpdate::m_strFTPHostName", ""};
inline constexpr TextSetting kFtpDirectory{"CWebPageUpdate::m_strFTPDirectory", ""};
inline constexpr TextSetting kFtpUserId{"CWebPageUpdate::m_strFTPUserID", ""};
inline constexpr TextSetting kFtpPassword{"CWebPageUpdate::m_strFTPPassword", ""};
inline constexpr FlagSetting kAutoOn{"CWebPageUpdate::m_bAutoOn", false};
inline constexpr IntSetting kUpdateMinutes{"CWebPageUpdate::m_nUpdateMinutes", 10};
}  // namespace webpage_settings

// The host name that means "copy into a local directory" instead of FTP.
inline constexpr const char* kLocalHostName = "local";

struct WebPageConfig {
  std::string templatePath;  // the template page
  std::string host;          // FTP host ("host" or "host:port"), or "local"
  std::string directory;     // optional remote directory; for "local" the target directory
  std::string user;
  std::string password;
  bool autoOn = false;
  int updateMinutes = 10;

  bool isLocal() const { return host == kLocalHostName; }
  static WebPageConfig Load(const Settings& settings);
  Status Save(Settings& settings) const;
};

// The dialog's check when the settings are accepted: empty when they are fine, else the
// message for a box titled "Error". An FTP host needs the user id and the password (the
// directory is optional); "local" needs neither.
std::string ValidateWebPageConfig(const WebPageConfig& config);

inline constexpr const char* kWebPageErrorCaption = "Error";
// The dialog's help text, line by line, shown as it stands.
extern const char* const kWebPageHelpLines[];
extern const size_t kWebPageHelpLineCount;

}  // namespace tavlorin
