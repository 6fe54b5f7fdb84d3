// The bulk add over chunks: one transaction however many chunks, duplicates found across
// chunks and against stored contacts whatever the order of their times, a cancel or a dry run
// that stores nothing.
#include "logbook_test_support.h"

namespace tavlorin {
namespace {

using testing_support::DefinedLogbookTest;

class BulkAddChunksTest : public DefinedLogbookTest {
 protected:
  BulkAddResult Add(const std::vector<std::vector<CLogbookRecordset>>& chunks, bool cancelLast,
                    bool rollBack, std::vector<std::string>* reasons = nullptr) {
    size_t next = 0;
    BulkAddSource source;
    source.rollBack = rollBack;
    source.next = [&](bool* cancel) {
      if (next == chunks.size()) {
        *cancel = cancelLast;
        return std::span<const CLogbookRecordset>();
      }
      return std::span<const CLogbookRecordset>(chunks[next++]);
    };
    source.notStored = [&](size_t index, const std::string& reason) {
      if (reasons != nullptr) {
        reasons->push_back(std::to_string(next - 1) + ":" + std::to_string(index) + " " + reason);
      }
    };
    return db_->AddRecords(source);
  }
};

TEST_F(BulkAddChunksTest, DuplicatesAcrossChunksAndStoredContacts) {
  CLogbookRecordset stored = Contact("DL1AA", "2024-05-10 10:00:00");
  ASSERT_TRUE(db_->AddRecord(&stored).ok());
  // The second chunk reaches both before and after the first one's span of times, and the
  // third repeats a contact of the first.
  const std::vector<std::vector<CLogbookRecordset>> chunks = {
      {Contact("G4XYZ", "2024-05-05 10:00:00"), Contact("G4XYZ", "2024-05-06 10:00:00")},
      {Contact("DL1AA", "2024-05-10 10:00:00"), Contact("K1AA", "2024-05-01 10:00:00"),
       Contact("K1AA", "2024-05-01 10:00:00", "40m")},
      {Contact("G4XYZ", "2024-05-06 10:00:00"), CLogbookRecordset()},
  };
  std::vector<std::string> reasons;
  BulkAddResult r = Add(chunks, false, false, &reasons);
  ASSERT_TRUE(r.status.ok()) << r.status.message();
  EXPECT_EQ(r.stored, 4);
  EXPECT_EQ(r.duplicates, 2);
  EXPECT_EQ(r.failed, 1);
  ASSERT_EQ(reasons.size(), 3u);
  EXPECT_EQ(reasons[0].substr(0, 4), "1:0 ");
  EXPECT_EQ(reasons[1].substr(0, 4), "2:0 ");
  EXPECT_EQ(reasons[2], "2:1 the contact has no StartTime");
  EXPECT_EQ(Count("TBL_LOGBOOK"), 5);
}

TEST_F(BulkAddChunksTest, CancelAndDryRunStoreNothing) {
  const std::vector<std::vector<CLogbookRecordset>> chunks = {
      {Contact("G4XYZ", "2024-05-05 10:00:00")}, {Contact("G4XYZ", "2024-05-05 10:00:00")}};
  BulkAddResult cancelled = Add(chunks, true, false);
  EXPECT_TRUE(cancelled.cancelled);
  EXPECT_EQ(cancelled.stored, 0);
  EXPECT_EQ(Count("TBL_LOGBOOK"), 0);
  BulkAddResult dry = Add(chunks, false, true);
  EXPECT_EQ(dry.stored, 1);
  EXPECT_EQ(dry.duplicates, 1);
  EXPECT_EQ(Count("TBL_LOGBOOK"), 0);
}

}  // namespace
}  // namespace tavlorin
