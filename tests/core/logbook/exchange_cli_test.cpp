// tavlorin-cli log import / export / cabrillo end to end, on a real logbook file.
#include <fstream>
#include <sstream>

#include "logbook_test_support.h"
#include "support/child_process.h"

namespace tavlorin {
namespace {

class ExchangeCliTest : public testing_support::LogbookTest {
 protected:
  testing::ProcessResult Run(std::vector<std::string> words) {
    words.insert(words.begin(), {TAVLORIN_CLI_PATH, "--db", path_, "log"});
    return testing::RunProcess(words, std::chrono::seconds(60));
  }
  std::string Fixture(const char* name) {
    return std::string(TAVLORIN_TEST_SOURCE_DIR) + "/fixtures/adif/" + name;
  }
  std::string Slurp(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
  }
};

TEST_F(ExchangeCliTest, ImportExportAndCabrilloInSequence) {
  const std::string adi = Fixture("service_utf8_bytes.adi");
  const std::string out = (dir_ / "out.adi").string();
  const std::string cabrillo = (dir_ / "contest.log").string();
  struct Step {
    std::vector<std::string> words;
    int exitCode;
    const char* has;    // in standard output or error
    int64_t contacts;   // stored contacts afterwards
  };
  const Step steps[] = {
      {{"define"}, 0, "", 0},
      {{"import", adi, "--dry-run"}, 0, "Dry run: 4 of 4 records would be stored", 0},
      {{"import", adi, "--dry-run"}, 0, "\nrecord 4: warning: no <EOR> at the end of the file", 0},
      {{"import", adi, "--dry-run"}, 0, "\n1\tDL1ABC\t\t2024-05-01 10:00:00\t", 0},
      {{"import", adi}, 0, "Finished, 0 errors (0 duplicates); 4 of 4 records stored", 4},
      {{"import", adi, "--json"}, 0, "\"duplicates\": 4,", 4},
      {{"import", adi, "--json"}, 0,
       "{\"record\": 1, \"error\": true, \"text\": \"a duplicate of a stored contact", 4},
      {{"import", (dir_ / "missing.adi").string()}, 1, "Cannot open", 4},
      {{"import"}, 2, "import needs one FILE", 4},
      {{"import", adi, "--auto-band", "--no-auto-band"}, 2, "contradict", 4},
      {{"export", out, "--fields", "all", "--where", "[Mode] <> 'CW'"}, 0,
       "Exported 3 records to ", 4},
      {{"export", out, "--fields", "qso"}, 2, "--fields must be adif, all or eqsl", 4},
      {{"cabrillo", cabrillo, "--contest", "CQ-WW-SSB"}, 2, "Callsign cannot be empty", 4},
      {{"cabrillo", cabrillo, "--callsign", "g4xyz", "--name", "Ann", "--address", "Town",
        "--category-power", "tiny"},
       2, "--category-power \"tiny\" is not one of HIGH,LOW,QRP", 4},
      {{"cabrillo", cabrillo, "--callsign", "g4xyz", "--name", "Ann", "--address", "Town",
        "--contest", "cq-ww-ssb"},
       0, "Wrote 4 contacts to ", 4},
      // the values of the last run are kept
      {{"cabrillo", cabrillo, "--version", "3"}, 0, "(Cabrillo 3.0)", 4},
  };
  for (const Step& step : steps) {
    std::string line;
    for (const std::string& w : step.words) {
      line += w + " ";
    }
    SCOPED_TRACE(line);
    const testing::ProcessResult r = Run(step.words);
    EXPECT_EQ(r.exitCode, step.exitCode) << r.out << r.err;
    EXPECT_NE((r.out + r.err).find(step.has), std::string::npos) << r.out << r.err;
    EXPECT_EQ(Count("TBL_LOGBOOK"), step.contacts);
  }
  const std::string adif = Slurp(out);
  EXPECT_NE(adif.find("<my_gridsquare:6>JO62QM"), std::string::npos) << adif;
  EXPECT_EQ(adif.find("<mode:2>CW"), std::string::npos);
  const std::string log = Slurp(cabrillo);
  EXPECT_NE(log.find("CALLSIGN: G4XYZ\r\nCONTEST: CQ-WW-SSB\r\n"), std::string::npos) << log;
  EXPECT_NE(log.find("QSO: 14200 PH 2024-05-01 1000"), std::string::npos) << log;
}

}  // namespace
}  // namespace tavlorin
