// The ADIF export: the Part's field rules and sets, the header, and round trips through real
// logbook files (export, import into a new logbook, export again: the same file).
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "logbook/adif_export.h"
#include "logbook/adif_import.h"
#include "logbook/adif_reader.h"
#include "logbook/adif_writer.h"
#include "logbook_test_support.h"

namespace tavlorin {
namespace {

using testing_support::LogbookTest;

std::string AdiLine(const CLogbookRecordset& c, AdifFieldSet set, const std::string& comment = "") {
  std::vector<AdifOutField> fields;
  BuildAdifFields(c, set, comment, &fields);
  std::string out;
  AppendAdiRecord(fields, &out);
  return out;
}

CLogbookRecordset FullContact() {
  CLogbookRecordset c;
  c.station = "DL1ABC";
  c.startTime = ParseOleDate("2024-05-01 10:00:05");
  c.endTime = ParseOleDate("2024-05-01 10:07:00");
  c.bandMHz = "40m";
  c.mode = "CW";
  c.reportSent = "599";
  c.reportRecv = "579";
  c.frequency = "7.050.000";
  c.dxcc = "230";
  c.locator = "JO62QM";
  c.qslSent = "1";
  c.qslSentDate = ParseOleDate("2024-06-02");
  c.qslRecv = "0";
  c.qslRecvDate = ParseOleDate("2024-06-03");
  c.country = "GERMANY";
  c.myLocator = "IO91WM";
  c.eqslRecv = "1";
  c.eqslRecvDate = ParseOleDate("2024-06-04");
  c.myCountry = "England";
  c.extraFields = "<sig:4>POTA";
  return c;
}

TEST(AdifWriterTest, FieldRulesOfThePart) {
  const CLogbookRecordset c = FullContact();
  EXPECT_EQ(AdiLine(c, AdifFieldSet::kAdif20),
            "<call:6>DL1ABC <qso_date:8:d>20240501 <time_on:6>100005 <band:3>40m <mode:2>CW "
            "<rst_sent:3>599 <time_off:6>100700 <rst_rcvd:3>579 <freq:8>7.050000 <dxcc:3>230 "
            "<gridsquare:6>JO62QM <qsl_rcvd:1>N <qsl_sent:1>Y <qslsdate:8>20240602 <EOR>\n");
  EXPECT_EQ(AdiLine(c, AdifFieldSet::kEqsl, "TNX QSO"),
            "<call:6>DL1ABC <qso_date:8:d>20240501 <time_on:6>100005 <band:3>40m <mode:2>CW "
            "<rst_sent:3>599 <qslmsg:7>TNX QSO <EOR>\n");
  const std::string all = AdiLine(c, AdifFieldSet::kAllFields, "TNX QSO");
  EXPECT_NE(all.find("<qslsdate:8>20240602 <app_tavlorin_country:7:s>GERMANY "
                     "<app_tavlorin_my_gridsquare:6:s>IO91WM <app_tavlorin_my_eqsl_rcvd:1:s>Y "
                     "<app_tavlorin_my_eqslrdate:8>20240604 <my_country:7>England <sig:4>POTA "
                     "<EOR>\n"),
            std::string::npos)
      << all;
  EXPECT_EQ(all.find("qslmsg"), std::string::npos);

  struct {
    const char* stored;
    const char* freq;
  } freqs[] = {{"7.050.000", "7.050000"}, {"14.070.000.5", "14.070.000.5"}, {"14.07", "14.07"},
               {"145.500.000", "145.500000"}};
  for (const auto& f : freqs) {
    EXPECT_EQ(AdifFrequency(f.stored), f.freq);
  }
  EXPECT_EQ(AdifFlag("10R1"), "YNRY");

  // The MODE/SUBMODE pair a contact was read with is written as a pair.
  CLogbookRecordset pair;
  pair.mode = "USB";
  pair.extraFields = "<mode:3>SSB <x:1>y";
  EXPECT_EQ(AdiLine(pair, AdifFieldSet::kAllFields),
            "<mode:3>SSB <submode:3>USB <x:1>y <EOR>\n");
  EXPECT_EQ(AdiLine(CLogbookRecordset(), AdifFieldSet::kAllFields), "<EOR>\n");
}

TEST(AdifWriterTest, HeaderLines) {
  AdifHeaderInfo info{"Tavlorin", "1.2.3", "about", "01-May-2024 10:00:00", "/x/log.sqlite", 7};
  EXPECT_EQ(AdiHeader(info),
            "#++\n#   Tavlorin 1.2.3\n#   about\n#\n#   Free software for ever!\n#\n"
            "#   Created:  01-May-2024 10:00:00\n#   Database: /x/log.sqlite\n"
            "#   Exported: 7 records\n#\n#--\n\n<ADIF_VERS:3>2.0\n<PROGRAMID:8>Tavlorin\n"
            "<PROGRAMVERSION:5>1.2.3\n<EOH>\n\n");
  ASSERT_EQ(AdifFieldSetTexts().size(), 3u);
  EXPECT_STREQ(AdifFieldSetTexts()[0], "Only fields supported by ADIF 2.0.");
}

std::string Slurp(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

// The file without its "#   Database:" line, which names the logbook it came from.
std::string WithoutDatabaseLine(std::string text) {
  const size_t at = text.find("#   Database: ");
  return at == std::string::npos ? text : text.erase(at, text.find('\n', at) - at + 1);
}

class AdifRoundTripTest : public LogbookTest {
 protected:
  std::unique_ptr<LogbookDatabase> NewLogbook(const std::string& name) {
    auto db = MakeDatabase((dir_ / name).string());
    EXPECT_TRUE(db->Define(false));
    return db;
  }
  void Import(LogbookDatabase& db, const std::filesystem::path& file) {
    AdifImport import(db, {});
    ASSERT_TRUE(import.Read(file.string()).ok()) << file;
    AdifImportResult r = import.Save();
    ASSERT_TRUE(r.status.ok()) << r.status.message();
    EXPECT_EQ(static_cast<size_t>(r.stored) + import.refused(), import.size()) << file;
  }
  std::string Export(LogbookDatabase& db, const std::string& name, bool xml) {
    AdifExportOptions options;
    options.fields = AdifFieldSet::kAllFields;
    options.xml = xml;
    options.now = 1714557600;
    AdifExportResult r = ExportAdif(db, (dir_ / name).string(), options);
    EXPECT_TRUE(r.status.ok()) << r.status.message();
    return (dir_ / name).string();
  }
};

// Field names and values of every record of a file.
std::vector<std::multimap<std::string, std::string>> Fields(const std::string& path) {
  AdifDocument doc;
  EXPECT_TRUE(ReadAdif(Slurp(path), &doc).ok());
  std::vector<std::multimap<std::string, std::string>> out;
  for (size_t n = 1; n <= doc.size(); ++n) {
    out.emplace_back();
    for (const auto& f : doc.Record(n)) {
      if (!f.value.empty()) {
        out.back().emplace(std::string(f.name), std::string(f.value));
      }
    }
  }
  return out;
}

TEST_F(AdifRoundTripTest, EveryFixtureExportsImportsAndExportsAgainTheSame) {
  const std::filesystem::path fixtures = std::filesystem::path(TAVLORIN_TEST_SOURCE_DIR) / "fixtures/adif";
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(fixtures)) {
    SCOPED_TRACE(entry.path().string());
    ++files;
    const std::string stem = entry.path().stem().string();
    auto first = NewLogbook(stem + "-1.sqlite");
    Import(*first, entry.path());
    const std::string adi = Export(*first, stem + "-1.adi", false);
    const std::string adx = Export(*first, stem + "-1.adx", true);
    auto second = NewLogbook(stem + "-2.sqlite");
    Import(*second, adi);
    auto third = NewLogbook(stem + "-3.sqlite");
    Import(*third, adx);
    const std::string again = WithoutDatabaseLine(Slurp(Export(*second, stem + "-2.adi", false)));
    EXPECT_EQ(again, WithoutDatabaseLine(Slurp(adi)));
    EXPECT_EQ(WithoutDatabaseLine(Slurp(Export(*third, stem + "-3.adi", false))), again);
  }
  EXPECT_GE(files, 6);
}

// Importing a file and exporting it with "All fields" keeps every field of every stored
// record: under its own name, or the logbook's name for it, and with its value unless the
// logbook writes that field in its own form (dates, band and mode names, flags, FREQ).
TEST_F(AdifRoundTripTest, ImportThenExportLosesNoField) {
  const std::map<std::string, std::string> renamed = {{"country", "app_tavlorin_country"}};
  const std::set<std::string> ownForm = {"qso_date", "time_on", "time_off", "band",     "mode",
                                         "submode",  "freq",    "qsl_rcvd", "qsl_sent", "tx_pwr",
                                         "app_tavlorin_my_eqsl_sent", "comment", "notes"};
  const std::filesystem::path fixtures = std::filesystem::path(TAVLORIN_TEST_SOURCE_DIR) / "fixtures/adif";
  for (const char* name : {"adif31_fields.adi", "service_utf8_bytes.adi", "characters_counted.adi"}) {
    SCOPED_TRACE(name);
    auto db = NewLogbook(std::string(name) + ".sqlite");
    Import(*db, fixtures / name);
    const auto in = Fields((fixtures / name).string());
    const auto out = Fields(Export(*db, std::string(name) + ".out.adi", false));
    ASSERT_EQ(in.size(), out.size());
    for (size_t r = 0; r < in.size(); ++r) {
      for (const auto& [field, value] : in[r]) {
        const std::string written = renamed.count(field) ? renamed.at(field) : field;
        auto range = out[r].equal_range(written);
        ASSERT_NE(range.first, range.second) << "record " << r + 1 << " lost " << field;
        if (ownForm.count(field) == 0) {
          bool same = false;
          for (auto it = range.first; it != range.second; ++it) {
            same = same || it->second == value;
          }
          EXPECT_TRUE(same) << "record " << r + 1 << ": " << field << " was " << value;
        }
      }
    }
  }
}

TEST_F(AdifRoundTripTest, ExportListsWhatWhereChoosesAndKeepsAnOldFileOnFailure) {
  auto db = NewLogbook("log.sqlite");
  for (const char* call : {"DL1AA", "DL2BB", "G4XYZ"}) {
    CLogbookRecordset c = Contact(call, "2024-05-01 10:00:00");
    ASSERT_TRUE(db->AddRecord(&c).ok());
  }
  AdifExportOptions options;
  options.where = "WHERE [Station] LIKE 'DL%'";
  const std::string path = (dir_ / "dl.adi").string();
  AdifExportResult r = ExportAdif(*db, path, options);
  ASSERT_TRUE(r.status.ok()) << r.status.message();
  EXPECT_EQ(r.records, 2u);
  const std::string text = Slurp(path);
  EXPECT_NE(text.find("#   Exported: 2 records\n"), std::string::npos);
  EXPECT_EQ(text.find("G4XYZ"), std::string::npos);

  options.where = "WHERE [Station] = ";  // not SQL
  r = ExportAdif(*db, path, options);
  EXPECT_FALSE(r.status.ok());
  EXPECT_EQ(Slurp(path), text);

  std::atomic<bool> cancel{true};
  ExchangeProgress progress;
  progress.cancel = &cancel;
  options.where.clear();
  r = ExportAdif(*db, path, options, progress);
  EXPECT_TRUE(r.cancelled);
  EXPECT_EQ(Slurp(path), text);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir_), {}), 3);  // no temporaries
}

}  // namespace
}  // namespace tavlorin
