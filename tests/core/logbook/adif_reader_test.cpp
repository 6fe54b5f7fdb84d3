// The ADI and ADX readers on the shapes that real files take: each case is a text and the
// records it must give (fields as "name=value", types as "name:type=value") and the problems.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "logbook/adif_reader.h"
#include "logbook/adx_reader.h"

namespace tavlorin {
namespace {

std::vector<std::string> Records(const AdifDocument& doc) {
  std::vector<std::string> out;
  for (size_t n = 1; n <= doc.size(); ++n) {
    std::string line;
    for (const auto& f : doc.Record(n)) {
      line += (line.empty() ? "" : "|") + std::string(f.name) +
              (f.type.empty() ? "" : ":" + std::string(f.type)) + "=" + std::string(f.value);
    }
    out.push_back(line);
  }
  return out;
}

std::string Problems(const AdifDocument& doc) {
  std::string out;
  for (const AdifProblem& p : doc.problems()) {
    out += p.Format() + "\n";
  }
  return out;
}

struct Case {
  const char* what;
  std::string text;
  std::vector<std::string> records;
  std::string problem;  // a text the problems must hold; empty: no problems at all
};

TEST(AdifReaderTest, ShapesOfRealFiles) {
  const Case cases[] = {
      {"no header text: records start at once", "<CALL:4>K1AA<QSO_DATE:8>20240101<EOR>",
       {"call=K1AA|qso_date=20240101"}, ""},
      {"header fields without text, tags in any case",
       "<ADIF_VER:5>3.1.0<eoh><Call:4>K1AA<eOr>", {"call=K1AA"}, ""},
      {"free-text header with an address in angle brackets",
       "Log of X <x@example.org>\n<PROGRAMID:3>ABC\n<EOH>\n<CALL:4>K1AA<EOR>", {"call=K1AA"}, ""},
      {"a byte-order mark before the header", "\xEF\xBB\xBFheader<EOH><CALL:4>K1AA<EOR>",
       {"call=K1AA"}, ""},
      {"type indicators, <F:0>, junk and line ends between fields",
       "<CALL:4:S>K1AA // note\r\n<F:0><QSO_DATE:8:D>20240101\r<EOR>\n",
       {"call:s=K1AA|f=|qso_date:d=20240101"}, ""},
      {"UTF-8 lengths in bytes", "<QTH:9>Montr\xC3\xA9" "al<EOR>", {"qth=Montr\xC3\xA9" "al"}, ""},
      {"lengths in characters", "<NAME:4>J\xC3\xB6rg <QTH:3>Abc<EOR>",
       {"name=J\xC3\xB6rg|qth=Abc"}, "1 length counts characters"},
      {"Windows-1252 values become UTF-8", "<NAME:8>Fr\xE9" "d\xE9ric<QTH:4>10\x80 <EOR>",
       {"name=Fr\xC3\xA9" "d\xC3\xA9ric|qth=10\xE2\x82\xAC "}, "2 values were not UTF-8"},
      {"a missing final <EOR>", "<CALL:4>K1AA<EOR><CALL:4>K2BB",
       {"call=K1AA", "call=K2BB"}, "record 2: no <EOR> at the end of the file"},
      {"LoTW's end tag and a second <EOH> pass quietly",
       "<EOH><CALL:4>K1AA<EOR><APP_LoTW_EOF><EOH>", {"call=K1AA"}, ""},
      {"another tag without a length is reported", "<CALL:4>K1AA<XYZ><EOR>", {"call=K1AA"},
       "record 1: the tag <XYZ> has no length; ignored"},
      {"a length that would swallow the next record",
       "<CALL:40>K1AA <EOR><CALL:4>K2BB<EOR>", {"call=K1AA", "call=K2BB"},
       "record 1: the length 40 of CALL runs into the next tag"},
      {"a length past the end of the file", "<CALL:4>K1AA<COMMENT:50>short",
       {"call=K1AA|comment=short"}, "runs past the end of the file"},
      {"a malformed tag is skipped and named", "<CALL:4>K1AA<NAME:x>Jo<EOR>", {"call=K1AA"},
       "\"<NAME:x>\" is not a field tag"},
      {"a value not followed by a tag is read by its length", "<CALL:3>K1AA<EOR>",
       {"call=K1A"}, "the value of CALL is not followed by a tag"},
      {"a record with no fields is no record", "<EOR><EOR><CALL:4>K1AA<EOR>", {"call=K1AA"}, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    AdifDocument doc;
    ASSERT_TRUE(ReadAdif(c.text, &doc).ok());
    EXPECT_EQ(Records(doc), c.records);
    if (c.problem.empty()) {
      EXPECT_EQ(Problems(doc), "");
    } else {
      EXPECT_NE(Problems(doc).find(c.problem), std::string::npos) << Problems(doc);
    }
  }
}

TEST(AdifReaderTest, HeaderFieldsAreKeptApart) {
  AdifDocument doc;
  ASSERT_TRUE(ReadAdif("text <ADIF_VER:5>3.1.4 <PROGRAMID:3>XYZ <EOH><CALL:4>K1AA<EOR>", &doc).ok());
  ASSERT_EQ(doc.Header().size(), 2u);
  EXPECT_EQ(doc.Header()[0].name, "adif_ver");
  EXPECT_EQ(doc.Header()[1].value, "XYZ");
  EXPECT_EQ(Records(doc), std::vector<std::string>{"call=K1AA"});
}

TEST(AdifReaderTest, CancelStopsReadingAndKeepsNothing) {
  std::string text;
  for (int i = 0; i < 5000; ++i) {
    text += "<CALL:4>K1AA<EOR>\n";
  }
  AdifDocument doc;
  Status s = ReadAdif(text, &doc, [](size_t, size_t) { return false; });
  EXPECT_EQ(s.message(), "Cancelled");
  EXPECT_EQ(doc.size(), 0u);
}

TEST(AdxReaderTest, ElementsApplicationAndUserFields) {
  const std::string xml =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ADX><HEADER><ADIF_VER>3.1.4</ADIF_VER>"
      "<USERDEF FIELDID=\"1\" TYPE=\"N\">EPC</USERDEF></HEADER><RECORDS>"
      "<RECORD><CALL>DL1ABC</CALL><NAME>J&#246;rg &amp; &lt;Jo&gt;</NAME>"
      "<APP PROGRAMID=\"Mon\" FIELDNAME=\"Heading\" TYPE=\"N\">270</APP>"
      "<USERDEF FIELDNAME=\"EPC\">32123</USERDEF><COMMENT></COMMENT></RECORD>"
      "<record><call>G4XYZ</call></record></RECORDS></ADX>";
  ASSERT_TRUE(LooksLikeAdx(xml));
  AdifDocument doc;
  ASSERT_TRUE(ReadAdx(xml, &doc).ok());
  EXPECT_EQ(Records(doc), (std::vector<std::string>{
                              "call=DL1ABC|name=J\xC3\xB6rg & <Jo>|app_mon_heading:n=270|epc=32123",
                              "call=G4XYZ"}));
  ASSERT_EQ(doc.Header().size(), 2u);
  EXPECT_EQ(doc.Header()[1].name, "userdef1");
  EXPECT_EQ(doc.Header()[1].value, "EPC");
}

TEST(AdxReaderTest, BrokenXmlFailsWithTheLine) {
  AdifDocument doc;
  Status s = ReadAdx("<?xml version=\"1.0\"?>\n<ADX><RECORDS>\n<RECORD><CALL>X</RECORD>", &doc);
  ASSERT_FALSE(s.ok());
  EXPECT_NE(s.message().find("not well-formed XML"), std::string::npos) << s.message();
  EXPECT_NE(s.message().find("line 3"), std::string::npos) << s.message();
  EXPECT_FALSE(LooksLikeAdx("<CALL:4>K1AA<EOR>"));
}

}  // namespace
}  // namespace tavlorin
