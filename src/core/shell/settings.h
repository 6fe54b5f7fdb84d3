// Settings: the per-user settings store (an INI-style file of "key=value" lines).
//
// Keys are the persisted names ("CConnectDlg::m_bAutoConnect", "m_nRefreshRadioInterval",
// "LogbookDatabase"); each subsystem declares its keys with their defaults as IntSetting /
// FlagSetting / TextSetting constants in one header of its own, and reads them through Get, so
// the default of an absent key is stated once. Every Set writes the whole file at once and
// atomically (temporary file, fsync, rename): a crash leaves the old file or the new one, never
// half of one.
//
// Thread-safe: one mutex guards the values and the file. Owned by whoever opened it; the
// program normally has one, from Settings::Default().
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "shell/status.h"

namespace tavlorin {

struct IntSetting {
  const char* key;
  int defaultValue;
};
struct FlagSetting {
  const char* key;
  bool defaultValue;
};
struct TextSetting {
  const char* key;
  const char* defaultValue;
};

class Settings {
 public:
  // Loads `file` if it exists; a missing file is an empty store. An unreadable or malformed
  // file leaves the store empty (defaults apply) and is reported by loadStatus(); it is not
  // overwritten until a value is set.
  explicit Settings(std::filesystem::path file);

  // The program's store: "tavlorin.ini" in ConfigDir(). Created on first call.
  static Settings& Default();

  const Status& loadStatus() const { return loadStatus_; }
  const std::filesystem::path& file() const { return file_; }

  int Get(const IntSetting& s) const;
  bool Get(const FlagSetting& s) const;
  std::string Get(const TextSetting& s) const;
  std::vector<std::string> GetList(const char* key) const;
  bool Has(std::string_view key) const;

  Status Set(const IntSetting& s, int value) { return SetRaw(s.key, std::to_string(value)); }
  Status Set(const FlagSetting& s, bool value) { return SetRaw(s.key, value ? "1" : "0"); }
  Status Set(const TextSetting& s, std::string_view value) { return SetRaw(s.key, value); }
  Status SetList(const char* key, const std::vector<std::string>& items);
  Status Remove(std::string_view key);

 private:
  Status SetRaw(std::string_view key, std::string_view value);
  Status WriteLocked() const;

  std::filesystem::path file_;
  Status loadStatus_;
  mutable std::mutex mutex_;
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace tavlorin
