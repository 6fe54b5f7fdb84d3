// The reference tables of LogbookDatabase: bands, modes, countries, the look-up cache, their
// default fills, and loading a countries file.
#include <cstdio>

#include "logbook/logbook_database.h"
#include "logbook/logbook_defaults.h"
#include "logbook/logbook_settings.h"
#include "shell/definition_file.h"
#include "shell/paths.h"

namespace tavlorin {
namespace {

std::string AddedLine(int added, size_t expected, const char* table) {
  return "Added " + std::to_string(added) + " / " + std::to_string(expected) + " records to " +
         table;
}

}  // namespace

Status LogbookDatabase::Bands(std::vector<CBandsRecordSet>* bands) {
  bands->clear();
  SqliteDb db;
  Status s = Open(&db);
  SqliteStatement st;
  if (s.ok()) {
    s = PrepareJet(db, "SELECT * FROM [TBL_BANDS] ORDER BY PrimaryKey ASC", &st);
  }
  if (!s.ok()) {
    return s;
  }
  while (st.Step()) {
    CBandsRecordSet b;
    for (int c = 0; c < st.ColumnCount(); ++c) {
      const std::string name = st.ColumnName(c);
      if (name == "PrimaryKey") {
        b.primaryKey = static_cast<int32_t>(st.ColumnInt(c));
      } else if (name == "MinFreq") {
        // The 32-bit pattern, whether stored negative (signed) or as the positive value.
        b.minFreq = static_cast<uint32_t>(st.ColumnInt(c));
      } else if (name == "MaxFreq") {
        b.maxFreq = static_cast<uint32_t>(st.ColumnInt(c));
      } else if (name == "Title") {
        b.title = st.ColumnText(c);
      } else if (name == "ADIF") {
        b.adif = st.ColumnText(c);
      } else if (name == "Comment") {
        b.comment = st.ColumnText(c);
      }
    }
    bands->push_back(std::move(b));
  }
  return st.status().ok()
             ? Status::Ok()
             : Fail(std::string("Error reading ") + kTableBands + ": " + st.status().message());
}

Status LogbookDatabase::BandForFrequency(uint32_t hertz, std::optional<CBandsRecordSet>* band) {
  band->reset();
  std::vector<CBandsRecordSet> bands;
  Status s = Bands(&bands);
  if (!s.ok() || hertz == 0) {
    return s;  // 0 hertz is "not known" and would match the bands without edges
  }
  for (const CBandsRecordSet& b : bands) {
    if (b.minFreq <= hertz && hertz <= b.maxFreq) {
      *band = b;
      break;
    }
  }
  return Status::Ok();
}

Status LogbookDatabase::Modes(std::vector<CModesRecordSet>* modes) {
  modes->clear();
  SqliteDb db;
  Status s = Open(&db);
  SqliteStatement st;
  if (s.ok()) {
    s = PrepareJet(db,
                   "SELECT PrimaryKey, Title, ADIF, Comment FROM [TBL_MODES] "
                   "ORDER BY PrimaryKey ASC",
                   &st);
  }
  if (!s.ok()) {
    return s;
  }
  while (st.Step()) {
    modes->push_back({static_cast<int32_t>(st.ColumnInt(0)), st.ColumnText(1), st.ColumnText(2),
                      st.ColumnText(3)});
  }
  return st.status().ok()
             ? Status::Ok()
             : Fail(std::string("Error reading ") + kTableModes + ": " + st.status().message());
}

Status LogbookDatabase::Countries(std::vector<CCountriesRecordSet>* countries) {
  countries->clear();
  SqliteDb db;
  Status s = Open(&db);
  SqliteStatement st;
  if (s.ok()) {
    s = PrepareJet(db,
                   "SELECT PrimaryKey, Country, DXCC, Comment, Prefix FROM [TBL_COUNTRIES] "
                   "ORDER BY PrimaryKey ASC",
                   &st);
  }
  if (!s.ok()) {
    return s;
  }
  while (st.Step()) {
    countries->push_back({static_cast<int32_t>(st.ColumnInt(0)), st.ColumnText(1), st.ColumnText(2),
                          st.ColumnText(3), st.ColumnText(4)});
  }
  return st.status().ok()
             ? Status::Ok()
             : Fail(std::string("Error reading ") + kTableCountries + ": " + st.status().message());
}

Status LogbookDatabase::CacheLookup(CQRZRecordSet* lookup) {
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  lookup->qrzUpdated = OleDateNow();
  SqliteStatement st;
  s = PrepareJet(db,
                 "INSERT INTO [TBL_QRZ] ([QRZUpdated], [QRZCallsign], [QRZName], "
                 "[QRZAddr1], [QRZAddr2], [QRZCountry], [QRZGrid], [QRZHomePage], "
                 "[QRZQslMgr]) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
                 &st);
  if (s.ok()) {
    st.BindDouble(1, lookup->qrzUpdated);
    int i = 2;
    for (const std::string* text :
         {&lookup->qrzCallsign, &lookup->qrzName, &lookup->qrzAddr1, &lookup->qrzAddr2,
          &lookup->qrzCountry, &lookup->qrzGrid, &lookup->qrzHomePage, &lookup->qrzQslMgr}) {
      st.BindText(i++, *text);
    }
    s = st.Run();
  }
  if (!s.ok()) {
    return Fail(std::string("Error adding record to ") + kTableQrz + ": " + s.message());
  }
  lookup->primaryKey = static_cast<int32_t>(db.LastInsertRowId());
  Log("Added " + lookup->qrzCallsign + " to " + kTableQrz);
  return Status::Ok();
}

Status LogbookDatabase::FindCachedLookup(const std::string& callsign,
                                         std::optional<CQRZRecordSet>* lookup) {
  lookup->reset();
  SqliteDb db;
  Status s = Open(&db);
  SqliteStatement st;
  if (s.ok()) {
    s = PrepareJet(db,
                   "SELECT TOP 1 Q.PrimaryKey, Q.QRZUpdated, Q.QRZCallsign, Q.QRZName, "
                   "Q.QRZAddr1, Q.QRZAddr2, Q.QRZCountry, Q.QRZGrid, Q.QRZHomePage, "
                   "Q.QRZQslMgr FROM [TBL_QRZ] AS Q WHERE (QRZCallsign = ?) "
                   "ORDER BY PrimaryKey DESC",
                   &st);
  }
  if (!s.ok()) {
    return s;
  }
  st.BindText(1, callsign);
  if (st.Step()) {
    *lookup = CQRZRecordSet{static_cast<int32_t>(st.ColumnInt(0)),
                            st.ColumnOptionalDouble(1),
                            st.ColumnText(2),
                            st.ColumnText(3),
                            st.ColumnText(4),
                            st.ColumnText(5),
                            st.ColumnText(6),
                            st.ColumnText(7),
                            st.ColumnText(8),
                            st.ColumnText(9)};
  }
  return st.status().ok()
             ? Status::Ok()
             : Fail(std::string("Error reading ") + kTableQrz + ": " + st.status().message());
}

// Inserts the built-in rows into one empty reference table; true when every row went in.
// `bind` binds row i of `count` to the insert statement.
bool LogbookDatabase::FillTable(SqliteDb& db, const char* table, const std::string& insertSql,
                                size_t count,
                                const std::function<void(SqliteStatement&, size_t)>& bind) {
  SqliteStatement st;
  int added = 0;
  Status s = db.Begin();
  if (s.ok()) {
    s = PrepareJet(db, insertSql, &st);
  }
  for (size_t i = 0; s.ok() && i < count; ++i) {
    st.Reset();
    bind(st, i);
    Status one = st.Run();
    added += one.ok() ? 1 : 0;
    if (!one.ok()) {
      Log(std::string("Error adding record to ") + table + ": " + one.message());
    }
  }
  if (s.ok()) {
    s = db.Commit();
  }
  if (!s.ok()) {
    db.Rollback();
    Log(std::string("Error adding record to ") + table + ": " + s.message());
    added = 0;
  }
  Log(AddedLine(added, count, table));
  return added == static_cast<int>(count);
}

Status LogbookDatabase::FillDefaults() {
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  bool allFilled = true;
  int64_t count = 0;
  if (CountIn(db, kTableBands, &count).ok() && count == 0) {
    const auto bands = DefaultBands();
    allFilled &= FillTable(db, kTableBands,
                           "INSERT INTO [TBL_BANDS] ([MinFreq], [MaxFreq], [Title], [ADIF], "
                           "[Comment]) VALUES (?, ?, ?, ?, ?)",
                           bands.size(), [&bands](SqliteStatement& st, size_t i) {
                             // The field is signed: the unsigned hertz go in as their bit
                             // pattern, and read back unsigned.
                             st.BindInt(1, static_cast<int32_t>(bands[i].minFreq));
                             st.BindInt(2, static_cast<int32_t>(bands[i].maxFreq));
                             st.BindText(3, bands[i].title);
                             st.BindText(4, bands[i].title);
                             st.BindText(5, kDefaultComment);
                           });
  }
  if (CountIn(db, kTableModes, &count).ok() && count == 0) {
    const auto modes = DefaultModes();
    allFilled &= FillTable(db, kTableModes,
                           "INSERT INTO [TBL_MODES] ([Title], [ADIF], [Comment]) VALUES (?, ?, ?)",
                           modes.size(), [&modes](SqliteStatement& st, size_t i) {
                             st.BindText(1, modes[i].title);
                             st.BindText(2, modes[i].title);
                             st.BindText(3, kDefaultComment);
                           });
  }
  if (CountIn(db, kTableCountries, &count).ok() && count == 0) {
    db.Close();
    allFilled &= FillBuiltInCountries().ok();
  }
  return allFilled ? Status::Ok() : Status::Error("Not every default record could be added");
}

Status LogbookDatabase::FillBuiltInCountries() {
  const auto file = SharedDataDir() / kCountriesFileName;
  std::vector<std::string> lines;
  Status read = ReadDefinitionBody(file, &lines);
  if (!read.ok()) {
    Log("Error adding record");
    Log(std::string("    Table ........: ") + kTableCountries);
    Log("    Error ........: " + read.message());
    return read;
  }
  return FillCountries(ParseCountryLines(lines).rows);
}

Status LogbookDatabase::FillCountries(const std::vector<CountryRow>& rows) {
  SqliteDb db;
  Status s = Open(&db);
  if (!s.ok()) {
    return s;
  }
  auto fail = [this](const std::string& error) {
    Log("Error adding record");
    Log(std::string("    Table ........: ") + kTableCountries);
    Log("    Error ........: " + error);
    return Status::Error("Error adding record to " + std::string(kTableCountries) + ": " + error);
  };
  SqliteStatement st;
  s = db.Begin();
  if (s.ok()) {
    s = db.Exec("DELETE FROM \"TBL_COUNTRIES\"");
  }
  if (s.ok()) {
    s = PrepareJet(db,
                   "INSERT INTO [TBL_COUNTRIES] ([Country], [DXCC], [Comment], [Prefix]) "
                   "VALUES (?, ?, ?, ?)",
                   &st);
  }
  if (!s.ok()) {
    db.Rollback();
    return fail(s.message());
  }
  int added = 0;
  for (const CountryRow& row : rows) {
    st.Reset();
    st.BindText(1, CutToFieldSize(kTableCountries, "Country", row.country));
    st.BindText(2, CutToFieldSize(kTableCountries, "DXCC", row.dxcc));
    st.BindText(3, kDefaultComment);
    st.BindText(4, row.prefix);
    Status one = st.Run();
    added += one.ok() ? 1 : 0;
    if (!one.ok()) {
      fail(one.message());
    }
  }
  s = db.Commit();
  if (!s.ok()) {
    db.Rollback();
    return fail(s.message());
  }
  Log(AddedLine(added, rows.size(), kTableCountries));
  return added == static_cast<int>(rows.size()) ? Status::Ok()
                                                : Status::Error("Not every country was added");
}

Status LogbookDatabase::LoadCountriesFile(const std::string& file, const ConfirmLoad& confirm,
                                          bool* loaded) {
  *loaded = false;
  std::vector<std::string> lines;
  Status s =
      ReadDefinitionFile(file, [&lines](std::string_view line) { lines.emplace_back(line); });
  if (!s.ok()) {
    return Fail("Error reading countries file: " + s.message());
  }
  ParsedCountries parsed = ParseCountryLines(lines);
  char question[160];
  std::snprintf(question, sizeof question,
                "This file contains %d active and %d deleted country definitions, continue?",
                parsed.active, parsed.deleted);
  if (!confirm || !confirm(question, parsed.active, parsed.deleted)) {
    return Status::Ok();
  }
  s = FillCountries(parsed.rows);
  Status built = BuildMaps();
  if (countriesChanged_) {
    countriesChanged_();
  }
  if (!s.ok()) {
    return s;
  }
  *loaded = true;
  return built;
}

}  // namespace tavlorin
