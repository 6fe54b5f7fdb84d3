// Creating and repairing the logbook file: a real SQLite file per test.
#include <algorithm>

#include "logbook/logbook_defaults.h"
#include "logbook/logbook_settings.h"
#include "logbook_test_support.h"

namespace tavlorin {
namespace {

using DefineDatabaseTest = testing_support::LogbookTest;

TEST_F(DefineDatabaseTest, NewFileGetsTablesAndDefaults) {
  auto db = MakeDatabase();
  ASSERT_TRUE(db->Define(true));
  EXPECT_EQ(Sql("SELECT name FROM sqlite_master WHERE type = 'table' AND name LIKE 'TBL_%' "
                "ORDER BY name"),
            (std::vector<std::string>{"TBL_BANDS", "TBL_COUNTRIES", "TBL_LOGBOOK", "TBL_MODES",
                                      "TBL_QRZ"}));
  EXPECT_EQ(Count("TBL_COUNTRIES"), 402);  // 28 bands, 32 modes: BandsModesAndRadioModes
  const std::vector<std::string> opening = {
      "Database file: " + path_,
      "Database file exists: no",
      "Database file created",
      "Database file opened",
      "Checking database structure...",
      "Failed to open table: TBL_BANDS",
      "Creating table: TBL_BANDS...",
      "Opening field: PrimaryKey...",
      "Failed to open field: PrimaryKey",
      "Creating field: PrimaryKey...",
      "Appending table: TBL_BANDS",
      "Opening field: MinFreq...",
      "Failed to open field: MinFreq",
      "Creating field: MinFreq...",
  };
  ASSERT_GE(log_.size(), opening.size());
  EXPECT_EQ(std::vector<std::string>(log_.begin(), log_.begin() + opening.size()), opening);
  auto correct = std::find(log_.begin(), log_.end(), "Database structure is correct");
  ASSERT_NE(correct, log_.end());
  EXPECT_EQ(*(correct + 1), "Added 28 / 28 records to TBL_BANDS");
  EXPECT_EQ(*(correct + 2), "Added 32 / 32 records to TBL_MODES");
  EXPECT_EQ(*(correct + 3), "Added 402 / 402 records to TBL_COUNTRIES");
  EXPECT_EQ(settings_->Get(kCountryLevel), 3);
  EXPECT_EQ(Sql("PRAGMA integrity_check")[0], "ok");
}

TEST_F(DefineDatabaseTest, SecondDefineChangesNothing) {
  ASSERT_TRUE(MakeDatabase()->Define(false));
  log_.clear();
  auto db = MakeDatabase();
  ASSERT_TRUE(db->Define(false));
  for (const auto& line : log_) {
    EXPECT_EQ(line.find("Creat"), std::string::npos) << line;
    EXPECT_EQ(line.find("Added"), std::string::npos) << line;
  }
  EXPECT_TRUE(Logged("Database structure is correct"));
}

TEST_F(DefineDatabaseTest, MissingFieldIsAddedAndRowsKept) {
  auto db = MakeDatabase();
  ASSERT_TRUE(db->Define(false));
  for (int i = 0; i < 3; ++i) {
    auto c = Contact("G" + std::to_string(i) + "ABC", "2024-01-01");
    c.qth = "London";
    c.name = "Op " + std::to_string(i);
    ASSERT_TRUE(db->AddRecord(&c).ok());
  }
  Sql("ALTER TABLE TBL_LOGBOOK DROP COLUMN QTH");
  log_.clear();
  ASSERT_TRUE(MakeDatabase()->Define(false));
  EXPECT_TRUE(Logged("Creating field: QTH..."));
  EXPECT_EQ(Sql("SELECT Station, Name, QTH FROM TBL_LOGBOOK ORDER BY PrimaryKey"),
            (std::vector<std::string>{"G0ABC|Op 0|NULL", "G1ABC|Op 1|NULL", "G2ABC|Op 2|NULL"}));
}

TEST_F(DefineDatabaseTest, NarrowOldFieldKeepsItsWidth) {
  Sql("CREATE TABLE TBL_LOGBOOK (PrimaryKey INTEGER PRIMARY KEY AUTOINCREMENT, "
      "Station VARCHAR(20), StartTime DOUBLE NOT NULL DEFAULT 0)");
  auto db = MakeDatabase();
  ASSERT_TRUE(db->Define(false));
  EXPECT_EQ(db->fieldSizes().at("TBL_LOGBOOK::Station"), 20);
  EXPECT_EQ(db->fieldSizes().at("TBL_LOGBOOK::MyCallsign"), 32);
  auto c = Contact("ABCDEFGHIJKLMNOPQRSTUVWXY", "2024-05-01 12:00:00");
  ASSERT_TRUE(db->AddRecord(&c).ok());
  EXPECT_EQ(Sql("SELECT Station FROM TBL_LOGBOOK")[0], "ABCDEFGHIJKLMNOPQRST");
  EXPECT_EQ(db->CutToFieldSize("TBL_LOGBOOK", "Station", "\xC3\x98" + std::string(24, 'x')),
            "\xC3\x98" + std::string(19, 'x'))
      << "sizes count characters, not bytes";
  EXPECT_EQ(db->CutToFieldSize("TBL_LOGBOOK", "NoSuchField", std::string(300, 'x')).size(), 300u);
}

TEST_F(DefineDatabaseTest, CountryLevelChangeRefillsOnce) {
  ASSERT_TRUE(MakeDatabase()->Define(false));
  Sql("UPDATE TBL_COUNTRIES SET Country = 'Edited' WHERE DXCC = '230'");
  settings_->Set(kCountryLevel, 2);
  ASSERT_TRUE(MakeDatabase()->Define(false));
  EXPECT_EQ(Count("TBL_COUNTRIES"), 402);
  EXPECT_EQ(Sql("SELECT count(*) FROM TBL_COUNTRIES WHERE Country = 'Edited'")[0], "0");
  EXPECT_EQ(settings_->Get(kCountryLevel), 3);

  Sql("UPDATE TBL_COUNTRIES SET Country = 'Edited' WHERE DXCC = '230'");
  ASSERT_TRUE(MakeDatabase()->Define(false));
  EXPECT_EQ(Sql("SELECT count(*) FROM TBL_COUNTRIES WHERE Country = 'Edited'")[0], "1");
}

TEST_F(DefineDatabaseTest, TableWithoutIndexGetsItsKeyAndEditedTablesAreKept) {
  Sql("CREATE TABLE TBL_MODES (PrimaryKey INTEGER, Title VARCHAR(32), ADIF VARCHAR(32), "
      "Comment VARCHAR(64))");
  ASSERT_TRUE(MakeDatabase()->Define(false));
  EXPECT_TRUE(Logged("Creating primary key: MODE_PRIMARY_KEY"));
  EXPECT_FALSE(Logged("Creating primary key: BAND_PRIMARY_KEY"));
  EXPECT_EQ(Sql("SELECT count(*) FROM pragma_index_list('TBL_MODES') WHERE \"unique\" = 1")[0],
            "1");
  Sql("DELETE FROM TBL_BANDS WHERE Title <> '20m'; UPDATE TBL_BANDS SET Title = 'Twenty';"
      "DELETE FROM TBL_MODES WHERE Title <> 'CW'");
  ASSERT_TRUE(MakeDatabase()->Define(false));
  EXPECT_EQ(Sql("SELECT Title FROM TBL_BANDS"), std::vector<std::string>{"Twenty"});
  EXPECT_EQ(Sql("SELECT Title FROM TBL_MODES"), std::vector<std::string>{"CW"});
}

TEST_F(DefineDatabaseTest, BandsModesAndRadioModes) {
  auto db = MakeDatabase();
  ASSERT_TRUE(db->Define(false));
  EXPECT_EQ(Sql("SELECT MinFreq, MaxFreq FROM TBL_BANDS WHERE Title = '13cm'")[0],
            "-1974967296|-1844967296")
      << "stored as the signed 32-bit pattern";
  std::vector<CBandsRecordSet> bands;
  ASSERT_TRUE(db->Bands(&bands).ok());
  ASSERT_EQ(bands.size(), 28u);
  EXPECT_EQ(bands[18].title, "13cm");
  EXPECT_EQ(bands[18].minFreq, 2320000000u);
  EXPECT_EQ(bands[18].maxFreq, 2450000000u);
  const std::pair<uint32_t, const char*> cases[] = {
      {14070000, "20m"},    {1800000, "160m"}, {2000000, "160m"},      {2400000000u, "13cm"},
      {1296000000, "23cm"}, {0, nullptr},      {2500000000u, nullptr}, {11000000, nullptr},
  };
  for (const auto& [hertz, title] : cases) {
    std::optional<CBandsRecordSet> band;
    ASSERT_TRUE(db->BandForFrequency(hertz, &band).ok());
    EXPECT_EQ(band ? band->title : "", title ? title : "") << hertz;
  }
  std::vector<CModesRecordSet> modes;
  ASSERT_TRUE(db->Modes(&modes).ok());
  EXPECT_EQ(modes.size(), 32u);
  // Every unused code slot writes key 0 (the last row's title), but code 0 means no mode.
  EXPECT_EQ(BuildRadioModeMap().at(0), "TOR");
  const std::pair<int, const char*> radio[] = {{1, "LSB"}, {8, "USB"}, {20, "PSK31"},
                                               {0, ""},    {12, ""},   {21, ""}};
  for (const auto& [code, title] : radio) {
    EXPECT_EQ(db->ModeForRadioMode(code), title) << code;
  }
}

}  // namespace
}  // namespace tavlorin
