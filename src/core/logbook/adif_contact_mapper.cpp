#include "logbook/adif_contact_mapper.h"

#include <algorithm>
#include <unordered_map>

#include "logbook/adif_extra_fields.h"
#include "logbook/adif_text.h"
#include "logbook/logbook_schema.h"
#include "radio/frequency.h"
#include "shell/debug_log.h"

namespace tavlorin {
namespace {

using R = CLogbookRecordset;

enum class Kind : uint8_t {
  kText,     // a text column, as written
  kFlag,     // a QSL flag: Y -> "1", N -> "0"
  kDate,     // a QSL date column (kept only with its flag at Y, as the export writes it back)
  kCall,
  kQsoDate,
  kTimeOn,
  kTimeOff,
  kDateOff,  // qso_date_off: the date of TIME_OFF, also kept as an extra field
  kBand,
  kMode,
  kSubmode,
  kFreq,
};

}  // namespace

struct AdifContactMapper::Target {
  Kind kind;
  const char* column;  // the TBL_LOGBOOK field, for its size
  std::string R::*text = nullptr;
  std::optional<OleDate> R::*date = nullptr;
  std::string R::*flag = nullptr;  // kDate: the flag it goes with
  const char* values = nullptr;    // kFlag: the enumeration's letters
};

namespace {

using Target = AdifContactMapper::Target;

// The import's field table, by name in small letters.
const std::unordered_map<std::string_view, Target>& Targets() {
  static const std::unordered_map<std::string_view, Target> kTargets = {
      {"call", {Kind::kCall, "Station", &R::station}},
      {"qso_date", {Kind::kQsoDate, nullptr}},
      {"time_on", {Kind::kTimeOn, nullptr}},
      {"time_off", {Kind::kTimeOff, nullptr}},
      {"qso_date_off", {Kind::kDateOff, nullptr}},
      {"name", {Kind::kText, "Name", &R::name}},
      {"address", {Kind::kText, "Address", &R::address}},
      {"qth", {Kind::kText, "QTH", &R::qth}},
      {"band", {Kind::kBand, "BandMHz", &R::bandMHz}},
      {"mode", {Kind::kMode, "Mode", &R::mode}},
      {"submode", {Kind::kSubmode, "Mode", &R::mode}},
      {"rst_sent", {Kind::kText, "ReportSent", &R::reportSent}},
      {"rst_rcvd", {Kind::kText, "ReportRecv", &R::reportRecv}},
      {"comment", {Kind::kText, "Remark", &R::remark}},
      {"freq", {Kind::kFreq, "Frequency", &R::frequency}},
      {"gridsquare", {Kind::kText, "Locator", &R::locator}},
      {"qsl_rcvd", {Kind::kFlag, "QSLRecv", &R::qslRecv, nullptr, nullptr, "YNRIV"}},
      {"qsl_sent", {Kind::kFlag, "QSLSent", &R::qslSent, nullptr, nullptr, "YNRQI"}},
      {"qsl_via", {Kind::kText, "QSLVia", &R::qslVia}},
      {"qslsdate", {Kind::kDate, nullptr, nullptr, &R::qslSentDate, &R::qslSent}},
      {"qslrdate", {Kind::kDate, nullptr, nullptr, &R::qslRecvDate, &R::qslRecv}},
      {"operator", {Kind::kText, "MyCallsign", &R::myCallsign}},
      {"my_country", {Kind::kText, "MyCountry", &R::myCountry}},
      {"tx_pwr", {Kind::kText, "MyPower", &R::myPower}},
      {"iota", {Kind::kText, "IOTA", &R::iota}},
      {"dxcc", {Kind::kText, "DXCC", &R::dxcc}},
      {"country", {Kind::kText, "Country", &R::country}},
      {"app_tavlorin_country", {Kind::kText, "Country", &R::country}},
      {"app_tavlorin_my_gridsquare", {Kind::kText, "MyLocator", &R::myLocator}},
      {"app_tavlorin_my_name", {Kind::kText, "MyName", &R::myName}},
      {"app_tavlorin_my_antennas", {Kind::kText, "MyAntenna", &R::myAntenna}},
      {"app_tavlorin_my_trx", {Kind::kText, "MyStation", &R::myStation}},
      {"app_tavlorin_my_eqsl_rcvd", {Kind::kFlag, "eQSLRecv", &R::eqslRecv, nullptr, nullptr, ""}},
      {"app_tavlorin_my_eqsl_sent", {Kind::kFlag, "eQSLSent", &R::eqslSent, nullptr, nullptr, ""}},
      {"app_tavlorin_my_eqsl_status", {Kind::kText, "eQSLStatus", &R::eqslStatus}},
      {"app_tavlorin_my_eqslsdate",
       {Kind::kDate, nullptr, nullptr, &R::eqslSentDate, &R::eqslSent}},
      {"app_tavlorin_my_eqslrdate",
       {Kind::kDate, nullptr, nullptr, &R::eqslRecvDate, &R::eqslRecv}},
  };
  return kTargets;
}

// In the dates and times every "-" is read as "0" (some writers fill unknown digits so).
void Dashless(std::string_view value, std::string* out) {
  out->assign(TrimBlanks(value));
  for (char& c : *out) {
    c = c == '-' ? '0' : c;
  }
}

struct Dashed {
  std::string_view value;
};

void Assign(std::string* to, std::string_view value) { to->assign(value); }
void Assign(std::string* to, Dashed value) { Dashless(value.value, to); }

// The first field of a name fills its slot; a second one is kept as written.
template <typename Value, typename Keep>
void TakeOnce(bool* taken, std::string* slot, Value value, const Keep& keep) {
  if (*taken) {
    keep();
    return;
  }
  Assign(slot, value);
  *taken = true;
}

bool Digits(std::string_view text, size_t from, size_t count, int* value) {
  int v = 0;
  for (size_t i = from; i < from + count; ++i) {
    if (i >= text.size() || text[i] < '0' || text[i] > '9') {
      return false;
    }
    v = v * 10 + (text[i] - '0');
  }
  *value = v;
  return true;
}

// YYYYMMDD from 1930 on; the day count of its midnight.
std::optional<OleDate> AdifDate(std::string_view text) {
  int y = 0, m = 0, d = 0;
  if (text.size() != 8 || !Digits(text, 0, 4, &y) || !Digits(text, 4, 2, &m) ||
      !Digits(text, 6, 2, &d) || y < 1930) {
    return std::nullopt;
  }
  static constexpr int kDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
  if (m < 1 || m > 12 || d < 1 || d > (m == 2 && !leap ? 28 : kDays[m - 1])) {
    return std::nullopt;
  }
  return OleDateFromCivil(y, m, d);
}

// HHMM or HHMMSS (colons allowed) as seconds of the day.
std::optional<int> AdifTime(std::string_view raw) {
  std::string text;
  for (char c : raw) {
    if (c != ':') {
      text.push_back(c);
    }
  }
  int h = 0, m = 0, s = 0;
  if ((text.size() != 4 && text.size() != 6) || !Digits(text, 0, 2, &h) ||
      !Digits(text, 2, 2, &m) || (text.size() == 6 && !Digits(text, 4, 2, &s)) || h > 23 ||
      m > 59 || s > 59) {
    return std::nullopt;
  }
  return h * 3600 + m * 60 + s;
}

// The value's line ends as the logbook has always read them: "\n\n" is one line end, and a
// line end next to a blank is a blank.
std::string_view NormalisedLines(std::string_view value, std::string* scratch) {
  if (value.find('\n') == std::string_view::npos) {
    return value;
  }
  scratch->assign(value);
  const std::pair<const char*, const char*> rules[] = {{"\n\n", "\n"}, {" \n", " "}, {"\n ", " "}};
  for (const auto& [from, to] : rules) {
    for (size_t at = 0; (at = scratch->find(from, at)) != std::string::npos;) {
      scratch->replace(at, 2, to);
      at += std::string_view(to).size();
    }
  }
  return *scratch;
}

// The type indicator worth keeping: an application field's (its type is its own); a standard
// field's type follows from its name, and the XML form has no place for it.
std::string_view KeptType(std::string_view name, std::string_view type) {
  return name.rfind("app_", 0) == 0 ? type : std::string_view();
}

}  // namespace

bool ParseAdifMegahertz(std::string_view text, uint64_t* hertz) {
  text = TrimBlanks(text);
  std::string_view whole = text, fraction;
  size_t point = text.find('.');
  if (point == std::string_view::npos && text.find(',') == text.rfind(',')) {
    point = text.find(',');
  }
  if (point != std::string_view::npos) {
    whole = text.substr(0, point);
    fraction = text.substr(point + 1);
  }
  if ((whole.empty() && fraction.empty()) || whole.size() > 7) {
    return false;
  }
  uint64_t hz = 0;
  for (char c : whole) {
    if (c < '0' || c > '9') {
      return false;
    }
    hz = hz * 10 + static_cast<uint64_t>(c - '0');
  }
  for (char c : fraction) {
    if (c < '0' || c > '9') {
      return false;
    }
  }
  for (size_t i = 0; i < 6; ++i) {
    hz = hz * 10 + (i < fraction.size() ? static_cast<uint64_t>(fraction[i] - '0') : 0);
  }
  if (fraction.size() > 6 && fraction[6] >= '5') {
    hz += 1;  // the seventh decimal rounds to the nearest hertz
  }
  *hertz = hz;
  return true;
}

// What one record has given so far; kept by the mapper so its storage is reused.
struct AdifContactMapper::Pending {
  std::string qsoDate, timeOn, timeOff, dateOff, mode, submode;
  bool hasQsoDate = false, hasTimeOn = false, hasTimeOff = false, hasMode = false;
  bool hasSubmode = false;
  uint64_t hertz = 0;
  struct Date {
    const Target* target;
    std::string name, type, value;
  };
  std::vector<Date> dates;
  size_t dateCount = 0;
  std::vector<std::string R::*> filled;  // the columns filled so far
  std::string scratch;

  void Clear() {
    hasQsoDate = hasTimeOn = hasTimeOff = hasMode = hasSubmode = false;
    hertz = 0;
    dateCount = 0;
    filled.clear();
    dateOff.clear();
  }
};

void ClearContact(CLogbookRecordset* contact) {
  for (const LogbookField& f : LogbookFields()) {
    if (f.text != nullptr) {
      (contact->*f.text).clear();
    } else if (f.date != nullptr) {
      (contact->*f.date).reset();
    }
  }
  contact->primaryKey = 0;
}

AdifContactMapper::AdifContactMapper(const AdifReference& reference, AdifImportOptions options)
    : reference_(reference), options_(options), pending_(std::make_unique<Pending>()) {
  for (const auto& [name, target] : Targets()) {
    if (target.column == nullptr) {
      continue;
    }
    auto it = reference.fieldSizes.find(std::string(kTableLogbook) + "::" + target.column);
    if (it != reference.fieldSizes.end() && it->second > 0) {
      sizes_[target.column] = it->second;
    }
  }
}

AdifContactMapper::~AdifContactMapper() = default;

const AdifContactMapper::Known& AdifContactMapper::TargetOf(std::string_view name) {
  auto [it, added] = targets_.try_emplace(name.data());
  if (added) {
    auto found = Targets().find(name);
    if (found != Targets().end()) {
      it->second.target = &found->second;
      auto size = found->second.column == nullptr ? sizes_.end() : sizes_.find(found->second.column);
      it->second.size = size == sizes_.end() ? 0 : static_cast<size_t>(size->second);
    }
  }
  return it->second;
}

void AdifContactMapper::Unknown(Resolutions& cache, const std::string& value, size_t number) {
  Resolved& r = cache.try_emplace(value, Resolved{value, false, 0, 0}).first->second;
  if (r.count++ == 0) {
    r.first = number;
  }
}

// The band's or mode's title in the logbook's table; an unknown one as written (bands in
// small letters, modes in capitals, as their tables write them), counted for the summary.
const std::string& AdifContactMapper::Resolve(Resolutions& cache, std::string_view value,
                                              size_t number, bool band) {
  auto it = cache.find(value);
  if (it == cache.end()) {
    Resolved r;
    if (band) {
      for (const CBandsRecordSet& b : reference_.bands) {
        if (!r.known && (EqualsIgnoreCase(b.adif, value) || EqualsIgnoreCase(b.title, value))) {
          r = {b.title, true, 0, 0};
        }
      }
    } else {
      for (const CModesRecordSet& m : reference_.modes) {
        if (!r.known && (EqualsIgnoreCase(m.adif, value) || EqualsIgnoreCase(m.title, value))) {
          r = {m.title, true, 0, 0};
        }
      }
    }
    if (!r.known) {
      r.stored = band ? LowerAscii(value) : UpperAscii(value);
    }
    it = cache.emplace(std::string(value), std::move(r)).first;
  }
  if (!it->second.known && it->second.count++ == 0) {
    it->second.first = number;
  }
  return it->second.stored;
}

void AdifContactMapper::Place(const AdifDocument::Field& field, CLogbookRecordset* contact,
                              std::vector<AdifProblem>* problems, size_t number) {
  Pending& p = *pending_;
  const std::string_view value = NormalisedLines(field.value, &p.scratch);
  const auto keep = [&] {
    AppendExtraField(&contact->extraFields, field.name, KeptType(field.name, field.type), value);
  };
  const Known& known = TargetOf(field.name);
  if (known.target == nullptr) {
    keep();
    return;
  }
  const Target& t = *known.target;
  // A field met twice: the first one fills the column, the other one is kept as written.
  const bool once =
      t.text == nullptr || std::find(p.filled.begin(), p.filled.end(), t.text) == p.filled.end();
  switch (t.kind) {
    case Kind::kQsoDate:
      TakeOnce(&p.hasQsoDate, &p.qsoDate, Dashed(value), keep);
      return;
    case Kind::kTimeOn:
      TakeOnce(&p.hasTimeOn, &p.timeOn, Dashed(value), keep);
      return;
    case Kind::kTimeOff:
      TakeOnce(&p.hasTimeOff, &p.timeOff, Dashed(value), keep);
      return;
    case Kind::kDateOff:
      Dashless(value, &p.dateOff);
      keep();
      return;
    case Kind::kMode:
      TakeOnce(&p.hasMode, &p.mode, TrimBlanks(value), keep);
      return;
    case Kind::kSubmode:
      TakeOnce(&p.hasSubmode, &p.submode, TrimBlanks(value), keep);
      return;
    case Kind::kDate: {
      if (p.dateCount == p.dates.size()) {
        p.dates.emplace_back();
      }
      Pending::Date& d = p.dates[p.dateCount++];
      d.target = &t;
      d.name = field.name;
      d.type = field.type;
      Dashless(value, &d.value);
      return;
    }
    default:
      break;
  }
  if (!once) {
    keep();
    return;
  }
  std::string stored;
  switch (t.kind) {
    case Kind::kFreq:
      if (!ParseAdifMegahertz(value, &p.hertz)) {
        problems->push_back({number, false, "FREQ \"" + std::string(value) +
                                                "\" is not a frequency in MHz; kept as written"});
        keep();
        return;
      }
      stored = p.hertz <= UINT32_MAX ? FormatFrequency(static_cast<Frequency>(p.hertz))
                                     : FormatFrequency(static_cast<double>(p.hertz));
      break;
    case Kind::kBand:
      stored = Resolve(bands_, TrimBlanks(value), number, true);
      break;
    case Kind::kCall:
      stored = TrimBlanks(value);
      break;
    case Kind::kFlag: {
      stored = UpperAscii(TrimBlanks(value));
      if (stored == "Y" || stored == "N") {
        stored = stored == "Y" ? "1" : "0";
      } else if (t.values[0] != '\0' &&
                 (stored.size() != 1 || std::string_view(t.values).find(stored[0]) == std::string_view::npos)) {
        Unknown(flags_[UpperAscii(field.name)], stored, number);
      }
      break;
    }
    default:
      stored = value;
      break;
  }
  if (known.size > 0 && stored.size() > known.size && Utf8Length(stored) > known.size) {
    problems->push_back({number, false,
                         UpperAscii(field.name) + " of " + std::to_string(Utf8Length(stored)) +
                             " characters is longer than the logbook's " +
                             std::to_string(known.size) + "; kept whole with the contact's "
                                                          "other fields"});
    keep();
    return;
  }
  contact->*t.text = std::move(stored);
  p.filled.push_back(t.text);
}

bool AdifContactMapper::Finish(size_t number, CLogbookRecordset* contact,
                               std::vector<AdifProblem>* problems) {
  Pending& p = *pending_;
  const auto error = [&](std::string text) {
    problems->push_back({number, true, std::move(text)});
    return false;
  };
  // Mode: the submode is the more exact name (USB rather than SSB, FT4 rather than MFSK);
  // the mode is kept so the export can write the pair again.
  if (p.hasSubmode && !p.submode.empty()) {
    contact->mode = Resolve(modes_, p.submode, number, false);
    if (p.hasMode) {
      AppendExtraField(&contact->extraFields, "mode", "", p.mode);
    }
  } else if (p.hasMode && !p.mode.empty()) {
    contact->mode = Resolve(modes_, p.mode, number, false);
  }
  if (options_.autoBand && contact->bandMHz.empty() && p.hertz > 0 && p.hertz <= UINT32_MAX) {
    for (const CBandsRecordSet& b : reference_.bands) {
      if ((b.minFreq != 0 || b.maxFreq != 0) && b.minFreq <= p.hertz && p.hertz <= b.maxFreq) {
        contact->bandMHz = b.title;
        break;
      }
    }
  }
  if (reference_.countries != nullptr) {
    if (options_.autoDxcc && contact->dxcc.empty() && !contact->station.empty()) {
      contact->dxcc = reference_.countries->DxccForCallsign(UpperAscii(contact->station));
      DebugLog::Write("AutoDXCC from %s = %s\n", contact->station.c_str(), contact->dxcc.c_str());
    }
    if (!contact->dxcc.empty() && contact->country.empty()) {
      contact->country =
          reference_.countries->CountryForDxcc(CountryTables::DxccNumber(contact->dxcc));
    }
  }
  for (size_t i = 0; i < p.dateCount; ++i) {
    const Pending::Date& d = p.dates[i];
    auto date = AdifDate(d.value);
    if (date && contact->*d.target->flag == "1" && !(contact->*d.target->date)) {
      contact->*d.target->date = date;
      continue;
    }
    if (!date) {
      problems->push_back({number, false, UpperAscii(d.name) + " \"" + d.value +
                                              "\" is not a date (YYYYMMDD); kept as written"});
    }
    AppendExtraField(&contact->extraFields, d.name, KeptType(d.name, d.type), d.value);
  }
  if (contact->station.empty()) {
    return error("no CALL; not stored");
  }
  if (!p.hasQsoDate || p.qsoDate.empty()) {
    return error("no QSO_DATE; not stored");
  }
  auto day = AdifDate(p.qsoDate);
  if (!day) {
    return error("QSO_DATE \"" + p.qsoDate + "\" is not a date (YYYYMMDD from 1930); not stored");
  }
  int on = 0;
  if (p.hasTimeOn && !p.timeOn.empty()) {
    auto t = AdifTime(p.timeOn);
    if (!t) {
      return error("TIME_ON \"" + p.timeOn + "\" is not a time (HHMM or HHMMSS); not stored");
    }
    on = *t;
  } else {
    problems->push_back({number, false, "no TIME_ON; the contact starts at 00:00"});
  }
  contact->startTime = *day + on / 86400.0;
  if (p.hasTimeOff && !p.timeOff.empty()) {
    auto off = AdifTime(p.timeOff);
    if (!off) {
      problems->push_back({number, false, "TIME_OFF \"" + p.timeOff +
                                              "\" is not a time (HHMM or HHMMSS); kept as written"});
      AppendExtraField(&contact->extraFields, "time_off", "", p.timeOff);
    } else {
      auto offDay = AdifDate(p.dateOff);
      OleDate end = (offDay ? *offDay : *day) + *off / 86400.0;
      if (!offDay && *off < on) {
        end += 1;  // past midnight
      }
      contact->endTime = end;
    }
  }
  return true;
}

bool AdifContactMapper::Map(std::span<const AdifDocument::Field> fields, size_t number,
                            CLogbookRecordset* contact, std::vector<AdifProblem>* problems) {
  ClearContact(contact);
  pending_->Clear();
  for (const AdifDocument::Field& field : fields) {
    if (!field.value.empty()) {
      Place(field, contact, problems, number);
    }
  }
  return Finish(number, contact, problems);
}

void AdifContactMapper::AppendSummary(std::vector<AdifProblem>* problems) const {
  std::vector<std::pair<std::string, const Resolutions*>> kinds = {{"BAND", &bands_},
                                                                   {"MODE", &modes_}};
  for (const auto& [name, values] : flags_) {
    kinds.emplace_back(name, &values);
  }
  for (const auto& [what, values] : kinds) {
    std::map<std::string, const Resolved*> sorted;
    for (const auto& [value, r] : *values) {
      if (!r.known && r.count > 0) {
        sorted.emplace(r.stored, &r);
      }
    }
    for (const auto& [stored, r] : sorted) {
      problems->push_back(
          {0, false,
           what + " \"" + stored + "\" is not one the logbook knows; stored as written (" +
               std::to_string(r->count) + (r->count == 1 ? " contact" : " contacts") +
               ", the first in record " + std::to_string(r->first) + ")"});
    }
  }
}

}  // namespace tavlorin
