#include "interfaces/webpage_settings.h"

#include <iterator>

namespace tavlorin {

const char* const kWebPageHelpLines[] = {
    "To maintain a web page with your current TVR activity you must first create a template web "
    "page with tokens (below) which are replaced with values from TVR. The supported tokens are:",
    "    ###-frequency-### - frequency in MHz,",
    "    ###-mode-###      - mode,",
    "    ###-radio-###     - radio,",
    "    ###-timestamp-### - current date and time.",
    "The sequence of operations is:",
    "    1: A copy of the template web page is made,",
    "    2: The tokens are replaced with the TVR values,",
    "    3: The copy is then uploaded.",
    "The uploaded file has the same name as the template page.",
    "The upload uses FTP or, if you specify the Host name as local, the file is copied into the "
    "directory.",
    "To use FTP you must specify your remote FTP directory access information (username and "
    "password).",
    "    Host name - the FTP host name,",
    "    Directory - the optional remote directory,",
    "    User ID   - the user id for accessing the site,",
    "    Password  - the password for accessing the site.",
    "Select the update interval with the auto-update options.",
    "Press 'Test FTP' to test the FTP definition and upload a new webpage.",
    "Press 'Preview' to display the new webpage without uploading it.",
};
const size_t kWebPageHelpLineCount = std::size(kWebPageHelpLines);

WebPageConfig WebPageConfig::Load(const Settings& settings) {
  using namespace webpage_settings;
  WebPageConfig c;
  c.templatePath = settings.Get(kFilename);
  c.host = settings.Get(kFtpHostName);
  c.directory = settings.Get(kFtpDirectory);
  c.user = settings.Get(kFtpUserId);
  c.password = settings.Get(kFtpPassword);
  c.autoOn = settings.Get(kAutoOn);
  c.updateMinutes = settings.Get(kUpdateMinutes);
  return c;
}

Status WebPageConfig::Save(Settings& settings) const {
  using namespace webpage_settings;
  for (Status s : {settings.Set(kFilename, templatePath), settings.Set(kFtpHostName, host),
                   settings.Set(kFtpDirectory, directory), settings.Set(kFtpUserId, user),
                   settings.Set(kFtpPassword, password), settings.Set(kAutoOn, autoOn),
                   settings.Set(kUpdateMinutes, updateMinutes)}) {
    if (!s.ok()) {
      return s;
    }
  }
  return Status::Ok();
}

std::string ValidateWebPageConfig(const WebPageConfig& config) {
  if (config.host.empty()) {
    return "The host name is required.";
  }
  if (!config.isLocal() && (config.user.empty() || config.password.empty())) {
    return "A value is required for all fields.";
  }
  return {};
}

}  // namespace tavlorin
