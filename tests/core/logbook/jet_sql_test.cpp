#include "logbook/jet_sql.h"

#include <gtest/gtest.h>

#include "logbook/ole_date.h"

namespace tavlorin {
namespace {

TEST(JetSqlTest, Translations) {
  struct Case {
    const char* jet;
    const char* sqlite;
  };
  const Case cases[] = {
      {"SELECT * FROM [TBL_BANDS] ORDER BY PrimaryKey ASC",
       "SELECT * FROM \"TBL_BANDS\" ORDER BY PrimaryKey ASC"},
      {"SELECT TOP 10 Q.* FROM TBL_LOGBOOK AS Q  ORDER BY StartTime DESC",
       "SELECT Q.* FROM TBL_LOGBOOK AS Q  ORDER BY StartTime DESC LIMIT 10"},
      {"SELECT  Q.* FROM TBL_LOGBOOK AS Q  ORDER BY StartTime DESC",
       "SELECT  Q.* FROM TBL_LOGBOOK AS Q  ORDER BY StartTime DESC"},
      {"select distinct top 5 Mode from [TBL_LOGBOOK];",
       "select DISTINCT Mode from \"TBL_LOGBOOK\" LIMIT 5"},
      {"SELECT * FROM T WHERE Station = '[not a name] #not a date# TOP 3'",
       "SELECT * FROM T WHERE Station = '[not a name] #not a date# TOP 3'"},
      {"SELECT * FROM T WHERE Station = 'O''BRIEN' AND [Mode] = 'CW'",
       "SELECT * FROM T WHERE Station = 'O''BRIEN' AND \"Mode\" = 'CW'"},
      {"SELECT * FROM T WHERE StartTime >= #2024-05-01# AND StartTime < #05/02/2024 12:00#",
       "SELECT * FROM T WHERE StartTime >= 45413.0000000000 AND StartTime < 45414.5000000000"},
      {"SELECT TOPMOST FROM T", "SELECT TOPMOST FROM T"},
      {"SELECT TOP 1 PrimaryKey FROM [T] WHERE (QRZCallsign = ?) ORDER BY PrimaryKey DESC",
       "SELECT PrimaryKey FROM \"T\" WHERE (QRZCallsign = ?) ORDER BY PrimaryKey DESC LIMIT 1"},
  };
  for (const Case& c : cases) {
    std::string out;
    Status s = TranslateJetSql(c.jet, &out);
    ASSERT_TRUE(s.ok()) << c.jet << ": " << s.message();
    EXPECT_EQ(out, c.sqlite) << c.jet;
  }
}

TEST(JetSqlTest, MalformedInputIsAnError) {
  for (const char* bad :
       {"SELECT * FROM [TBL", "SELECT 'open", "WHERE x = #2024-13-01#", "WHERE x = #2024-01-01"}) {
    std::string out;
    EXPECT_FALSE(TranslateJetSql(bad, &out).ok()) << bad;
  }
}

TEST(OleDateTest, KnownDaysAndRoundTrips) {
  struct Case {
    const char* text;
    double days;
    const char* formatted;
  };
  const Case cases[] = {
      {"1899-12-30", 0, "1899-12-30 00:00:00"},
      {"1900-01-01", 2, "1900-01-01 00:00:00"},
      {"1970-01-01", 25569, "1970-01-01 00:00:00"},
      {"2024-05-01 00:00:00", 45413, "2024-05-01 00:00:00"},
      {"2024-05-01 18:00", 45413.75, "2024-05-01 18:00:00"},
      {"2024-05-01T06:00:00Z", 45413.25, "2024-05-01 06:00:00"},
      {"20240501", 45413, "2024-05-01 00:00:00"},
      {"05/01/2024 12:00:00", 45413.5, "2024-05-01 12:00:00"},
      {"2024-02-29", 45351, "2024-02-29 00:00:00"},
  };
  for (const Case& c : cases) {
    auto d = ParseOleDate(c.text);
    ASSERT_TRUE(d.has_value()) << c.text;
    EXPECT_NEAR(*d, c.days, 1e-9) << c.text;
    EXPECT_EQ(FormatOleDate(*d), c.formatted);
  }
  for (const char* bad : {"", "2024-5-1", "2023-02-29", "2024-05-01 25:00", "2024-05-01 10",
                          "tomorrow", "2024-05-01 10:00:00 UTC"}) {
    EXPECT_FALSE(ParseOleDate(bad).has_value()) << bad;
  }
  EXPECT_EQ(FormatOleDate(OleDateFromUnixSeconds(1700000000)), "2023-11-14 22:13:20");
  EXPECT_EQ(FormatOleDate(45413.99999999), "2024-05-02 00:00:00") << "rounds to the second";
}

}  // namespace
}  // namespace tavlorin
