// The Cabrillo export: the column rules (frequency, mode, report split), both templates, the
// 2.0 and 3.0 headers, the lists kept as they stand, and a whole log from a logbook file.
#include <fstream>
#include <sstream>

#include "logbook/cabrillo_export.h"
#include "logbook/cabrillo_lists.h"
#include "logbook/cabrillo_writer.h"
#include "logbook_test_support.h"

namespace tavlorin {
namespace {

CLogbookRecordset Qso(const char* freq, const char* band, const char* mode, const char* sent = "",
                      const char* recv = "") {
  CLogbookRecordset c;
  c.frequency = freq;
  c.bandMHz = band;
  c.mode = mode;
  c.reportSent = sent;
  c.reportRecv = recv;
  c.station = "DL1ABC";
  c.myCallsign = "G4XYZ";
  c.startTime = ParseOleDate("2024-11-23 00:05:00");
  return c;
}

TEST(CabrilloTest, FrequencyColumn) {
  struct {
    const char* freq;
    const char* band;
    const char* v2;
    const char* v3;
  } cases[] = {
      {"14.025.000", "20m", "14025", "14025"},
      {"21.049.990", "15m", "21049", "21049"},  // kHz are cut, not rounded
      {"", "20m", "14000", "14000"},
      {"", "160m", "1800", "1800"},
      {"", "2m", "0", "144"},
      {"", "70cm", "0", "432"},
      {"", "17m", "0", "0"},
      {"50.150.000", "6m", "50150", "50"},
      {"144.300.000", "2m", "144", "144"},       // kHz would not fit the column
      {"1.296.200.000", "23cm", "1.2G", "1.2G"},
      {"10368.100.000", "3cm", "10G", "10G"},
      {"", "", "0", "0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.freq) + " " + c.band);
    const CLogbookRecordset q = Qso(c.freq, c.band, "CW");
    EXPECT_EQ(CabrilloFrequency(q, 2), c.v2);
    EXPECT_EQ(CabrilloFrequency(q, 3), c.v3);
  }
}

TEST(CabrilloTest, ModeLetters) {
  struct {
    const char* contest;
    const char* mode;
    int version;
    bool fromContacts;
    const char* letters;
  } cases[] = {
      {"CQ-WW-RTTY", "CW", 2, false, "RY"},   {"ARRL-DX-SSB", "CW", 2, false, "PH"},
      {"CQ-WPX-CW", "USB", 2, false, "CW"},   {"CQ-160-SSBCQ-WPX-CW", "CW", 2, false, "PH"},
      {"IARU-HF", "RTTY", 2, false, "RY"},    {"IARU-HF", "LSB", 2, false, "PH"},
      {"IARU-HF", "AM", 2, false, "PH"},      {"IARU-HF", "FM", 2, false, "FM"},
      {"IARU-HF", "PSK31", 2, false, "??"},   {"IARU-HF", "PSK31", 3, false, "DG"},
      {"IARU-HF", "FT8", 3, false, "DG"},     {"IARU-HF", "FSK", 3, false, "RY"},
      {"IARU-HF", "SSTV", 3, false, "??"},    {"CQ-WW-CW", "USB", 2, true, "PH"},
  };
  for (const auto& c : cases) {
    CabrilloHeader h;
    h.contest = c.contest;
    h.version = c.version;
    h.modeFromContacts = c.fromContacts;
    EXPECT_EQ(CabrilloMode(Qso("", "", c.mode), h), c.letters) << c.contest << " " << c.mode;
  }
}

TEST(CabrilloTest, ReportSplit) {
  struct {
    const char* report;
    const char* mode;
    const char* rst;
    const char* exchange;
  } cases[] = {
      {"59 014", "SSB", "59", "014"}, {"5914", "SSB", "59", "4"},    {"59914", "CW", "599", "4"},
      {"  599 ON ", "CW", "599", "ON"}, {"599", "CW", "599", ""},    {"5", "FM", "5", ""},
      {"579 25 K", "CW", "579", "25 K"}, {"", "CW", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SplitCabrilloReport(c.report, c.mode),
              (std::pair<std::string, std::string>(c.rst, c.exchange)))
        << c.report;
  }
}

TEST(CabrilloTest, QsoLinesInTheirColumns) {
  CabrilloHeader h;
  h.contest = "CQ-WW-SSB";
  const CLogbookRecordset q = Qso("14.205.000", "20m", "USB", "59 14", "59 05");
  EXPECT_EQ(CabrilloQsoLine(q, CabrilloTemplates()[0], h),
            "QSO: 14205 PH 2024-11-23 0005 G4XYZ         59  14     DL1ABC        59  05");
  const std::string two = CabrilloQsoLine(q, CabrilloTemplates()[1], h);
  ASSERT_EQ(two.size(), 81u);
  EXPECT_EQ(two.back(), '0');
  // A callsign longer than its column is cut, so the next column stays in place.
  CLogbookRecordset longCall = q;
  longCall.station = "VP2V/DL1ABC/QRP";
  EXPECT_EQ(CabrilloQsoLine(longCall, CabrilloTemplates()[0], h).substr(55, 17),
            "VP2V/DL1ABC/Q 59 ");
}

TEST(CabrilloTest, HeadersOfBothVersions) {
  CabrilloHeader h;
  h.callsign = "G4XYZ";
  h.name = "Ann Op";
  h.address = "1 Road\r\nTown\n";
  h.soapbox = "Fun";
  h.contest = "CQ-WW-CW";
  h.catOperator = "MULTI-TWO";
  h.catBand = "ALL";
  h.catPower = "LOW";
  h.catMode = "CW";
  h.catAssisted = "NON-ASSISTED";
  h.catDx = "DXPEDITION";
  h.catTime = "24-HOURS";
  h.arrlSection = "Maine";
  h.createdBy = "Tavlorin 9";
  h.dx = true;
  EXPECT_EQ(CabrilloHeaderText(h, {}),
            "START-OF-LOG: 2.0\r\nARRL-SECTION: Maine\r\nCALLSIGN: G4XYZ\r\n"
            "CATEGORY: MULTI-TWO ALL LOW CW\r\nCATEGORY-ASSISTED: NON-ASSISTED\r\n"
            "CATEGORY-DXPEDITION: DXPEDITION\r\nCATEGORY-OVERLAY: \r\nCLAIMED-SCORE: \r\n"
            "CLUB: \r\nCONTEST: CQ-WW-CW\r\nCREATED-BY: Tavlorin 9\r\nNAME: Ann Op\r\n"
            "ADDRESS: 1 Road\r\nADDRESS: Town\r\nOPERATORS: \r\nSOAPBOX: Fun\r\n");
  h.version = 3;
  h.offtime = true;
  std::vector<CLogbookRecordset> log = {Qso("", "", "CW"), Qso("", "", "CW"), Qso("", "", "CW")};
  log[1].startTime = *log[0].startTime + 0.5 / 24;
  log[2].startTime = *log[1].startTime + 2.0 / 24;
  EXPECT_EQ(CabrilloHeaderText(h, log),
            "START-OF-LOG: 3.0\r\nLOCATION: ME\r\nCALLSIGN: G4XYZ\r\nCONTEST: CQ-WW-CW\r\n"
            "CATEGORY-OPERATOR: MULTI-OP\r\nCATEGORY-ASSISTED: NON-ASSISTED\r\n"
            "CATEGORY-BAND: ALL\r\nCATEGORY-MODE: CW\r\nCATEGORY-POWER: LOW\r\n"
            "CATEGORY-STATION: EXPEDITION\r\nCATEGORY-TRANSMITTER: TWO\r\n"
            "CREATED-BY: Tavlorin 9\r\nNAME: Ann Op\r\nADDRESS: 1 Road\r\nADDRESS: Town\r\n"
            "SOAPBOX: Fun\r\nOFFTIME: 2024-11-23 0035 2024-11-23 0235\r\n");
  struct {
    const char* call;
    const char* name;
    const char* address;
    const char* message;
  } missing[] = {{"", "A", "B", "Callsign cannot be empty"},
                 {"C", " ", "B", "Name cannot be empty"},
                 {"C", "A", "", "Address cannot be empty"},
                 {"C", "A", "B", ""}};
  for (const auto& m : missing) {
    CabrilloHeader x;
    x.callsign = m.call;
    x.name = m.name;
    x.address = m.address;
    EXPECT_EQ(CabrilloMissingValue(x), m.message);
  }
}

TEST(CabrilloTest, ListsAreKeptAsTheyStand) {
  const auto contests = SplitChoices(kCabrilloContests);
  EXPECT_EQ(contests.size(), 40u);
  EXPECT_NE(std::find(contests.begin(), contests.end(), "CQ-160-SSBCQ-WPX-CW"), contests.end());
  EXPECT_EQ(contests.front(), "AP-SPRINT");
  EXPECT_EQ(contests.back(), "TARA-RTTY");
  EXPECT_EQ(SplitChoices(kCabrilloOperators).size(), 12u);
  const auto sections = ArrlSections();
  EXPECT_STREQ(sections.front().name, "- Foreign DX -");
  EXPECT_STREQ(sections[1].name, "Connecticut");
  EXPECT_STREQ(sections[2].name, "Eastern Massachusetts");
  EXPECT_STREQ(sections.back().name, "Northern Territories");
  EXPECT_EQ(ArrlSectionAbbreviation("eastern massachusetts"), "EMA");
  EXPECT_EQ(ArrlSectionAbbreviation("Atlantis"), "");
}

class CabrilloExportTest : public testing_support::DefinedLogbookTest {};

TEST_F(CabrilloExportTest, WholeLogOldestFirstAndSettingsKept) {
  for (const char* start : {"2024-11-23 10:00:00", "2024-11-23 09:00:00"}) {
    CLogbookRecordset c = Qso("7.025.000", "40m", "CW", "599 14", "599 05");
    c.startTime = ParseOleDate(start);
    ASSERT_TRUE(db_->AddRecord(&c).ok());
  }
  CabrilloSettingsValues values = LoadCabrilloSettings(*settings_);
  EXPECT_EQ(values.header.catOperator, "SINGLE-OP");
  const std::string path = CabrilloFileIn(dir_.string());
  CabrilloExportResult r = ExportCabrillo(*db_, path, values, "", "");
  EXPECT_EQ(r.status.message(), "Callsign cannot be empty");

  values.header.callsign = "G4XYZ";
  values.header.name = "Ann";
  values.header.address = "Town";
  values.header.contest = "CQ-WW-CW";
  values.header.version = 3;
  values.templateName = kCabrilloMultiTwoTemplate;
  ASSERT_TRUE(StoreCabrilloSettings(*settings_, values).ok());
  Settings reread(settings_->file());
  const CabrilloSettingsValues back = LoadCabrilloSettings(reread);
  EXPECT_EQ(back.header.callsign, "G4XYZ");
  EXPECT_EQ(back.header.version, 3);
  EXPECT_EQ(&ChosenCabrilloTemplate(back), &CabrilloTemplates()[1]);

  r = ExportCabrillo(*db_, path, back, "", "");
  ASSERT_TRUE(r.status.ok()) << r.status.message();
  EXPECT_EQ(r.contacts, 2u);
  std::ifstream in(dir_ / "Cabrillo.txt", std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  const std::string log = text.str();
  const size_t first = log.find("QSO:  7025 CW 2024-11-23 0900");
  const size_t second = log.find("QSO:  7025 CW 2024-11-23 1000");
  EXPECT_NE(first, std::string::npos) << log;
  EXPECT_LT(first, second);
  EXPECT_EQ(log.substr(log.size() - 13), "END-OF-LOG:\r\n");
}

}  // namespace
}  // namespace tavlorin
