// The contact operations of LogbookDatabase: add, read, update, update one field, delete, and
// the bulk add of the importers.
#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "logbook/logbook_database.h"
#include "logbook/logbook_row_io.h"
#include "logbook/ole_date.h"

namespace tavlorin {
namespace {

std::string EngineText(SqliteDb& db) { return db.ErrorText() + " - " + db.ErrorDescription(); }

// Two contacts are the same when station, band, mode and start time (to the second) agree.
std::string DuplicateKey(const CLogbookRecordset& r) {
  std::string key = std::to_string(std::llround(*r.startTime * 86400.0));
  key.reserve(key.size() + r.station.size() + r.bandMHz.size() + r.mode.size() + 3);
  key += '\x1f';
  key += r.station;
  key += '\x1f';
  key += r.bandMHz;
  key += '\x1f';
  key += r.mode;
  return key;
}

bool NeedsCut(const std::vector<LogbookDatabase::CutStep>& plan, const CLogbookRecordset& r) {
  for (const auto& step : plan) {
    if ((r.*step.text).size() > step.size) {
      return true;
    }
  }
  return false;
}

std::string InsertSql() {
  return std::string("INSERT INTO [") + kTableLogbook + "] (" + LogbookColumnList() + ") VALUES (" +
         LogbookValueMarks() + ")";
}

}  // namespace

// The keys of the stored contacts whose start lies within [first, last] (to the second).
Status LogbookDatabase::LoadDuplicateKeys(SqliteDb& db, double first, double last,
                                          std::unordered_set<std::string>* keys) {
  SqliteStatement st;
  Status s = PrepareJet(db,
                        std::string("SELECT StartTime, Station, BandMHz, Mode FROM [") +
                            kTableLogbook + "] WHERE StartTime >= ? AND StartTime <= ?",
                        &st);
  if (!s.ok()) {
    return s;
  }
  st.BindDouble(1, first - 1.0 / 86400);
  st.BindDouble(2, last + 1.0 / 86400);
  CLogbookRecordset stored;
  while (st.Step()) {
    stored.startTime = st.ColumnDouble(0);
    stored.station = st.ColumnText(1);
    stored.bandMHz = st.ColumnText(2);
    stored.mode = st.ColumnText(3);
    keys->insert(DuplicateKey(stored));
  }
  return st.status();
}

Status LogbookDatabase::SelectByKey(SqliteDb& db, int32_t key, SqliteStatement* st) {
  Status s =
      PrepareJet(db, std::string("SELECT * FROM [") + kTableLogbook + "] WHERE PrimaryKey = ?", st);
  if (s.ok()) {
    st->BindInt(1, key);
  }
  return s;
}

Status LogbookDatabase::AddRecord(CLogbookRecordset* record) {
  const std::string failure = std::string("Error adding record to ") + kTableLogbook + ": ";
  if (!record->startTime) {
    return Fail(failure + "the contact has no StartTime");
  }
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  CutRecord(record);
  record->created = record->modified = OleDateNow();
  SqliteStatement st;
  s = PrepareJet(db, InsertSql(), &st);
  if (s.ok()) {
    BindLogbookRecord(st, *record);
    s = st.Run();
  }
  if (!s.ok()) {
    return Fail(failure + s.message());
  }
  record->primaryKey = static_cast<int32_t>(db.LastInsertRowId());
  Log(std::string("Added record to ") + kTableLogbook);
  return Status::Ok();
}

Status LogbookDatabase::ReadRecord(int32_t key, CLogbookRecordset* record) {
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  SqliteStatement st;
  s = SelectByKey(db, key, &st);
  if (s.ok() && st.Step()) {
    *record = CLogbookRecordset();
    LogbookRowReader(st).Read(st, record);
    return Status::Ok();
  }
  std::string detail =
      !s.ok() || !st.status().ok()
          ? EngineText(db)
          : "No current record. - no contact has record number " + std::to_string(key);
  return Fail(std::string("Error reading ") + kTableLogbook + ": " + detail);
}

Status LogbookDatabase::UpdateRecord(int32_t key, CLogbookRecordset* record) {
  const std::string failure = std::string("Error updating ") + kTableLogbook + ": ";
  if (!record->startTime) {
    return Fail(failure + "the contact has no StartTime - StartTime is required");
  }
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  CutRecord(record);
  record->modified = OleDateNow();
  SqliteStatement st;
  s = PrepareJet(db,
                 std::string("UPDATE [") + kTableLogbook + "] SET " + LogbookAssignmentList() +
                     " WHERE PrimaryKey = ?",
                 &st);
  if (s.ok()) {
    int next = BindLogbookRecord(st, *record);
    st.BindInt(next, key);
    s = st.Run();
  }
  if (!s.ok()) {
    return Fail(failure + EngineText(db));
  }
  if (db.Changes() != 1) {
    return Fail(failure + "No current record. - no contact has record number " +
                std::to_string(key));
  }
  record->primaryKey = key;
  return Status::Ok();
}

Status LogbookDatabase::UpdateField(int32_t key, const std::string& fieldName,
                                    const std::string& value) {
  const std::string failure = std::string("Error updating ") + kTableLogbook + ": ";
  const LogbookField* field = FindLogbookField(fieldName);
  if (field == nullptr || (field->text == nullptr && field->date == nullptr)) {
    return Fail(failure + "no field " + fieldName + " - the field cannot be changed");
  }
  CLogbookRecordset scratch;
  const std::string cut = CutToFieldSize(kTableLogbook, field->name, value);
  Status s = SetLogbookFieldText(&scratch, *field, cut);
  if (!s.ok()) {
    return Fail(failure + s.message());
  }
  if (field->date != nullptr && !(scratch.*field->date) &&
      std::string(field->name) == "StartTime") {
    return Fail(failure + "StartTime is required");
  }
  SqliteDb db;
  s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  SqliteStatement st;
  s = PrepareJet(db,
                 std::string("UPDATE [") + kTableLogbook + "] SET [" + field->name +
                     "] = ?, [Modified] = ? WHERE PrimaryKey = ?",
                 &st);
  if (s.ok()) {
    if (field->text != nullptr) {
      st.BindText(1, scratch.*field->text);
    } else {
      st.BindDouble(1, scratch.*field->date);
    }
    st.BindDouble(2, OleDateNow());
    st.BindInt(3, key);
    s = st.Run();
  }
  if (!s.ok()) {
    return Fail(failure + EngineText(db));
  }
  if (db.Changes() != 1) {
    return Fail(failure + "No current record. - no contact has record number " +
                std::to_string(key));
  }
  return Status::Ok();
}

Status LogbookDatabase::DeleteRecord(int32_t key) {
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  SqliteStatement st;
  s = PrepareJet(db, std::string("DELETE FROM [") + kTableLogbook + "] WHERE PrimaryKey = ?", &st);
  if (s.ok()) {
    st.BindInt(1, key);
    s = st.Run();
  }
  const std::string failure = "Error deleting record " + std::to_string(key) + ": ";
  if (!s.ok()) {
    return Fail(failure + s.message());
  }
  if (db.Changes() != 1) {
    return Fail(failure + "No current record.");
  }
  return Status::Ok();
}

BulkAddResult LogbookDatabase::AddRecords(std::span<const CLogbookRecordset> records) {
  bool given = false;
  BulkAddSource source;
  source.next = [&](bool*) {
    std::span<const CLogbookRecordset> chunk = given ? std::span<const CLogbookRecordset>() : records;
    given = true;
    return chunk;
  };
  BulkAddResult result = AddRecords(source);
  if (!result.status.ok() && !given) {
    result.failed = static_cast<int>(records.size());  // the batch never started
  }
  return result;
}

BulkAddResult LogbookDatabase::AddRecords(const BulkAddSource& source) {
  BulkAddResult result;
  const std::string failure = std::string("Error adding record to ") + kTableLogbook + ": ";
  SqliteDb db;
  result.status = Open(&db);
  SqliteStatement insert;
  if (result.status.ok()) {
    // A bigger page cache keeps a big batch in memory until it commits, instead of spilling
    // pages (and syncing the journal) halfway.
    result.status = db.Exec("PRAGMA cache_size = -65536");
  }
  if (result.status.ok()) {
    result.status = db.Begin();
  }
  if (result.status.ok()) {
    result.status = PrepareJet(db, InsertSql(), &insert);
  }
  const OleDate now = OleDateNow();
  const std::vector<CutStep> plan = CutPlan();
  std::unordered_set<std::string> seen;
  // The stored contacts of this span of start times are in `seen` already; it only grows, so
  // every stored contact is read once however the chunks' times interleave.
  double loadedFirst = 0, loadedLast = -1;
  CLogbookRecordset cut;
  size_t total = 0;
  const auto notStored = [&](size_t index, const std::string& reason) {
    if (source.notStored) {
      source.notStored(index, reason);
    }
  };
  while (result.status.ok()) {
    bool cancel = false;
    const std::span<const CLogbookRecordset> chunk = source.next(&cancel);
    if (cancel) {
      db.Rollback();
      result = BulkAddResult();
      result.cancelled = true;
      result.status = Status::Error("Cancelled");
      return result;
    }
    if (chunk.empty()) {
      break;
    }
    total += chunk.size();
    seen.reserve(seen.size() + chunk.size());
    double first = loadedFirst, last = loadedLast;
    for (const CLogbookRecordset& r : chunk) {
      if (r.startTime && first > last) {
        first = last = *r.startTime;
      } else if (r.startTime) {
        first = std::min(first, *r.startTime);
        last = std::max(last, *r.startTime);
      }
    }
    if (loadedFirst > loadedLast) {
      result.status = first <= last ? LoadDuplicateKeys(db, first, last, &seen) : Status::Ok();
    } else {
      if (first < loadedFirst) {
        result.status = LoadDuplicateKeys(db, first, loadedFirst - 1.0 / 86400, &seen);
      }
      if (result.status.ok() && last > loadedLast) {
        result.status = LoadDuplicateKeys(db, loadedLast + 1.0 / 86400, last, &seen);
      }
    }
    loadedFirst = first;
    loadedLast = last;
    for (size_t i = 0; i < chunk.size() && result.status.ok(); ++i) {
      const CLogbookRecordset& original = chunk[i];
      if (!original.startTime) {
        ++result.failed;
        notStored(i, "the contact has no StartTime");
        continue;
      }
      if (!seen.insert(DuplicateKey(original)).second) {
        ++result.duplicates;
        notStored(i, "a duplicate of a stored contact (callsign, band, mode and start time)");
        continue;
      }
      const CLogbookRecordset* record = &original;
      if (NeedsCut(plan, original)) {
        cut = original;
        CutRecord(plan, &cut);
        record = &cut;
      }
      insert.Reset();
      BindLogbookRecord(insert, *record);
      insert.BindDouble(LogbookParameterIndex("Created"), now);
      insert.BindDouble(LogbookParameterIndex("Modified"), now);
      if (Status s = insert.Run(); s.ok()) {
        ++result.stored;
      } else {
        ++result.failed;
        notStored(i, s.message());
      }
    }
  }
  if (!result.status.ok()) {
    db.Rollback();
    result.failed = static_cast<int>(total);
    result.stored = result.duplicates = 0;
    result.status = Fail(failure + result.status.message());
    return result;
  }
  if (source.rollBack) {
    db.Rollback();
    return result;
  }
  Status committed = db.Commit();
  if (!committed.ok()) {
    db.Rollback();
    result.failed += result.stored + result.duplicates;
    result.stored = result.duplicates = 0;
    result.status = Fail(failure + committed.message());
    return result;
  }
  Log("Added " + std::to_string(result.stored) + " / " + std::to_string(total) + " records to " +
      kTableLogbook);
  return result;
}

}  // namespace tavlorin
