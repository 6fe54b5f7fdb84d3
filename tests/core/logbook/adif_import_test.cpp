// The ADIF import: how fields land in the logbook's columns (a table of records and the
// columns they must give), and the import's steps on a real logbook file: duplicates, dry
// run, cancel, the final counts.
#include <atomic>

#include "logbook/adif_contact_mapper.h"
#include "logbook/adif_import.h"
#include "logbook/adif_reader.h"
#include "logbook_test_support.h"

namespace tavlorin {
namespace {

using testing_support::DefinedLogbookTest;

class AdifImportTest : public DefinedLogbookTest {
 protected:
  // Maps the one record of `adi`; the columns named in `want` ("Column=value") are checked.
  void ExpectMapped(const std::string& adi, const std::vector<std::string>& want,
                    AdifImportOptions options = {}, const std::string& problem = "",
                    bool stored = true) {
    SCOPED_TRACE(adi);
    AdifDocument doc;
    ASSERT_TRUE(ReadAdif(adi, &doc).ok());
    ASSERT_EQ(doc.size(), 1u);
    AdifReference reference;
    ASSERT_TRUE(db_->Bands(&reference.bands).ok());
    ASSERT_TRUE(db_->Modes(&reference.modes).ok());
    reference.countries = &db_->countries();
    reference.fieldSizes = db_->fieldSizes();
    AdifContactMapper mapper(reference, options);
    std::vector<AdifProblem> problems;
    CLogbookRecordset contact;
    EXPECT_EQ(mapper.Map(doc.Record(1), 1, &contact, &problems), stored);
    mapper.AppendSummary(&problems);
    for (const std::string& w : want) {
      const size_t eq = w.find('=');
      const LogbookField* field = FindLogbookField(w.substr(0, eq));
      ASSERT_NE(field, nullptr) << w;
      EXPECT_EQ(LogbookFieldText(contact, *field), w.substr(eq + 1)) << w;
    }
    std::string all;
    for (const AdifProblem& p : problems) {
      all += p.Format() + "\n";
    }
    if (problem.empty()) {
      EXPECT_EQ(all, "");
    } else {
      EXPECT_NE(all.find(problem), std::string::npos) << all;
    }
  }
};

constexpr const char* kStart = "<CALL:6>DL1ABC<QSO_DATE:8>20240501<TIME_ON:4>1000";

TEST_F(AdifImportTest, FieldsToColumns) {
  const std::string s = kStart;
  ExpectMapped(s + "<EOR>", {"Station=DL1ABC", "StartTime=2024-05-01 10:00:00", "ExtraFields="});
  ExpectMapped("<CALL:4>K1AA<QSO_DATE:8>20240501<TIME_ON:6>235959<TIME_OFF:4>0010<EOR>",
               {"StartTime=2024-05-01 23:59:59", "EndTime=2024-05-02 00:10:00"});
  ExpectMapped(s + "<TIME_OFF:4>1030<QSO_DATE_OFF:8>20240502<EOR>",
               {"EndTime=2024-05-02 10:30:00", "ExtraFields=<qso_date_off:8>20240502"});
  // "-" is read as "0" in dates and times
  ExpectMapped("<CALL:4>K1AA<QSO_DATE:8>2024050-<TIME_ON:4>1-3-<EOR>", {"StartTime="}, {},
               "QSO_DATE \"20240500\" is not a date", false);
  ExpectMapped("<CALL:4>K1AA<QSO_DATE:8>202405-1<TIME_ON:4>1-3-<EOR>",
               {"StartTime=2024-05-01 10:30:00"});
  ExpectMapped(s + "<BAND:3>20M<MODE:3>usb<FREQ:4>14.2<EOR>",
               {"BandMHz=20m", "Mode=USB", "Frequency=14.200.000"});
  ExpectMapped(s + "<MODE:3>SSB<SUBMODE:3>LSB<EOR>", {"Mode=LSB", "ExtraFields=<mode:3>SSB"});
  ExpectMapped(s + "<QSL_RCVD:1>y<QSL_SENT:1>N<QSLRDATE:8>20240601<QSLSDATE:8>20240602<EOR>",
               {"QSLRecv=1", "QSLSent=0", "QSLRecvDate=2024-06-01 00:00:00", "QSLSentDate=",
                "ExtraFields=<qslsdate:8>20240602"});
  ExpectMapped(s + "<APP_TAVLORIN_MY_EQSL_SENT:1:S>Y<APP_Tavlorin_MY_EQSLSDATE:8>20240603<EOR>",
               {"eQSLSent=1", "eQSLSentDate=2024-06-03 00:00:00"});
  ExpectMapped(s + "<OPERATOR:5>G4XYZ<TX_PWR:3>100<MY_COUNTRY:7>England<QTH:6>Berlin<EOR>",
               {"MyCallsign=G4XYZ", "MyPower=100", "MyCountry=England", "QTH=Berlin"});
  ExpectMapped(s + "<MY_GRIDSQUARE:6>JO62QM<SIG:4>POTA<EOR>",
               {"MyLocator=", "ExtraFields=<my_gridsquare:6>JO62QM <sig:4>POTA"});
  // the second of two fields of one name is kept, not lost
  ExpectMapped(s + "<NAME:3>Ann<NAME:3>Bob<EOR>", {"Name=Ann", "ExtraFields=<name:3>Bob"});
  // the Part's line-end rules inside values
  ExpectMapped(s + "<COMMENT:7>a\n\nb \nc<EOR>", {"Remark=a\nb c"});
}

TEST_F(AdifImportTest, ValuesTheColumnsCannotHoldAreKeptWhole) {
  const std::string s = kStart;
  ExpectMapped(s + "<IOTA:11>EU-005/long<EOR>", {"IOTA=", "ExtraFields=<iota:11>EU-005/long"}, {},
               "record 1: IOTA of 11 characters is longer than the logbook's 10");
  ExpectMapped(s + "<FREQ:5>abcde<EOR>", {"Frequency=", "ExtraFields=<freq:5>abcde"}, {},
               "FREQ \"abcde\" is not a frequency");
  ExpectMapped(s + "<QSLRDATE:10>2024-06-01<QSL_RCVD:1>Y<EOR>",
               {"QSLRecvDate=", "ExtraFields=<qslrdate:10>2024006001"}, {}, "is not a date");
  ExpectMapped(s + "<TIME_OFF:4>2599<EOR>", {"EndTime=", "ExtraFields=<time_off:4>2599"}, {},
               "TIME_OFF \"2599\" is not a time");
}

TEST_F(AdifImportTest, RecordsThatCannotBeStoredAndUnknownValues) {
  ExpectMapped("<QSO_DATE:8>20240501<EOR>", {}, {}, "record 1: no CALL", false);
  ExpectMapped("<CALL:4>K1AA<EOR>", {}, {}, "record 1: no QSO_DATE", false);
  // hyphens make ten characters after the "-" rule: not a date
  ExpectMapped("<CALL:4>K1AA<QSO_DATE:10>2024-05-01<EOR>", {}, {}, "QSO_DATE \"2024005001\"",
               false);
  ExpectMapped("<CALL:4>K1AA<QSO_DATE:8>19291231<EOR>", {}, {}, "from 1930", false);
  ExpectMapped("<CALL:4>K1AA<QSO_DATE:8>20240501<TIME_ON:4>1260<EOR>", {}, {}, "TIME_ON", false);
  ExpectMapped("<CALL:4>K1AA<QSO_DATE:8>20240501<EOR>", {"StartTime=2024-05-01 00:00:00"}, {},
               "no TIME_ON; the contact starts at 00:00");
  ExpectMapped(std::string(kStart) + "<MODE:4>OFDM<BAND:3>5M<QSL_RCVD:1>X<EOR>",
               {"Mode=OFDM", "BandMHz=5m", "QSLRecv=X"}, {},
               "MODE \"OFDM\" is not one the logbook knows; stored as written (1 contact, the "
               "first in record 1)");
}

TEST_F(AdifImportTest, AutoBandAndAutoDxcc) {
  const std::string s = kStart;
  ExpectMapped(s + "<FREQ:4>14.2<EOR>", {"BandMHz="});
  ExpectMapped(s + "<FREQ:4>14.2<EOR>", {"BandMHz=20m"}, {.autoBand = true});
  ExpectMapped(s + "<FREQ:4>14.2<BAND:3>40m<EOR>", {"BandMHz=40m"}, {.autoBand = true});
  ExpectMapped(s + "<EOR>", {"DXCC=", "Country="});
  ExpectMapped("<CALL:6>dl1abc<QSO_DATE:8>20240501<EOR>",
               {"DXCC=230", "Country=FEDERAL REPUBLIC OF GERMANY"}, {.autoDxcc = true},
               "no TIME_ON");
  // a DXCC of the file names the country; a country of the file is kept
  ExpectMapped(s + "<DXCC:3>287<EOR>", {"DXCC=287", "Country=SWITZERLAND"});
  ExpectMapped(s + "<DXCC:3>287<COUNTRY:5>Swiss<EOR>", {"Country=Swiss"}, {.autoDxcc = true});
}

TEST(AdifMegahertzTest, DecimalsAndRounding) {
  const std::pair<const char*, uint64_t> good[] = {
      {"14.2", 14200000},       {"7.0255001", 7025500},  {"7.0255005", 7025501},
      {"14", 14000000},         {"10368.1", 10368100000}, {"0.1357", 135700},
      {" 3,5 ", 3500000},       {".475", 475000},
  };
  for (const auto& [text, hertz] : good) {
    uint64_t got = 0;
    EXPECT_TRUE(ParseAdifMegahertz(text, &got)) << text;
    EXPECT_EQ(got, hertz) << text;
  }
  for (const char* bad : {"", "abc", "14.2.3", "1,2,3", "-7.0", "14.07 MHz", "12345678.9"}) {
    uint64_t got = 0;
    EXPECT_FALSE(ParseAdifMegahertz(bad, &got)) << bad;
  }
}

std::string Lines(int count, int firstDay) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    const int n = firstDay + i;
    text += "<CALL:5>DL" + std::to_string(100 + n) + "<QSO_DATE:8>202405" + std::to_string(10 + n) +
            "<TIME_ON:4>1000<BAND:3>20m<MODE:2>CW<EOR>\n";
  }
  return text;
}

TEST_F(AdifImportTest, DuplicatesAreCountedAndSkipped) {
  AdifImport first(*db_, {});
  ASSERT_TRUE(first.ReadBytes(Lines(5, 0)).ok());
  AdifImportResult r = first.Save();
  EXPECT_EQ(r.stored, 5);
  EXPECT_EQ(r.FinishedText(), "Finished, 0 errors (0 duplicates)");

  // Three of these are stored already, and the file repeats one of its own records.
  AdifImport second(*db_, {});
  ASSERT_TRUE(second.ReadBytes(Lines(5, 2) + Lines(1, 6) + "<CALL:4>K1AA<EOR>").ok());
  EXPECT_EQ(second.refused(), 1u);
  r = second.Save();
  EXPECT_EQ(r.stored, 2);
  EXPECT_EQ(r.duplicates, 4);
  EXPECT_EQ(r.FinishedText(), "Finished, 5 errors (4 duplicates)");
  ASSERT_EQ(r.notStored.size(), 4u);
  EXPECT_EQ(r.notStored[0].record, 1u);
  EXPECT_EQ(r.notStored[3].record, 6u);
  EXPECT_EQ(Count("TBL_LOGBOOK"), 7);
}

TEST_F(AdifImportTest, DryRunAndCancelStoreNothing) {
  AdifImport import(*db_, {});
  ASSERT_TRUE(import.ReadBytes(Lines(3, 0) + Lines(1, 0)).ok());
  AdifImportResult dry = import.Save({}, true);
  EXPECT_EQ(dry.stored, 3);
  EXPECT_EQ(dry.duplicates, 1);
  EXPECT_EQ(Count("TBL_LOGBOOK"), 0);

  std::atomic<bool> cancel{false};
  ExchangeProgress progress;
  progress.cancel = &cancel;
  std::vector<std::string> texts;
  progress.status = [&](const std::string& t) { texts.push_back(t); };
  progress.step = [&](size_t, size_t) { cancel = true; };
  AdifImportResult cancelled = import.Save(progress);
  EXPECT_TRUE(cancelled.cancelled);
  EXPECT_EQ(cancelled.stored, 0);
  EXPECT_EQ(Count("TBL_LOGBOOK"), 0);
  EXPECT_EQ(texts, std::vector<std::string>{kImportSaving});

  // Reading a file that is no ADIF at all, or is missing, says so.
  EXPECT_EQ(import.ReadBytes("just some text").message(), "The file holds no ADIF records");
  EXPECT_NE(import.Read((dir_ / "missing.adi").string()).message().find("Cannot open"),
            std::string::npos);
}

}  // namespace
}  // namespace tavlorin
