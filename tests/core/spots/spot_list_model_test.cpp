// The rules common to every spot source: when the list is redrawn, how rows are filled in place,
// which spots are new, and the country look-up.
#include "spots/spot_list_model.h"

#include <gtest/gtest.h>

namespace tavlorin {
namespace {

using Kind = SpotListModel::Update::Kind;

class SpotListModelTest : public ::testing::Test {
 protected:
  void SetUp() override {
    countries_.Build({{"JAPAN", "339", "JA,JE"}, {"GERMANY", "230", "DL,DK"}, {"ITU HQ", "117", "4U1ITU"},
                      {"SWITZERLAND", "287", "HB,4U"}});
  }
  static FetchResult Csv(const std::string& lines) {
    FetchResult r;
    r.source = SpotSource::kCsvFiles;
    r.ok = true;
    r.body = "# Spots / Test\n" + lines;
    return r;
  }
  CountryTables countries_;
  SpotListModel model_{&countries_};
};

TEST_F(SpotListModelTest, IdenticalBodiesLeaveTheListUntouchedUntilTheCountrySwitchChanges) {
  FetchResult body = Csv("JA1ZZZ^7003^W3LPL^1240Z^up\nDL1ABC^14025^K1AA^1241Z^cq\n");
  SpotListModel::Update first = model_.Apply(body);
  EXPECT_EQ(first.kind, Kind::kRedrawn);
  EXPECT_TRUE(first.resized);
  EXPECT_EQ(first.newSpots.size(), 2u);
  EXPECT_EQ(model_.rows()[0].country, "JAPAN");
  EXPECT_EQ(DisplayComment(model_.rows()[0]), "JAPAN: up");

  SpotListModel::Update again = model_.Apply(body);
  EXPECT_EQ(again.kind, Kind::kUnchanged);
  EXPECT_TRUE(again.changedRows.empty());

  model_.SetLookupCountry(false);
  SpotListModel::Update plain = model_.Apply(body);
  EXPECT_EQ(plain.kind, Kind::kRedrawn);
  EXPECT_FALSE(plain.resized);
  EXPECT_EQ(plain.changedRows, (std::vector<size_t>{0, 1}));
  EXPECT_EQ(DisplayComment(model_.rows()[0]), "up");
}

TEST_F(SpotListModelTest, RowsAreFilledInPlaceAndOnlyChangedOnesReported) {
  model_.Apply(Csv("JA1ZZZ^7003^A^1^x\nDL1ABC^14025^B^2^y\nHB9X^3500^C^3^z\n"));
  SpotListModel::Update update =
      model_.Apply(Csv("JA1ZZZ^7003^A^1^x\nDK0NEW^14030^B^4^y\nHB9X^3500^C^3^z\n"));
  EXPECT_EQ(update.kind, Kind::kRedrawn);
  EXPECT_FALSE(update.resized);
  EXPECT_EQ(update.changedRows, (std::vector<size_t>{1}));
  ASSERT_EQ(update.newSpots.size(), 1u);
  EXPECT_EQ(update.newSpots[0].callsign, "DK0NEW");
  EXPECT_EQ(model_.rows()[1].country, "GERMANY");

  SpotListModel::Update shorter = model_.Apply(Csv("JA1ZZZ^7003^A^1^x\n"));
  EXPECT_TRUE(shorter.resized);
  EXPECT_EQ(model_.rows().size(), 1u);
  EXPECT_TRUE(shorter.newSpots.empty());
}

TEST_F(SpotListModelTest, AFailedFetchKeepsTheListAndAnEmptyBodyIsAlwaysFollowedByADraw) {
  FetchResult body = Csv("JA1ZZZ^7003^A^1^x\n");
  model_.Apply(body);
  FetchResult failed;
  failed.error = "HTTP status 404 from http://a/dxs";
  SpotListModel::Update update = model_.Apply(failed);
  EXPECT_EQ(update.kind, Kind::kFailed);
  EXPECT_EQ(update.message, failed.error);
  EXPECT_EQ(model_.rows().size(), 1u);

  FetchResult empty;
  empty.source = SpotSource::kCsvFiles;
  empty.ok = true;
  EXPECT_EQ(model_.Apply(empty).kind, Kind::kRedrawn);
  EXPECT_TRUE(model_.rows().empty());
  EXPECT_EQ(model_.Apply(empty).kind, Kind::kUnchanged);
  EXPECT_EQ(model_.Apply(body).kind, Kind::kRedrawn);

  model_.ForgetBody();
  EXPECT_EQ(model_.Apply(body).kind, Kind::kRedrawn);
}

TEST_F(SpotListModelTest, TheSameLogFileThroughAnotherBandIsAnotherList) {
  FetchResult log;
  log.source = SpotSource::kLogFile;
  log.ok = true;
  log.body = "K1AA\t14025\tX\t\t\t0001\nK2BB\t7003\tY\t\t\t0002\n";
  log.range = BandRange{0, 30000, 250};
  model_.Apply(log);
  EXPECT_EQ(model_.rows().size(), 2u);
  log.range = BandRange{7000, 7300, 250};
  EXPECT_EQ(model_.Apply(log).kind, Kind::kRedrawn);
  ASSERT_EQ(model_.rows().size(), 1u);
  EXPECT_EQ(model_.rows()[0].callsign, "K2BB");
}

TEST_F(SpotListModelTest, CountriesByTheLongestLeadingMatch) {
  model_.Apply(Csv("4U1ITU^14000^A^1^\n4U0XYZ^14001^A^1^\nja1abc^14002^A^1^\nXX9Z^14003^A^1^\n"));
  const char* expected[] = {"ITU HQ", "SWITZERLAND", "JAPAN", ""};
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(model_.rows()[i].country, expected[i]) << model_.rows()[i].callsign;
  }
  EXPECT_EQ(DisplayComment(model_.rows()[3]), "");
}

TEST_F(SpotListModelTest, HertzOfARow) {
  model_.Apply(Csv("A^14025.5^^^\nB^4000001^^^\n"));
  EXPECT_EQ(model_.HertzOfRow(0), 14025500u);
  EXPECT_EQ(model_.HertzOfRow(1), std::nullopt);  // above 4 000 000 kHz: ignored
  EXPECT_EQ(model_.HertzOfRow(2), std::nullopt);
}

}  // namespace
}  // namespace tavlorin
