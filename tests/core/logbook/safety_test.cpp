// Crash safety, the bulk add, and bad input: nothing already stored may be lost.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <set>

#include "logbook_test_support.h"

namespace tavlorin {
namespace {

class SafetyTest : public testing_support::LogbookTest {
 protected:
  void SetUp() override {
    LogbookTest::SetUp();
    db_ = MakeDatabase();
    ASSERT_TRUE(db_->Define(false));
  }
  std::unique_ptr<LogbookDatabase> db_;
};

TEST_F(SafetyTest, ContactsReportedStoredSurviveKill) {
  int report[2];
  ASSERT_EQ(pipe(report), 0);
  pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    close(report[0]);
    LogbookDatabase db(path_, *settings_);
    db.Define(false);
    for (int i = 0;; ++i) {
      CLogbookRecordset c = Contact("CRASH" + std::to_string(i), "2024-05-01 10:00");
      if (!db.AddRecord(&c).ok()) {
        _exit(3);
      }
      int32_t key = c.primaryKey;
      if (write(report[1], &key, sizeof key) != sizeof key) {
        _exit(4);
      }
    }
  }
  close(report[1]);
  std::vector<int32_t> reported;
  int32_t key = 0;
  while (reported.size() < 40 && read(report[0], &key, sizeof key) == sizeof key) {
    reported.push_back(key);
  }
  kill(child, SIGKILL);  // somewhere in the middle of the next add
  int status = 0;
  waitpid(child, &status, 0);
  close(report[0]);
  ASSERT_TRUE(WIFSIGNALED(status)) << "the child stopped on its own: " << status;
  ASSERT_EQ(reported.size(), 40u);

  EXPECT_EQ(Sql("PRAGMA integrity_check")[0], "ok");
  auto db = MakeDatabase();
  ASSERT_TRUE(db->Define(false));
  for (int32_t k : reported) {
    CLogbookRecordset r;
    ASSERT_TRUE(db->ReadRecord(k, &r).ok()) << "record " << k << " was reported stored";
    EXPECT_EQ(r.station.rfind("CRASH", 0), 0u);
  }
}

TEST_F(SafetyTest, BulkAddKilledMidwayStoresWholeBatchesOnly) {
  constexpr int kBatch = 2000;
  int report[2];
  ASSERT_EQ(pipe(report), 0);
  pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    close(report[0]);
    LogbookDatabase db(path_, *settings_);
    db.Define(false);
    for (int round = 0;; ++round) {
      std::vector<CLogbookRecordset> batch;
      for (int i = 0; i < kBatch; ++i) {
        batch.push_back(
            Contact("B" + std::to_string(round) + "X" + std::to_string(i), "2024-05-01 10:00"));
      }
      BulkAddResult r = db.AddRecords(batch);
      if (r.stored != kBatch || write(report[1], &round, sizeof round) != sizeof round) {
        _exit(3);
      }
    }
  }
  close(report[1]);
  int round = -1, reported = 0;
  while (reported < 3 && read(report[0], &round, sizeof round) == sizeof round) {
    ++reported;
  }
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  close(report[0]);
  ASSERT_TRUE(WIFSIGNALED(status)) << "the child stopped on its own: " << status;
  ASSERT_EQ(reported, 3);
  EXPECT_EQ(Sql("PRAGMA integrity_check")[0], "ok");
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
  CLogbookRecordset noStart;
  noStart.station = "NOSTART";
  batch.push_back(noStart);
  auto longCall = Contact(std::string(50, 'L'), "2024-05-03");
  batch.push_back(longCall);

  BulkAddResult r = db_->AddRecords(batch);
  ASSERT_TRUE(r.status.ok()) << r.status.message();
  EXPECT_EQ(r.stored, 103);
  EXPECT_EQ(r.duplicates, 2);
  EXPECT_EQ(r.failed, 1);
  EXPECT_EQ(r.stored + r.duplicates + r.failed, static_cast<int>(batch.size()));
  EXPECT_EQ(Count("TBL_LOGBOOK"), 104);
  EXPECT_EQ(Sql("SELECT length(Station) FROM TBL_LOGBOOK WHERE Station LIKE 'LLL%'")[0], "32");
  EXPECT_EQ(Sql("SELECT count(*) FROM TBL_LOGBOOK WHERE Created IS NULL")[0], "0");
}

TEST_F(SafetyTest, MissingFileOrFolder) {
  auto missing = MakeDatabase((dir_ / "absent.sqlite").string());
  CLogbookRecordset r;
  Status s = missing->ReadRecord(1, &r);
  EXPECT_EQ(s.message(), "Error opening database: unable to open database file");
  EXPECT_FALSE(std::filesystem::exists(dir_ / "absent.sqlite")) << "operations never create";

  auto nowhere = MakeDatabase((dir_ / "no" / "such" / "log.sqlite").string());
  log_.clear();
  EXPECT_FALSE(nowhere->Define(false));
  EXPECT_TRUE(Logged("Error creating database: unable to open database file"));
  EXPECT_TRUE(Logged("    Error code .....: 14 0000000E"));
  EXPECT_TRUE(Logged("    Source .........: SQLite"));
}

TEST_F(SafetyTest, FileThatIsNotADatabaseIsLeftAlone) {
  const std::string text = (dir_ / "notes.txt").string();
  const std::string content = "These are my notes, not a logbook.\n";
  std::ofstream(text) << content;
  auto db = MakeDatabase(text);
  log_.clear();
  EXPECT_FALSE(db->Define(false));
  EXPECT_TRUE(Logged("Error opening database: file is not a database"));
  auto c = Contact("DL1ABC", "2024-05-01");
  EXPECT_EQ(db->AddRecord(&c).message(), "Error opening database: file is not a database");
  std::ifstream in(text);
  std::string back((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  EXPECT_EQ(back, content);
}

// Runs `body` in a child process as an unprivileged user (root would ignore file modes).
int RunUnprivileged(const std::function<int()>& body) {
  pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) {
      _exit(90);
    }
    _exit(body());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 99;
}

TEST_F(SafetyTest, ReadOnlyFileRefusesChangesAndKeepsContacts) {
  auto c = Contact("DL1ABC", "2024-05-01");
  ASSERT_TRUE(db_->AddRecord(&c).ok());
  std::filesystem::permissions(dir_, std::filesystem::perms(0755));
  std::filesystem::permissions(path_, std::filesystem::perms(0444));
  int result = RunUnprivileged([this] {
    LogbookDatabase db(path_, *settings_);
    auto more = Contact("G4XYZ", "2024-05-02");
    Status s = db.AddRecord(&more);
    if (s.ok()) {
      return 1;
    }
    const std::string& m = s.message();
    bool saysReadOnly =
        m.find("read-only") != std::string::npos || m.find("readonly") != std::string::npos;
    return m.rfind("Error opening database: ", 0) == 0 && saysReadOnly ? 0 : 2;
  });
  EXPECT_EQ(result, 0) << "1: the add succeeded, 2: the message does not say read-only";
  std::filesystem::permissions(path_, std::filesystem::perms(0644));
  EXPECT_EQ(Sql("SELECT Station FROM TBL_LOGBOOK"), std::vector<std::string>{"DL1ABC"});
  EXPECT_EQ(Sql("PRAGMA integrity_check")[0], "ok");
}

TEST_F(SafetyTest, LoadingCountriesFiles) {
  const std::string fixtures = std::string(TAVLORIN_TEST_SOURCE_DIR) + "/fixtures/";
  bool loaded = true;
  std::string asked;
  int changes = 0;
  db_->SetCountriesChangedCallback([&changes] { ++changes; });
  auto no = [&asked](const std::string& q, int, int) {
    asked = q;
    return false;
  };
  ASSERT_TRUE(db_->LoadCountriesFile(fixtures + "countries_small.txt", no, &loaded).ok());
  EXPECT_FALSE(loaded);
  EXPECT_EQ(asked, "This file contains 14 active and 2 deleted country definitions, continue?");
  EXPECT_EQ(Count("TBL_COUNTRIES"), 402) << "No changes nothing";
  EXPECT_EQ(changes, 0);

  auto yes = [](const std::string&, int, int) { return true; };
  ASSERT_TRUE(db_->LoadCountriesFile(fixtures + "countries_small.txt", yes, &loaded).ok());
  EXPECT_TRUE(loaded);
  EXPECT_EQ(changes, 1) << "open windows are told once";
  EXPECT_EQ(Count("TBL_COUNTRIES"), 16);
  EXPECT_EQ(Sql("SELECT Prefix FROM TBL_COUNTRIES WHERE DXCC = '18'")[0], "4J,4K,4K5");
  EXPECT_EQ(db_->countries().DxccForCallsign("4U5AB"), "117") << "maps rebuilt";
  EXPECT_TRUE(Logged("Country prefix EU allocated to DXCC 27 and 54"));

  Status s = db_->LoadCountriesFile(fixtures + "absent.txt", yes, &loaded);
  EXPECT_FALSE(s.ok());
  EXPECT_FALSE(loaded);
  EXPECT_EQ(Count("TBL_COUNTRIES"), 16) << "a failed load changes nothing";

  ASSERT_TRUE(db_->LoadCountriesFile(
                     fixtures + "countries_12fields.txt",
                     [&asked](const std::string& q, int, int) {
                       asked = q;
                       return true;
                     },
                     &loaded)
                  .ok());
  EXPECT_EQ(asked, "This file contains 0 active and 0 deleted country definitions, continue?");
  EXPECT_EQ(Count("TBL_COUNTRIES"), 0) << "Yes on an empty list empties the table";
  EXPECT_EQ(db_->countries().DxccForCallsign("DL1ABC"), "");
}

}  // namespace
}  // namespace tavlorin
