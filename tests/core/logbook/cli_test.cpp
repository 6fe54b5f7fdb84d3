// tavlorin-cli's logbook, country and locator commands end to end, on a real logbook file.
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "logbook_test_support.h"

namespace tavlorin {
namespace {

struct Result {
  int exitCode = -1;
  std::string out;
  std::string err;
};

class CliTest : public testing_support::LogbookTest {
 protected:
  // Runs the CLI with `--db path_` before `arguments` (a shell-quoted word list).
  Result Run(const std::string& arguments, const std::string& input = "") {
    return RunRaw("--db '" + path_ + "' " + arguments, input);
  }
  Result RunRaw(const std::string& arguments, const std::string& input = "") {
    const std::string in = (dir_ / "in.txt").string(), out = (dir_ / "out.txt").string(),
                      err = (dir_ / "err.txt").string();
    std::ofstream(in) << input;
    const std::string command = std::string("'") + TAVLORIN_CLI_PATH + "' " + arguments + " <'" +
                                in + "' >'" + out + "' 2>'" + err + "'";
    int status = std::system(command.c_str());
    Result r;
    r.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.out = Slurp(out);
    r.err = Slurp(err);
    return r;
  }
  static std::string Slurp(const std::string& file) {
    std::ifstream f(file);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
  }
};

TEST_F(CliTest, LogbookLifecycle) {
  Result r = Run("log list");
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_NE(r.err.find("Error opening database: unable to open database file"), std::string::npos)
      << r.err;

  r = Run("log define --verbose");
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Database structure is correct\n"), std::string::npos);
  EXPECT_NE(r.out.find("Opening field: QTH..."), std::string::npos);

  r =
      Run("log add Station=DL1ABC 'StartTime=2024-05-01 10:00:00' BandMHz=20m Mode=SSB "
          "\"Remark=it's fine\"");
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "1\n");
  ASSERT_EQ(Run("log add Station=G4XYZ 'StartTime=2024-05-02 10:00:00' Mode=CW").exitCode, 0);

  r = Run("log list --limit 1");
  ASSERT_EQ(r.exitCode, 0) << r.err;
  std::istringstream lines(r.out);
  std::string header, row, extra;
  std::getline(lines, header);
  std::getline(lines, row);
  EXPECT_EQ(header.rfind("PrimaryKey\tCreated\tModified\tStation\tEndTime\tStartTime\t", 0), 0u);
  EXPECT_EQ(row.rfind("2\t", 0), 0u) << "newest contact first";
  EXPECT_FALSE(std::getline(lines, extra)) << "--limit 1 gives one row";

  r = Run("log list --json --where \"[Station] = 'DL1ABC'\"");
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("\"Remark\": \"it's fine\""), std::string::npos) << r.out;
  EXPECT_EQ(r.out.find("G4XYZ"), std::string::npos);

  ASSERT_EQ(Run("log update 1 QSLSent=Y").exitCode, 0);
  ASSERT_EQ(Run("log update 1 Name=Hans 'QTH=Berlin'").exitCode, 0);
  EXPECT_EQ(Sql("SELECT QSLSent, Name, QTH FROM TBL_LOGBOOK WHERE PrimaryKey = 1")[0],
            "Y|Hans|Berlin");
  ASSERT_EQ(Run("log delete 2").exitCode, 0);
  r = Run("log delete 2");
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_NE(r.err.find("Error deleting record 2: No current record."), std::string::npos);
  EXPECT_EQ(Count("TBL_LOGBOOK"), 1);
}

// The program-wide settings file that the tool reads (the test's own XDG_CONFIG_HOME).
class SettingsFile {
 public:
  explicit SettingsFile(const std::string& text) {
    path_ = std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "tavlorin" / "tavlorin.ini";
    std::filesystem::create_directories(path_.parent_path());
    std::ofstream(path_) << text;
  }
  ~SettingsFile() { std::filesystem::remove(path_); }

 private:
  std::filesystem::path path_;
};

TEST_F(CliTest, SettingsChooseTheFileAndWhetherErrorsShow) {
  {
    SettingsFile settings("LogbookDatabase=" + path_ + "\n");
    ASSERT_EQ(RunRaw("log define").exitCode, 0);
    ASSERT_EQ(RunRaw("log add Station=K1ABC StartTime=2024-05-01").exitCode, 0);
    EXPECT_EQ(Sql("SELECT Station FROM TBL_LOGBOOK"), std::vector<std::string>{"K1ABC"});
    Result r = RunRaw("log delete 99");
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("Error deleting record 99"), std::string::npos) << r.err;
  }
  SettingsFile settings("LogbookDatabase=" + path_ + "\nLogbookShowErrors=0\n");
  Result r = RunRaw("log delete 99");
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_EQ(r.err.find("Error deleting record"), std::string::npos) << r.err;
  EXPECT_FALSE(r.err.empty());
}

TEST_F(CliTest, BadCommandLinesExitTwo) {
  ASSERT_EQ(Run("log define").exitCode, 0);
  for (const char* words :
       {"log", "log frobnicate", "log add", "log add Nonsense=1", "log add 'StartTime=yesterday'",
        "log list --limit 0", "log list --limit x", "log update x QSLSent=Y", "log delete",
        "log define --loud", "countries", "countries load", "locator", "locator --position 100 0",
        "locator --bearing JN46", "country --bogus"}) {
    Result r = Run(words);
    EXPECT_EQ(r.exitCode, 2) << words << ": " << r.err;
    EXPECT_FALSE(r.err.empty()) << words;
  }
}

TEST_F(CliTest, CountryLookUps) {
  Result r = Run("country dl1abc 4K5A ER6DX QQ1A");
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out,
            "DL1ABC\t230\tFEDERAL REPUBLIC OF GERMANY\n"
            "4K5A\t18\tAZERBAIJAN\n"
            "ER6DX\t179\tMOLDOVA\n"
            "QQ1A\t\t\n");
  r = Run("country", "HB9ABC/P\n\n  VK2ABC  \n");
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "HB9ABC/P\t287\tSWITZERLAND\nVK2ABC\t150\tAUSTRALIA\n");
}

TEST_F(CliTest, LoadCountriesNeedsAnAnswer) {
  const std::string fixture =
      std::string("'") + TAVLORIN_TEST_SOURCE_DIR + "/fixtures/countries_small.txt'";
  ASSERT_EQ(Run("log define").exitCode, 0);
  Result r = Run("countries load " + fixture);
  EXPECT_EQ(r.exitCode, 1) << "no terminal and no --yes: nothing changes";
  EXPECT_EQ(Count("TBL_COUNTRIES"), 402);
  r = Run("countries load " + fixture + " --yes");
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("This file contains 14 active and 2 deleted country definitions"),
            std::string::npos);
  EXPECT_EQ(Count("TBL_COUNTRIES"), 16);
  EXPECT_EQ(Run("country 4U5AB").out, "4U5AB\t117\tITU HQ\n");
}

TEST_F(CliTest, Locators) {
  struct Case {
    const char* words;
    int exitCode;
    const char* out;
  };
  const Case cases[] = {
      {"locator JN46", 0, "JN46\t46.500000\t-9.000000\n"},
      {"locator jn46pt", 0, "JN46PT\t46.812500\t-9.291667\n"},
      {"locator --position 46.8125 -9.291667", 0, "JN46PT\n"},
      {"locator --bearing IO91 IO91", 0, "0.0\t0.00\t0.00\n"},
      {"locator JN4", 1, ""},
      {"locator ZZ99", 1, ""},
  };
  for (const Case& c : cases) {
    Result r = Run(c.words);
    EXPECT_EQ(r.exitCode, c.exitCode) << c.words << ": " << r.err;
    EXPECT_EQ(r.out, c.out) << c.words;
  }
  EXPECT_NE(Run("locator ZZ99").err.find("Invalid locator."), std::string::npos);
}

}  // namespace
}  // namespace tavlorin
