#include "logbook/cabrillo_writer.h"

#include <cstdint>

#include "logbook/adif_text.h"
#include "logbook/cabrillo_lists.h"
#include "logbook/ole_date.h"

namespace tavlorin {
namespace {

constexpr CabrilloColumn kStandard[] = {
    {0, 6, 5},   {1, 12, 2},  {2, 15, 10}, {3, 26, 4},  {4, 31, 13},
    {5, 45, 3},  {6, 49, 6},  {8, 56, 13}, {9, 70, 3},  {10, 74, 6},
};
constexpr CabrilloColumn kMultiTwo[] = {
    {0, 6, 5},  {1, 12, 2}, {2, 15, 10}, {3, 26, 4},  {4, 31, 13},  {5, 45, 3},
    {6, 49, 6}, {8, 56, 13}, {9, 70, 3},  {10, 74, 6}, {12, 81, 1},
};
constexpr CabrilloTemplate kTemplates[] = {
    {kCabrilloStandardTemplate, kStandard},
    {kCabrilloMultiTwoTemplate, kMultiTwo},
};

constexpr const char* kEol = "\r\n";

// Band designators of Cabrillo 3.0, by the band's edges in kHz.
struct Designator {
  uint64_t lowKhz, highKhz;
  const char* text;
  const char* bandTitle;  // the logbook's band of it, for a contact without a frequency
};
constexpr Designator kDesignators[] = {
    {50000, 54000, "50", "6m"},          {70000, 71000, "70", "4m"},
    {144000, 148000, "144", "2m"},       {219000, 225000, "222", "1.25m"},
    {420000, 450000, "432", "70cm"},     {902000, 928000, "902", "33cm"},
    {1240000, 1300000, "1.2G", "23cm"},  {2300000, 2450000, "2.3G", "13cm"},
    {3300000, 3500000, "3.4G", "9cm"},   {5650000, 5925000, "5.7G", "6cm"},
    {10000000, 10500000, "10G", "3cm"},  {24000000, 24250000, "24G", "1.25cm"},
    {47000000, 47200000, "47G", "6mm"},  {75500000, 81000000, "75G", "4mm"},
    {119980000, 123000000, "122G", "2.5mm"}, {134000000, 149000000, "134G", "2mm"},
    {241000000, 250000000, "241G", "1mm"},
};

// The frequency rule's fallback: the number at the start of the band's name.
uint64_t KhzOfBand(std::string_view band) {
  int number = 0;
  for (char c : band) {
    if (c < '0' || c > '9') {
      break;
    }
    number = number * 10 + (c - '0');
  }
  switch (number) {
    case 10:
      return 28000;
    case 15:
      return 21000;
    case 20:
      return 14000;
    case 40:
      return 7000;
    case 80:
      return 3500;
    case 160:
      return 1800;
    default:
      return 0;
  }
}

std::string DesignatorOf(uint64_t khz) {
  if (khz >= 300000000) {
    return "LIGHT";
  }
  for (const Designator& d : kDesignators) {
    if (khz >= d.lowKhz && khz <= d.highKhz) {
      return d.text;
    }
  }
  return {};
}

bool IsPhone(std::string_view mode) {
  return mode == "LSB" || mode == "USB" || mode == "SSB" || mode == "AM" || mode == "FM";
}

// The digital modes that Cabrillo 3.0 writes as DG (RTTY and FSK are RY).
bool IsDigital(std::string_view mode) {
  constexpr const char* kPrefixes[] = {"PSK", "PKT", "PAC", "MFSK", "MT63", "THRB", "FT", "JT",
                                       "OLIVIA", "HELL", "CONTESTI", "DOMINO", "Q15", "GTOR",
                                       "PCW", "MTTY", "HFSK", "CLO", "TOR", "ASCI", "JS8", "Q65",
                                       "FSK441", "ROS", "VARA", "DSTAR", "C4FM", "DMR"};
  for (const char* p : kPrefixes) {
    if (mode.rfind(p, 0) == 0) {
      return true;
    }
  }
  return false;
}

// The leading `width` bytes of `text`, not splitting a UTF-8 character.
std::string Cut(std::string text, size_t width) {
  if (text.size() <= width) {
    return text;
  }
  size_t end = width;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
    --end;
  }
  text.resize(end);
  return text;
}

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> out;
  size_t from = 0;
  while (from <= text.size()) {
    size_t end = text.find('\n', from);
    if (end == std::string_view::npos) {
      end = text.size();
    }
    std::string line(TrimBlanks(text.substr(from, end - from)));
    if (!line.empty()) {
      out.push_back(std::move(line));
    }
    from = end + 1;
  }
  return out;
}

void Tag(std::string* out, const char* tag, std::string_view value) {
  out->append(tag);
  out->append(": ");
  out->append(value);
  out->append(kEol);
}

// In 3.0, an optional tag is left out when it has no value.
void OptionalTag(std::string* out, const char* tag, std::string_view value) {
  if (!TrimBlanks(value).empty()) {
    Tag(out, tag, value);
  }
}

// Cabrillo 3.0's operator, transmitter and station categories from the one word of 2.0.
struct OperatorWords {
  const char* v2;
  const char* op;
  const char* transmitter;
  const char* station;
  bool assisted;
};
constexpr OperatorWords kOperatorWords[] = {
    {"SINGLE-OP", "SINGLE-OP", "ONE", "", false},
    {"SINGLE-OP-ASSISTED", "SINGLE-OP", "ONE", "", true},
    {"MULTI-ONE", "MULTI-OP", "ONE", "", false},
    {"MULTI-TWO", "MULTI-OP", "TWO", "", false},
    {"MULTI-MULTI", "MULTI-OP", "UNLIMITED", "", false},
    {"SCHOOL-CLUB", "MULTI-OP", "ONE", "SCHOOL", false},
    {"SWL", "SINGLE-OP", "SWL", "", false},
    {"CHECKLOG", "CHECKLOG", "", "", false},
    {"SINGLE-OP-PORTABLE", "SINGLE-OP", "ONE", "PORTABLE", false},
    {"OVER", "SINGLE-OP", "ONE", "", false},
    {"MULTI-LIMITED", "MULTI-OP", "LIMITED", "", false},
    {"MULTI-UNLIMITED", "MULTI-OP", "UNLIMITED", "", false},
};

void OfftimeLines(std::span<const CLogbookRecordset> contacts, std::string* out) {
  const CLogbookRecordset* previous = nullptr;
  for (const CLogbookRecordset& c : contacts) {
    if (!c.startTime) {
      continue;
    }
    if (previous != nullptr && *c.startTime - *previous->startTime >= 1.0 / 24) {
      const std::string from = FormatOleDate(*previous->startTime);
      const std::string to = FormatOleDate(*c.startTime);
      Tag(out, "OFFTIME",
          from.substr(0, 10) + " " + from.substr(11, 2) + from.substr(14, 2) + " " +
              to.substr(0, 10) + " " + to.substr(11, 2) + to.substr(14, 2));
    }
    previous = &c;
  }
}

// The header's closing lines: NAME, one ADDRESS per line, OPERATORS (in 3.0 only when there
// are any) and one SOAPBOX per line.
void PersonLines(const CabrilloHeader& h, bool optionalOperators, std::string* out) {
  Tag(out, "NAME", h.name);
  for (const std::string& line : Lines(h.address)) {
    Tag(out, "ADDRESS", line);
  }
  (optionalOperators ? OptionalTag : Tag)(out, "OPERATORS", h.operators);
  for (const std::string& line : Lines(h.soapbox)) {
    Tag(out, "SOAPBOX", line);
  }
}

std::string Header2(const CabrilloHeader& h) {
  std::string out;
  Tag(&out, "START-OF-LOG", "2.0");
  Tag(&out, "ARRL-SECTION", h.arrlSection);
  Tag(&out, "CALLSIGN", h.callsign);
  Tag(&out, "CATEGORY",
      h.catOperator + " " + h.catBand + " " + h.catPower + " " + h.catMode);
  Tag(&out, "CATEGORY-ASSISTED", h.catAssisted);
  if (h.dx) {
    Tag(&out, "CATEGORY-DXPEDITION", h.catDx);
  }
  Tag(&out, "CATEGORY-OVERLAY", h.catOverlay);
  if (h.time) {
    Tag(&out, "CATEGORY-TIME", h.catTime);
  }
  Tag(&out, "CLAIMED-SCORE", h.score);
  Tag(&out, "CLUB", h.club);
  Tag(&out, "CONTEST", h.contest);
  Tag(&out, "CREATED-BY", h.createdBy);
  if (h.iota) {
    Tag(&out, "IOTA-ISLAND-NAME", h.iotaIsland);
  }
  PersonLines(h, false, &out);
  return out;
}

std::string Header3(const CabrilloHeader& h) {
  const OperatorWords* words = &kOperatorWords[0];
  for (const OperatorWords& w : kOperatorWords) {
    if (EqualsIgnoreCase(h.catOperator, w.v2)) {
      words = &w;
    }
  }
  std::string station = words->station;
  if (station.empty() && h.dx && EqualsIgnoreCase(h.catDx, "DXPEDITION")) {
    station = "EXPEDITION";
  }
  std::string assisted = h.catAssisted;
  if (words->assisted || assisted.empty()) {
    assisted = words->assisted ? "ASSISTED" : "NON-ASSISTED";
  }
  std::string out;
  Tag(&out, "START-OF-LOG", "3.0");
  const std::string location = ArrlSectionAbbreviation(h.arrlSection);
  OptionalTag(&out, "LOCATION", location.empty() ? h.arrlSection : location);
  Tag(&out, "CALLSIGN", h.callsign);
  Tag(&out, "CONTEST", h.contest);
  Tag(&out, "CATEGORY-OPERATOR", words->op);
  Tag(&out, "CATEGORY-ASSISTED", assisted);
  Tag(&out, "CATEGORY-BAND", h.catBand);
  Tag(&out, "CATEGORY-MODE", h.catMode);
  Tag(&out, "CATEGORY-POWER", h.catPower);
  OptionalTag(&out, "CATEGORY-STATION", station);
  OptionalTag(&out, "CATEGORY-TRANSMITTER", words->transmitter);
  if (h.time) {
    OptionalTag(&out, "CATEGORY-TIME", h.catTime);
  }
  OptionalTag(&out, "CATEGORY-OVERLAY", h.catOverlay);
  OptionalTag(&out, "CLAIMED-SCORE", h.score);
  OptionalTag(&out, "CLUB", h.club);
  Tag(&out, "CREATED-BY", h.createdBy);
  if (h.iota) {
    OptionalTag(&out, "IOTA-ISLAND-NAME", h.iotaIsland);
  }
  PersonLines(h, true, &out);
  return out;
}

}  // namespace

std::span<const CabrilloTemplate> CabrilloTemplates() { return kTemplates; }

const CabrilloTemplate* FindCabrilloTemplate(std::string_view name) {
  for (const CabrilloTemplate& t : kTemplates) {
    if (name == t.name) {
      return &t;
    }
  }
  return nullptr;
}

std::string CabrilloMissingValue(const CabrilloHeader& header) {
  const std::pair<const char*, const std::string*> required[] = {
      {"Callsign", &header.callsign}, {"Name", &header.name}, {"Address", &header.address}};
  for (const auto& [label, value] : required) {
    if (TrimBlanks(*value).empty()) {
      return std::string(label) + " cannot be empty";
    }
  }
  return {};
}

std::string CabrilloHeaderText(const CabrilloHeader& header,
                               std::span<const CLogbookRecordset> contacts) {
  std::string out = header.version == 3 ? Header3(header) : Header2(header);
  if (header.offtime) {
    OfftimeLines(contacts, &out);
  }
  return out;
}

std::string CabrilloFrequency(const CLogbookRecordset& contact, int version) {
  uint64_t hertz = 0;
  for (char c : contact.frequency) {
    if (c >= '0' && c <= '9') {
      hertz = hertz * 10 + static_cast<uint64_t>(c - '0');
    } else if (c != '.' && c != ',') {
      break;
    }
  }
  const uint64_t khz = hertz / 1000;
  if (khz == 0) {
    if (version == 3) {
      for (const Designator& d : kDesignators) {
        if (EqualsIgnoreCase(contact.bandMHz, d.bandTitle)) {
          return d.text;
        }
      }
    }
    return std::to_string(KhzOfBand(contact.bandMHz));
  }
  std::string text = std::to_string(khz);
  // 3.0 names the bands from 50 MHz up; kHz of 100 MHz and more would not fit the column.
  if ((version == 3 && khz >= 50000) || text.size() > 5) {
    std::string designator = DesignatorOf(khz);
    if (!designator.empty()) {
      return designator;
    }
  }
  return text;
}

std::string CabrilloMode(const CLogbookRecordset& contact, const CabrilloHeader& header) {
  if (!header.modeFromContacts) {
    if (header.contest.find("-RTTY") != std::string::npos) {
      return "RY";
    }
    if (header.contest.find("-SSB") != std::string::npos) {
      return "PH";
    }
    if (header.contest.find("-CW") != std::string::npos) {
      return "CW";
    }
  }
  const std::string& mode = contact.mode;
  if (mode == "RTTY") {
    return "RY";
  }
  if (mode == "CW" || mode == "FM") {
    return mode;
  }
  if (IsPhone(mode)) {
    return "PH";
  }
  if (header.version == 3) {
    const std::string upper = UpperAscii(mode);
    if (upper == "FSK" || upper == "RTTY") {
      return "RY";
    }
    if (IsDigital(upper)) {
      return "DG";
    }
  }
  return "??";
}

std::pair<std::string, std::string> SplitCabrilloReport(std::string_view report,
                                                        std::string_view mode) {
  while (!report.empty() && report.front() == ' ') {
    report.remove_prefix(1);
  }
  std::string_view rst, exchange;
  if (size_t blank = report.find(' '); blank != std::string_view::npos) {
    rst = report.substr(0, blank);
    exchange = report.substr(blank + 1);
  } else {
    // No blank: the RST is the first 3 characters (2 on phone) and one character after it is
    // skipped, as this log's exchange columns have always been filled (59914 on CW: 599, 4).
    const size_t n = std::min(report.size(), IsPhone(mode) ? size_t{2} : size_t{3});
    rst = report.substr(0, n);
    exchange = n + 1 < report.size() ? report.substr(n + 1) : std::string_view();
  }
  return {std::string(TrimBlanks(rst)), std::string(TrimBlanks(exchange))};
}

std::string CabrilloQsoLine(const CLogbookRecordset& contact, const CabrilloTemplate& layout,
                            const CabrilloHeader& header) {
  const std::string start = contact.startTime ? FormatOleDate(*contact.startTime) : std::string();
  const auto sent = SplitCabrilloReport(contact.reportSent, contact.mode);
  const auto received = SplitCabrilloReport(contact.reportRecv, contact.mode);
  std::string line = "QSO:";
  for (const CabrilloColumn& column : layout.columns) {
    std::string text;
    switch (column.code) {
      case 0:
        text = CabrilloFrequency(contact, header.version);
        if (text.size() < static_cast<size_t>(column.width)) {
          text.insert(0, static_cast<size_t>(column.width) - text.size(), ' ');
        }
        break;
      case 1:
        text = CabrilloMode(contact, header);
        break;
      case 2:
        text = start.substr(0, 10);
        break;
      case 3:
        text = start.empty() ? "" : start.substr(11, 2) + start.substr(14, 2);
        break;
      case 4:
        text = contact.myCallsign;
        break;
      case 5:
        text = sent.first;
        break;
      case 6:
        text = sent.second;
        break;
      case 8:
        text = contact.station;
        break;
      case 9:
        text = received.first;
        break;
      case 10:
        text = received.second;
        break;
      case 12:
        text = "0";
        break;
      default:
        break;
    }
    const size_t at = static_cast<size_t>(column.start - 1);
    if (line.size() < at) {
      line.append(at - line.size(), ' ');
    }
    line += Cut(std::move(text), static_cast<size_t>(column.width));
  }
  return line;
}

}  // namespace tavlorin
