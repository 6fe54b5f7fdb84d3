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

std::string Slurp(const std::filesystem::path& file) {
  std::ifstream f(file);
  std::stringstream s;
  s << f.rdbuf();
  return s.str();
}

class CliTest : public testing_support::LogbookTest {
 protected:
  // Runs the CLI with `arguments` (a shell-quoted word list), after `--db path_` unless `raw`.
  Result Run(const std::string& arguments, const std::string& input = "", bool raw = false) {
    std::ofstream(dir_ / "in.txt") << input;
    const std::string command = std::string("cd '") + dir_.string() + "' && '" + TAVLORIN_CLI_PATH +
                                "' " + (raw ? "" : "--db '" + path_ + "' ") + arguments +
                                " <in.txt >out.txt 2>err.txt";
    int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Slurp(dir_ / "out.txt"),
            Slurp(dir_ / "err.txt")};
  }
};

// One logbook file through a sequence of commands; each step sees what the earlier ones did.
TEST_F(CliTest, CommandsInSequence) {
  const std::string load =
      std::string("countries load '") + TAVLORIN_TEST_SOURCE_DIR + "/fixtures/countries_small.txt'";
  struct Step {
    std::string words;
    int exitCode;
    const char* out;    // the whole of standard output, or nullptr: not checked
    const char* has;    // in standard output or error, or nullptr
    const char* lacks;  // not in standard output, or nullptr
    const char* input = "";
  };
  const Step steps[] = {
      {"log list", 1, "", "Error opening database: unable to open database file", nullptr},
      {"log define --verbose", 0, nullptr, "Database structure is correct\n", nullptr},
      {"log add Station=DL1ABC 'StartTime=2024-05-01 10:00:00' BandMHz=20m Mode=SSB "
       "\"Remark=it's fine\"",
       0, "1\n", nullptr, nullptr},
      {"log add Station=G4XYZ 'StartTime=2024-05-02 10:00:00' Mode=CW", 0, "2\n", nullptr, nullptr},
      {"log list --limit 1", 0, nullptr,
       "PrimaryKey\tCreated\tModified\tStation\tEndTime\tStartTime\t", "\n1\t"},
      {"log list --limit 1", 0, nullptr, "\n2\t", nullptr},  // newest first
      {"log list --json --where \"[Station] = 'DL1ABC'\"", 0, nullptr, "\"Remark\": \"it's fine\"",
       "G4XYZ"},
      {"log update 1 QSLSent=Y", 0, nullptr, nullptr, nullptr},
      {"log update 1 Name=Hans 'QTH=Berlin'", 0, nullptr, nullptr, nullptr},
      {"log delete 2", 0, nullptr, nullptr, nullptr},
      {"log delete 2", 1, nullptr, "Error deleting record 2: No current record.", nullptr},
      // Look-ups on the built-in countries list.
      {"country dl1abc 4K5A ER6DX QQ1A", 0,
       "DL1ABC\t230\tFEDERAL REPUBLIC OF GERMANY\n4K5A\t18\tAZERBAIJAN\n"
       "ER6DX\t179\tMOLDOVA\nQQ1A\t\t\n",
       nullptr, nullptr},
      // an active 9S beats the longer prefix of the deleted Saar; only a deleted 1M4 exists
      {"country 9S4AA 1M4A", 0,
       "9S4AA\t414\tDEMOCRATIC REPUBLIC OF THE CONGO\n1M4A\t178\tMINERVA REEF [deleted]\n", nullptr,
       nullptr},
      {"country", 0, "HB9ABC/P\t287\tSWITZERLAND\nVK2ABC\t150\tAUSTRALIA\n", nullptr, nullptr,
       "HB9ABC/P\n\n  VK2ABC  \n"},
      // No terminal and no --yes: nothing changes.
      {load, 1, nullptr, nullptr, nullptr},
      {"country ER6DX", 0, "ER6DX\t179\tMOLDOVA\n", nullptr, nullptr},
      {load + " --yes", 0, nullptr,
       "This file contains 14 active and 2 deleted country definitions", nullptr},
      {"country 4U5AB ER6DX", 0, "4U5AB\t117\tITU HQ\nER6DX\t179\tMoldova\n", nullptr, nullptr},
      {"locator JN46", 0, "JN46\t46.500000\t-9.000000\n", nullptr, nullptr},
      {"locator jn46pt", 0, "JN46PT\t46.812500\t-9.291667\n", nullptr, nullptr},
      {"locator --position 46.8125 -9.291667", 0, "JN46PT\n", nullptr, nullptr},
      {"locator --bearing IO91 IO91", 0, "0.0\t0.00\t0.00\n", nullptr, nullptr},
      {"locator JN4", 1, "", nullptr, nullptr},
      {"locator ZZ99", 1, "", "Invalid locator.", nullptr},
  };
  for (const Step& s : steps) {
    SCOPED_TRACE(s.words);
    Result r = Run(s.words, s.input);
    EXPECT_EQ(r.exitCode, s.exitCode) << r.err;
    if (s.out != nullptr) {
      EXPECT_EQ(r.out, s.out);
    }
    if (s.has != nullptr) {
      EXPECT_NE((r.out + r.err).find(s.has), std::string::npos) << r.out << r.err;
    }
    if (s.lacks != nullptr) {
      EXPECT_EQ(r.out.find(s.lacks), std::string::npos) << r.out;
    }
  }
  EXPECT_EQ(Sql("SELECT QSLSent, Name, QTH FROM TBL_LOGBOOK"),
            std::vector<std::string>{"Y|Hans|Berlin"});
  EXPECT_EQ(Count("TBL_COUNTRIES"), 16);
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

TEST_F(CliTest, SettingsChooseTheFileAndWhetherErrorsShow) {
  // The program-wide settings file that the tool reads (the test's own XDG_CONFIG_HOME).
  const auto ini =
      std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "tavlorin" / "tavlorin.ini";
  std::filesystem::create_directories(ini.parent_path());
  std::ofstream(ini) << "LogbookDatabase=" << path_ << "\n";
  EXPECT_EQ(Run("log define", "", true).exitCode, 0);
  EXPECT_EQ(Run("log add Station=K1ABC StartTime=2024-05-01", "", true).exitCode, 0);
  EXPECT_EQ(Sql("SELECT Station FROM TBL_LOGBOOK"), std::vector<std::string>{"K1ABC"});
  Result shown = Run("log delete 99", "", true);
  std::ofstream(ini) << "LogbookDatabase=" << path_ << "\nLogbookShowErrors=0\n";
  Result hidden = Run("log delete 99", "", true);
  std::filesystem::remove(ini);
  EXPECT_EQ(shown.exitCode, 1);
  EXPECT_NE(shown.err.find("Error deleting record 99"), std::string::npos) << shown.err;
  EXPECT_EQ(hidden.exitCode, 1);
  EXPECT_EQ(hidden.err.find("Error deleting record"), std::string::npos) << hidden.err;
  EXPECT_FALSE(hidden.err.empty());
}

}  // namespace
}  // namespace tavlorin
