#include "interfaces/webpage_upload.h"

#include <fstream>
#include <sstream>

#include "interfaces/webpage_builder.h"
#include "interfaces/webpage_ftp.h"

namespace tavlorin {
namespace {

bool ReadText(const std::filesystem::path& file, std::string* text) {
  std::ifstream in(file, std::ios::binary);
  if (!in) {
    return false;
  }
  std::ostringstream whole;
  whole << in.rdbuf();
  text->clear();
  for (char c : whole.str()) {
    if (c != '\r') {
      *text += c;
    }
  }
  return true;
}

Status CopyLocal(const std::filesystem::path& built, const std::string& remoteName,
                 const WebPageConfig& config, const UploadLog& log) {
  if (config.directory.empty()) {
    log(">> No target directory is set");
    return Status::Error("No target directory is set for the local copy");
  }
  const std::filesystem::path target = std::filesystem::path(config.directory) / remoteName;
  log(">> Copying " + built.string());
  log(">>      to " + target.string());
  std::error_code ec;
  if (std::filesystem::equivalent(target, config.templatePath, ec)) {
    log(">> Copy failed: the target is the template itself");
    return Status::Error("The target directory holds the template; the copy would replace it");
  }
  std::filesystem::copy_file(built, target, std::filesystem::copy_options::overwrite_existing,
                             ec);
  if (ec) {
    log(">> Copy failed: " + ec.message());
    return Status::Error("Cannot copy to " + target.string() + ": " + ec.message());
  }
  log(">> OK");
  return Status::Ok();
}

// One put and its check; Ok when the copy read back equal.
Status PutAndCheck(WebPageFtp& ftp, const std::filesystem::path& built,
                   const std::string& remoteName, const UploadLog& log) {
  log(">> Copying to " + remoteName);
  if (Status s = ftp.PutAscii(built, remoteName); !s.ok()) {
    log(">> FTP PutFile failed.");
    log(">> " + s.message());
    return s;
  }
  log(">> Checking upload");
  std::filesystem::path check = built;
  check += kCheckSuffix;
  if (Status s = ftp.GetAscii(remoteName, check); !s.ok()) {
    log(">> FTP GetFile failed.");
    log(">> " + s.message());
    return s;
  }
  if (!SameText(built, check)) {
    return Status::Error("The copy on the server differs from the page");
  }
  log(">> OK");
  return Status::Ok();
}

}  // namespace

bool SameText(const std::filesystem::path& a, const std::filesystem::path& b) {
  std::string first;
  std::string second;
  return ReadText(a, &first) && ReadText(b, &second) && first == second;
}

Status UploadWebPage(const std::filesystem::path& built, const std::string& remoteName,
                     const WebPageConfig& config, const std::string& timestamp,
                     const UploadLog& log, const UploadOptions& options) {
  log(">> Time now is " + timestamp);
  log(">> Connecting to " + config.host);
  if (config.isLocal()) {
    return CopyLocal(built, remoteName, config, log);
  }
  WebPageFtp ftp(config.host, config.user, config.password, options.abort);
  if (Status s = ftp.Open(); !s.ok()) {
    log("Error opening " + config.host + " - " + s.message());
    return Status::Error("Error opening " + config.host + " - " + s.message());
  }
  if (!config.directory.empty()) {
    log(">> Changing directory to " + config.directory);
    if (Status s = ftp.ChangeDirectory(config.directory); !s.ok()) {
      log(">> " + s.message());
      return s;
    }
  }
  Status last;
  for (int attempt = 1; attempt <= options.attempts; ++attempt) {
    if (attempt > 1) {
      options.clock->SleepFor(options.retryWait);
    }
    last = PutAndCheck(ftp, built, remoteName, log);
    if (last.ok()) {
      return last;
    }
    if (options.abort != nullptr && options.abort->load()) {
      break;
    }
    log(attempt < options.attempts ? ">> Error, retrying" : ">> Error, upload failed");
  }
  return last;
}

}  // namespace tavlorin
