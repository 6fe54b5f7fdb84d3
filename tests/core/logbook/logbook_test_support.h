// Helpers for the logbook tests: a fresh folder and settings file per test, raw SQL on the
// logbook file (to build old or damaged files and to look behind the record operations).
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "logbook/logbook_database.h"
#include "shell/debug_log.h"
#include "shell/settings.h"

namespace tavlorin::testing_support {

class LogbookTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/tavlorin-logbook-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    dir_ = pattern;
    settings_ = std::make_unique<Settings>(dir_ / "settings.ini");
    path_ = (dir_ / "log.sqlite").string();
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }

  // A database object on path_ whose log lines are collected in log_.
  std::unique_ptr<LogbookDatabase> MakeDatabase(const std::string& path = {}) {
    auto db = std::make_unique<LogbookDatabase>(path.empty() ? path_ : path, *settings_);
    db->SetLogSink([this](const std::string& line) { log_.push_back(line); });
    return db;
  }
  bool Logged(const std::string& line) const {
    return std::find(log_.begin(), log_.end(), line) != log_.end();
  }

  // Runs SQL on path_ and returns the rows, columns joined by "|".
  std::vector<std::string> Sql(const std::string& sql) const {
    sqlite3* db = nullptr;
    std::vector<std::string> rows;
    EXPECT_EQ(sqlite3_open(path_.c_str(), &db), SQLITE_OK);
    char* error = nullptr;
    int rc = sqlite3_exec(
        db, sql.c_str(),
        [](void* out, int n, char** values, char**) {
          std::string row;
          for (int i = 0; i < n; ++i) {
            row += (i ? "|" : "") + std::string(values[i] ? values[i] : "NULL");
          }
          static_cast<std::vector<std::string>*>(out)->push_back(row);
          return 0;
        },
        &rows, &error);
    EXPECT_EQ(rc, SQLITE_OK) << sql << ": " << (error ? error : "");
    sqlite3_free(error);
    sqlite3_close(db);
    return rows;
  }
  int64_t Count(const std::string& table) const {
    auto rows = Sql("SELECT count(*) FROM \"" + table + "\"");
    return rows.empty() ? -1 : std::stoll(rows[0]);
  }

  static CLogbookRecordset Contact(const std::string& station, const std::string& start,
                                   const std::string& band = "20m",
                                   const std::string& mode = "SSB") {
    CLogbookRecordset r;
    r.station = station;
    r.startTime = ParseOleDate(start);
    r.bandMHz = band;
    r.mode = mode;
    return r;
  }

  std::filesystem::path dir_;
  std::unique_ptr<Settings> settings_;
  std::string path_;
  std::vector<std::string> log_;
};

// The same with db_ already defined on path_.
class DefinedLogbookTest : public LogbookTest {
 protected:
  void SetUp() override {
    LogbookTest::SetUp();
    db_ = MakeDatabase();
    ASSERT_TRUE(db_->Define(false));
  }
  std::unique_ptr<LogbookDatabase> db_;
};

}  // namespace tavlorin::testing_support
