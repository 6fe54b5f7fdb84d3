// Contact operations through the real SQLite path.
#include "logbook/logbook_list.h"
#include "logbook_test_support.h"

namespace tavlorin {
namespace {

using RecordOperationsTest = testing_support::DefinedLogbookTest;

TEST_F(RecordOperationsTest, EveryFieldRoundTrips) {
  CLogbookRecordset in;
  int n = 0;
  for (const LogbookField& f : LogbookFields()) {
    if (f.text != nullptr) {  // quotes, brackets and hashes are data, never SQL
      in.*f.text = std::to_string(++n) + "'\"[#";
    } else if (f.date != nullptr) {
      ++n;
      in.*f.date = OleDateFromCivil(2020, 1, 1 + n % 28, n % 24, n, 0);
    }
  }
  const OleDate before = OleDateNow();
  ASSERT_TRUE(db_->AddRecord(&in).ok());
  EXPECT_GT(in.primaryKey, 0);
  EXPECT_TRUE(Logged("Added record to TBL_LOGBOOK"));
  CLogbookRecordset out;
  ASSERT_TRUE(db_->ReadRecord(in.primaryKey, &out).ok());
  for (const LogbookField& f : LogbookFields()) {
    EXPECT_EQ(LogbookFieldText(out, f), LogbookFieldText(in, f)) << f.name;
  }
  ASSERT_TRUE(out.created.has_value());
  EXPECT_NEAR(*out.created, before, 5.0 / 86400) << "Created is set by the add, in UTC";
  EXPECT_EQ(out.created, out.modified);
}

TEST_F(RecordOperationsTest, UpdateRecordAndOneField) {
  auto c = Contact("DL1ABC", "2024-05-01 10:00:00");
  ASSERT_TRUE(db_->AddRecord(&c).ok());
  Sql("UPDATE TBL_LOGBOOK SET Created = 40000, Modified = 40000");
  CLogbookRecordset r;
  ASSERT_TRUE(db_->ReadRecord(c.primaryKey, &r).ok());
  r.mode = "CW";
  ASSERT_TRUE(db_->UpdateRecord(c.primaryKey, &r).ok());
  ASSERT_TRUE(db_->ReadRecord(c.primaryKey, &r).ok());
  EXPECT_EQ(r.mode, "CW");
  EXPECT_EQ(*r.created, 40000) << "an update keeps Created";
  EXPECT_GT(*r.modified, 40000) << "and moves Modified";
  EXPECT_EQ(db_->UpdateRecord(9999, &r).message().rfind("Error updating TBL_LOGBOOK: ", 0), 0u);
  struct Case {
    const char* field;
    std::string value;
    bool ok;
    const char* stored;  // as SQL reads it back, nullptr: unchanged
  };
  const Case cases[] = {
      {"QSLSentDate", "2024-06-01 00:00:00", true, "45444.0"},
      {"QSLSent", "Y", true, "Y"},
      {"Station", std::string(40, 'S'), true, nullptr},
      {"Name", "", true, ""},
      {"QTH", "x'); DROP TABLE TBL_LOGBOOK; --", true, "x'); DROP TABLE TBL_LOGBOOK; --"},
      {"QSLRecvDate", "not a date", false, nullptr},
      {"StartTime", "", false, nullptr},
      {"NoSuchField", "x", false, nullptr},
      {"PrimaryKey", "7", false, nullptr},
  };
  for (const Case& k : cases) {
    Status s = db_->UpdateField(c.primaryKey, k.field, k.value);
    EXPECT_EQ(s.ok(), k.ok) << k.field << ": " << s.message();
    if (k.stored != nullptr) {
      EXPECT_EQ(Sql(std::string("SELECT ") + k.field + " FROM TBL_LOGBOOK")[0], k.stored);
    }
  }
  EXPECT_EQ(Sql("SELECT Station FROM TBL_LOGBOOK")[0], std::string(32, 'S'));
  EXPECT_EQ(Sql("SELECT StartTime FROM TBL_LOGBOOK")[0], "45413.4166666667");
  EXPECT_FALSE(db_->UpdateField(c.primaryKey + 1, "QSLSent", "Y").ok());
}

TEST_F(RecordOperationsTest, RefusedAddDeleteAndMissingRecords) {
  CLogbookRecordset noStart;
  noStart.station = "DL1ABC";
  EXPECT_EQ(db_->AddRecord(&noStart).message().rfind("Error adding record to TBL_LOGBOOK: ", 0),
            0u);
  EXPECT_EQ(Count("TBL_LOGBOOK"), 0);
  auto c = Contact("DL1ABC", "2024-05-01 10:00:00");
  ASSERT_TRUE(db_->AddRecord(&c).ok());
  ASSERT_TRUE(db_->DeleteRecord(c.primaryKey).ok());
  EXPECT_EQ(Count("TBL_LOGBOOK"), 0);
  EXPECT_FALSE(db_->DeleteRecord(c.primaryKey).ok());  // the message: CliTest.CommandsInSequence
  Status s = db_->ReadRecord(c.primaryKey, &c);
  EXPECT_EQ(s.message().rfind("Error reading TBL_LOGBOOK: No current record.", 0), 0u);
}

TEST_F(RecordOperationsTest, ListNewestFirstWithLimitFilterAndOrder) {
  EXPECT_EQ(CLogbookRecordSetEx{}.Query(),
            "SELECT  Q.* FROM TBL_LOGBOOK AS Q  ORDER BY StartTime DESC, Created DESC");
  EXPECT_EQ((CLogbookRecordSetEx{10, "WHERE Mode = 'CW'", "Station ASC"}.Query()),
            "SELECT TOP 10 Q.* FROM TBL_LOGBOOK AS Q WHERE Mode = 'CW' ORDER BY Station ASC");
  std::vector<CLogbookRecordset> rows;
  for (int day = 1; day <= 20; ++day) {
    rows.push_back(
        Contact(day % 2 ? "ODD" : "EVEN", "2024-04-" + std::to_string(100 + day).substr(1)));
  }
  rows.push_back(Contact("TIE", "2024-04-20", "40m"));  // same start, created later
  ASSERT_EQ(db_->AddRecords(rows).stored, 21);
  Sql("UPDATE TBL_LOGBOOK SET Created = Created + 0.001 WHERE Station = 'TIE'");
  const LogbookField& start = *FindLogbookField("StartTime");

  ASSERT_TRUE(db_->ListRecords(0, "", "", &rows).ok());
  ASSERT_EQ(rows.size(), 21u);
  EXPECT_EQ(rows[0].station, "TIE");
  EXPECT_EQ(rows[1].station, "EVEN");
  ASSERT_TRUE(db_->ListRecords(3, "WHERE [Station] = 'ODD' AND StartTime < #2024-04-10#",
                               "StartTime ASC", &rows)
                  .ok());
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(LogbookFieldText(rows[0], start), "2024-04-01 00:00:00");
  EXPECT_EQ(rows[2].station, "ODD");
  Status bad = db_->ListRecords(0, "WHERE NoSuchColumn = 1", "", &rows);
  EXPECT_NE(bad.message().find("NoSuchColumn"), std::string::npos);
}

TEST_F(RecordOperationsTest, NewestCachedLookUpWins) {
  CQRZRecordSet first, second, other;
  first.qrzCallsign = second.qrzCallsign = "O'BRIEN";  // a quote is data here too
  first.qrzName = "Old name";
  second.qrzName = "New name";
  other.qrzCallsign = "G4XYZ";
  for (CQRZRecordSet* q : {&first, &second, &other}) {
    ASSERT_TRUE(db_->CacheLookup(q).ok());
  }
  EXPECT_TRUE(Logged("Added O'BRIEN to TBL_QRZ"));
  std::optional<CQRZRecordSet> found;
  ASSERT_TRUE(db_->FindCachedLookup("O'BRIEN", &found).ok());
  ASSERT_TRUE(found.has_value());
  EXPECT_EQ(found->qrzName, "New name");
  EXPECT_EQ(found->primaryKey, second.primaryKey);
  ASSERT_TRUE(db_->FindCachedLookup("K1AB", &found).ok());
  EXPECT_FALSE(found.has_value());
}

}  // namespace
}  // namespace tavlorin
