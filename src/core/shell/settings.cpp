#include "shell/settings.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <sstream>

#include "shell/paths.h"

namespace tavlorin {
namespace {

// Values are stored on one line each; backslash escapes keep new lines, and ";" separates
// the items of a text list.
std::string Escape(std::string_view text, bool escapeSeparator) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case ';':
        out += escapeSeparator ? "\\;" : ";";
        break;
      default:
        out += c;
    }
  }
  return out;
}

// Splits at unescaped `separator` (or not at all when separator is 0) and undoes Escape.
std::vector<std::string> Unescape(std::string_view text, char separator) {
  std::vector<std::string> items(1);
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '\\' && i + 1 < text.size()) {
      char n = text[++i];
      items.back() += n == 'n' ? '\n' : n == 'r' ? '\r' : n;
    } else if (separator != 0 && c == separator) {
      items.emplace_back();
    } else {
      items.back() += c;
    }
  }
  return items;
}

constexpr const char* kHeader =
    "; Tavlorin settings. Written by the program; one key=value a line.";

}  // namespace

Settings::Settings(std::filesystem::path file) : file_(std::move(file)) {
  std::ifstream in(file_, std::ios::binary);
  if (!in) {
    std::error_code ec;
    if (std::filesystem::exists(file_, ec)) {
      loadStatus_ = Status::Error("Cannot read settings file " + file_.string() + ": " +
                                  std::strerror(errno));
    }
    return;
  }
  std::string line;
  int lineNumber = 0;
  while (std::getline(in, line)) {
    ++lineNumber;
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    if (line.empty() || line[0] == ';' || line[0] == '#' || line[0] == '[') {
      continue;
    }
    size_t eq = line.find('=');
    if (eq == std::string::npos || eq == 0) {
      loadStatus_ = Status::Error("Settings file " + file_.string() + " line " +
                                  std::to_string(lineNumber) + " is not key=value; ignored");
      continue;
    }
    values_[line.substr(0, eq)] = line.substr(eq + 1);
  }
}

Settings& Settings::Default() {
  static Settings settings(ConfigDir() / "tavlorin.ini");
  return settings;
}

int Settings::Get(const IntSetting& s) const {
  std::lock_guard lock(mutex_);
  auto it = values_.find(s.key);
  if (it == values_.end()) {
    return s.defaultValue;
  }
  int value = 0;
  const std::string& text = it->second;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size()) {
    return s.defaultValue;
  }
  return value;
}

bool Settings::Get(const FlagSetting& s) const {
  std::lock_guard lock(mutex_);
  auto it = values_.find(s.key);
  if (it == values_.end()) {
    return s.defaultValue;
  }
  const std::string& v = it->second;
  if (v == "1" || v == "true" || v == "yes" || v == "on") {
    return true;
  }
  if (v == "0" || v == "false" || v == "no" || v == "off") {
    return false;
  }
  return s.defaultValue;
}

std::string Settings::Get(const TextSetting& s) const {
  std::lock_guard lock(mutex_);
  auto it = values_.find(s.key);
  if (it == values_.end()) {
    return s.defaultValue;
  }
  return Unescape(it->second, 0).front();
}

std::vector<std::string> Settings::GetList(const char* key) const {
  std::lock_guard lock(mutex_);
  auto it = values_.find(key);
  if (it == values_.end() || it->second.empty()) {
    return {};
  }
  return Unescape(it->second, ';');
}

bool Settings::Has(std::string_view key) const {
  std::lock_guard lock(mutex_);
  return values_.find(key) != values_.end();
}

Status Settings::SetList(const char* key, const std::vector<std::string>& items) {
  std::string joined;
  for (size_t i = 0; i < items.size(); ++i) {
    if (i > 0) {
      joined += ';';
    }
    joined += Escape(items[i], true);
  }
  std::lock_guard lock(mutex_);
  values_[key] = joined;
  return WriteLocked();
}

Status Settings::Remove(std::string_view key) {
  std::lock_guard lock(mutex_);
  auto it = values_.find(key);
  if (it == values_.end()) {
    return Status::Ok();
  }
  values_.erase(it);
  return WriteLocked();
}

Status Settings::SetRaw(std::string_view key, std::string_view value) {
  if (key.empty() || key.find_first_of("=\n\r") != std::string_view::npos) {
    return Status::Error("Invalid settings key \"" + std::string(key) + "\"");
  }
  std::lock_guard lock(mutex_);
  std::string escaped = Escape(value, false);
  auto it = values_.find(key);
  if (it != values_.end() && it->second == escaped) {
    return Status::Ok();
  }
  values_[std::string(key)] = std::move(escaped);
  return WriteLocked();
}

Status Settings::WriteLocked() const {
  std::error_code ec;
  std::filesystem::create_directories(file_.parent_path(), ec);
  std::ostringstream text;
  text << kHeader << '\n';
  for (const auto& [key, value] : values_) {
    text << key << '=' << value << '\n';
  }
  const std::string data = text.str();
  const std::string temp = file_.string() + ".tmp";
  int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (fd < 0) {
    return Status::Error("Cannot write settings file " + temp + ": " + std::strerror(errno));
  }
  size_t done = 0;
  while (done < data.size()) {
    ssize_t n = ::write(fd, data.data() + done, data.size() - done);
    if (n < 0 && errno == EINTR) {
      continue;
    }
    if (n <= 0) {
      int err = errno;
      ::close(fd);
      ::unlink(temp.c_str());
      return Status::Error("Cannot write settings file " + temp + ": " + std::strerror(err));
    }
    done += static_cast<size_t>(n);
  }
  if (::fsync(fd) != 0 || ::close(fd) != 0) {
    ::unlink(temp.c_str());
    return Status::Error("Cannot write settings file " + temp + ": " + std::strerror(errno));
  }
  if (::rename(temp.c_str(), file_.c_str()) != 0) {
    int err = errno;
    ::unlink(temp.c_str());
    return Status::Error("Cannot replace settings file " + file_.string() + ": " +
                         std::strerror(err));
  }
  return Status::Ok();
}

}  // namespace tavlorin
