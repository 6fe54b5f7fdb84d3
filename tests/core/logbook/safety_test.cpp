// Crash safety, the bulk add, and bad input: nothing already stored may be lost.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "logbook_test_support.h"

namespace tavlorin {
namespace {

class SafetyTest : public testing_support::DefinedLogbookTest {
 protected:
  // Forks a child that calls `add` on path_ over and over and reports each value it returns
  // (negative: failed); kills it with SIGKILL after `count` reports and returns them.
  std::vector<int32_t> KillAfterReports(size_t count,
                                        const std::function<int32_t(LogbookDatabase&, int)>& add) {
    int report[2];
    EXPECT_EQ(pipe(report), 0);
    pid_t child = fork();
    if (child == 0) {
      close(report[0]);
      LogbookDatabase db(path_, *settings_);
      db.Define(false);
      for (int i = 0;; ++i) {
        int32_t value = add(db, i);
        if (value < 0 || write(report[1], &value, sizeof value) != sizeof value) {
          _exit(3);
        }
      }
    }
    close(report[1]);
    std::vector<int32_t> reported;
    int32_t value = 0;
    while (reported.size() < count && read(report[0], &value, sizeof value) == sizeof value) {
      reported.push_back(value);
    }
    kill(child, SIGKILL);  // somewhere in the middle of the next add
    int status = 0;
    waitpid(child, &status, 0);
    close(report[0]);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the child stopped on its own: " << status;
    EXPECT_EQ(Sql("PRAGMA integrity_check")[0], "ok");
    return reported;
  }
};

TEST_F(SafetyTest, ContactsReportedStoredSurviveKill) {
  auto reported = KillAfterReports(40, [](LogbookDatabase& db, int i) {
    CLogbookRecordset c = Contact("CRASH" + std::to_string(i), "2024-05-01 10:00");
    return db.AddRecord(&c).ok() ? c.primaryKey : -1;
  });
  ASSERT_EQ(reported.size(), 40u);
  EXPECT_TRUE(MakeDatabase()->Define(false));
  for (int32_t key : reported) {
    CLogbookRecordset r;
    EXPECT_TRUE(db_->ReadRecord(key, &r).ok()) << "record " << key << " was reported stored";
  }
}

TEST_F(SafetyTest, BulkAddKilledMidwayStoresWholeBatchesOnly) {
  constexpr int kBatch = 2000;
  auto reported = KillAfterReports(3, [](LogbookDatabase& db, int round) {
    std::vector<CLogbookRecordset> batch;
    for (int i = 0; i < kBatch; ++i) {
      batch.push_back(
          Contact("B" + std::to_string(round) + "X" + std::to_string(i), "2024-05-01 10:00"));
    }
    return db.AddRecords(batch).stored == kBatch ? round : -1;
  });
  ASSERT_EQ(reported.size(), 3u);
  const int64_t stored = Count("TBL_LOGBOOK");
  EXPECT_GE(stored, 3 * kBatch) << "every batch reported stored is there";
  EXPECT_EQ(stored % kBatch, 0) << "a batch is stored whole or not at all";
}

TEST_F(SafetyTest, BulkAddCountsStoredFailedAndDuplicates) {
  auto existing = Contact("DL1ABC", "2024-05-01 10:00:00");
  ASSERT_TRUE(db_->AddRecord(&existing).ok());
  std::vector<CLogbookRecordset> batch;
  for (int i = 0; i < 100; ++i) {
    batch.push_back(Contact("G" + std::to_string(i), "2024-05-02 10:00:00"));
  }
  batch.push_back(Contact("DL1ABC", "2024-05-01 10:00:00"));         // stored before
  batch.push_back(Contact("G7", "2024-05-02 10:00:00"));             // earlier in the batch
  batch.push_back(Contact("DL1ABC", "2024-05-01 10:00:00", "40m"));  // other band: new
  batch.push_back(Contact("DL1ABC", "2024-05-01 10:01:00"));         // a minute later: new
  batch.push_back(CLogbookRecordset{});                              // no start time: fails
  batch.push_back(Contact(std::string(50, 'L'), "2024-05-03"));

  BulkAddResult r = db_->AddRecords(batch);
  ASSERT_TRUE(r.status.ok()) << r.status.message();
  EXPECT_EQ(r.stored, 103);
  EXPECT_EQ(r.duplicates, 2);
  EXPECT_EQ(r.failed, 1);
  EXPECT_EQ(Count("TBL_LOGBOOK"), 104);
  EXPECT_EQ(Sql("SELECT length(Station) FROM TBL_LOGBOOK WHERE Station LIKE 'LLL%'")[0], "32");
  EXPECT_EQ(Sql("SELECT count(*) FROM TBL_LOGBOOK WHERE Created IS NULL")[0], "0");
}

TEST_F(SafetyTest, MissingFileOrFolderAndFileThatIsNotADatabase) {
  CLogbookRecordset r;
  EXPECT_EQ(MakeDatabase((dir_ / "absent.sqlite").string())->ReadRecord(1, &r).message(),
            "Error opening database: unable to open database file");
  EXPECT_FALSE(std::filesystem::exists(dir_ / "absent.sqlite")) << "operations never create";
  log_.clear();
  EXPECT_FALSE(MakeDatabase((dir_ / "no" / "such" / "log.sqlite").string())->Define(false));
  EXPECT_TRUE(Logged("Error creating database: unable to open database file"));
  EXPECT_TRUE(Logged("    Error code .....: 14 0000000E"));
  EXPECT_TRUE(Logged("    Source .........: SQLite"));

  const std::string text = (dir_ / "notes.txt").string();
  const std::string content = "These are my notes, not a logbook.\n";
  std::ofstream(text) << content;
  auto db = MakeDatabase(text);
  EXPECT_FALSE(db->Define(false));
  EXPECT_TRUE(Logged("Error opening database: file is not a database"));
  r = Contact("DL1ABC", "2024-05-01");
  EXPECT_EQ(db->AddRecord(&r).message(), "Error opening database: file is not a database");
  std::ifstream in(text);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), content) << "left alone";
}

TEST_F(SafetyTest, ReadOnlyFileRefusesChangesAndKeepsContacts) {
  auto c = Contact("DL1ABC", "2024-05-01");
  ASSERT_TRUE(db_->AddRecord(&c).ok());
  std::filesystem::permissions(dir_, std::filesystem::perms(0755));
  std::filesystem::permissions(path_, std::filesystem::perms(0444));
  // A child process as an unprivileged user: root would ignore file modes.
  pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) {
      _exit(90);
    }
    LogbookDatabase db(path_, *settings_);
    auto more = Contact("G4XYZ", "2024-05-02");
    const std::string m = db.AddRecord(&more).message();
    bool saysReadOnly =
        m.find("read-only") != std::string::npos || m.find("readonly") != std::string::npos;
    _exit(m.rfind("Error opening database: ", 0) == 0 && saysReadOnly ? 0 : 2);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : 99, 0)
      << "2: the add succeeded or the message does not say read-only";
  std::filesystem::permissions(path_, std::filesystem::perms(0644));
  EXPECT_EQ(Sql("SELECT Station FROM TBL_LOGBOOK"), std::vector<std::string>{"DL1ABC"});
  EXPECT_EQ(Sql("PRAGMA integrity_check")[0], "ok");
}

TEST_F(SafetyTest, LoadingCountriesFiles) {
  const std::string fixtures = std::string(TAVLORIN_TEST_SOURCE_DIR) + "/fixtures/";
  bool loaded = true, answer = false;
  std::string asked;
  int changes = 0;
  db_->SetCountriesChangedCallback([&changes] { ++changes; });
  auto ask = [&](const std::string& q, int, int) {
    asked = q;
    return answer;
  };
  ASSERT_TRUE(db_->LoadCountriesFile(fixtures + "countries_small.txt", ask, &loaded).ok());
  EXPECT_FALSE(loaded);
  EXPECT_EQ(asked, "This file contains 14 active and 2 deleted country definitions, continue?");
  EXPECT_EQ(Count("TBL_COUNTRIES"), 402) << "No changes nothing";
  EXPECT_EQ(changes, 0);

  answer = true;
  ASSERT_TRUE(db_->LoadCountriesFile(fixtures + "countries_small.txt", ask, &loaded).ok());
  EXPECT_TRUE(loaded);
  EXPECT_EQ(changes, 1) << "open windows are told once";
  EXPECT_EQ(Count("TBL_COUNTRIES"), 16);
  EXPECT_EQ(Sql("SELECT Prefix FROM TBL_COUNTRIES WHERE DXCC = '18'")[0], "4J,4K,4K5");
  EXPECT_EQ(db_->countries().DxccForCallsign("4U5AB"), "117") << "maps rebuilt";
  EXPECT_TRUE(Logged("Country prefix EU allocated to DXCC 27 and 54"));

  EXPECT_FALSE(db_->LoadCountriesFile(fixtures + "absent.txt", ask, &loaded).ok());
  EXPECT_FALSE(loaded);
  EXPECT_EQ(Count("TBL_COUNTRIES"), 16) << "a failed load changes nothing";

  ASSERT_TRUE(db_->LoadCountriesFile(fixtures + "countries_12fields.txt", ask, &loaded).ok());
  EXPECT_EQ(asked, "This file contains 0 active and 0 deleted country definitions, continue?");
  EXPECT_EQ(Count("TBL_COUNTRIES"), 0) << "Yes on an empty list empties the table";
  EXPECT_EQ(db_->countries().DxccForCallsign("DL1ABC"), "");
}

}  // namespace
}  // namespace tavlorin
