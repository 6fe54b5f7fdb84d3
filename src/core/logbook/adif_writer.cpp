#include "logbook/adif_writer.h"

#include <charconv>
#include <cstdio>

#include "logbook/adif_extra_fields.h"
#include "logbook/adif_text.h"
#include "logbook/ole_date.h"
#include "tavlorin_version.h"

namespace tavlorin {
namespace {

constexpr const char* kSetTexts[] = {
    "Only fields supported by ADIF 2.0.",
    "All fields - note: non-ADIF fields are only supported by Tavlorin and are ignored by other "
    "logbook programs.",
    "Only the fields required by eQSL - this makes the ADIF file smaller and the eQSL upload "
    "faster.",
};

// Which sets write a row: E every set, A "ADIF 2.0" and "All fields", X "All fields", Q "eQSL".
enum class In { E, A, X, Q };

enum class Form {
  kText,      // as stored
  kDate,      // "%Y%m%d"
  kTime,      // "%H%M%S"
  kFreq,      // AdifFrequency
  kFlag,      // AdifFlag
  kComment,   // the export's comment text
  kMode,      // as stored, or the MODE/SUBMODE pair the contact came with
  kDateIfY,   // "%Y%m%d", only when the flag in `flag` exports as "Y"
};

struct Row {
  In in;
  const char* name;  // small letters, as written
  const char* type;
  Form form;
  std::string CLogbookRecordset::*text;
  std::optional<OleDate> CLogbookRecordset::*date;
  std::string CLogbookRecordset::*flag;
};

using R = CLogbookRecordset;

// The export table, in the order written.
const Row kRows[] = {
    {In::E, "call", "", Form::kText, &R::station, nullptr, nullptr},
    {In::E, "qso_date", "d", Form::kDate, nullptr, &R::startTime, nullptr},
    {In::E, "time_on", "", Form::kTime, nullptr, &R::startTime, nullptr},
    {In::E, "band", "", Form::kText, &R::bandMHz, nullptr, nullptr},
    {In::E, "mode", "", Form::kMode, &R::mode, nullptr, nullptr},
    {In::E, "rst_sent", "", Form::kText, &R::reportSent, nullptr, nullptr},
    {In::Q, "qslmsg", "", Form::kComment, nullptr, nullptr, nullptr},
    {In::A, "time_off", "", Form::kTime, nullptr, &R::endTime, nullptr},
    {In::A, "rst_rcvd", "", Form::kText, &R::reportRecv, nullptr, nullptr},
    {In::A, "freq", "", Form::kFreq, &R::frequency, nullptr, nullptr},
    {In::A, "dxcc", "", Form::kText, &R::dxcc, nullptr, nullptr},
    {In::A, "iota", "", Form::kText, &R::iota, nullptr, nullptr},
    {In::A, "gridsquare", "", Form::kText, &R::locator, nullptr, nullptr},
    {In::A, "qsl_rcvd", "", Form::kFlag, &R::qslRecv, nullptr, nullptr},
    {In::A, "qsl_sent", "", Form::kFlag, &R::qslSent, nullptr, nullptr},
    {In::A, "qsl_via", "", Form::kText, &R::qslVia, nullptr, nullptr},
    {In::A, "operator", "", Form::kText, &R::myCallsign, nullptr, nullptr},
    {In::A, "tx_pwr", "", Form::kText, &R::myPower, nullptr, nullptr},
    {In::A, "address", "", Form::kText, &R::address, nullptr, nullptr},
    {In::A, "comment", "", Form::kText, &R::remark, nullptr, nullptr},
    {In::A, "name", "", Form::kText, &R::name, nullptr, nullptr},
    {In::A, "qth", "", Form::kText, &R::qth, nullptr, nullptr},
    {In::A, "qslsdate", "", Form::kDateIfY, nullptr, &R::qslSentDate, &R::qslSent},
    {In::A, "qslrdate", "", Form::kDateIfY, nullptr, &R::qslRecvDate, &R::qslRecv},
    {In::X, "app_tavlorin_country", "s", Form::kText, &R::country, nullptr, nullptr},
    {In::X, "app_tavlorin_my_antennas", "s", Form::kText, &R::myAntenna, nullptr, nullptr},
    {In::X, "app_tavlorin_my_gridsquare", "s", Form::kText, &R::myLocator, nullptr, nullptr},
    {In::X, "app_tavlorin_my_trx", "s", Form::kText, &R::myStation, nullptr, nullptr},
    {In::X, "app_tavlorin_my_name", "s", Form::kText, &R::myName, nullptr, nullptr},
    {In::X, "app_tavlorin_my_eqsl_rcvd", "s", Form::kFlag, &R::eqslRecv, nullptr, nullptr},
    {In::X, "app_tavlorin_my_eqsl_sent", "s", Form::kFlag, &R::eqslSent, nullptr, nullptr},
    {In::X, "app_tavlorin_my_eqsl_status", "s", Form::kText, &R::eqslStatus, nullptr, nullptr},
    {In::X, "app_tavlorin_my_eqslsdate", "", Form::kDateIfY, nullptr, &R::eqslSentDate,
     &R::eqslSent},
    {In::X, "app_tavlorin_my_eqslrdate", "", Form::kDateIfY, nullptr, &R::eqslRecvDate,
     &R::eqslRecv},
    // MyCountry has no row of its own in the older table; the importer reads my_country into
    // it, so "All fields" writes it back to lose nothing.
    {In::X, "my_country", "", Form::kText, &R::myCountry, nullptr, nullptr},
};

bool Writes(In in, AdifFieldSet set) {
  switch (in) {
    case In::E:
      return true;
    case In::A:
      return set != AdifFieldSet::kEqsl;
    case In::X:
      return set == AdifFieldSet::kAllFields;
    case In::Q:
      return set == AdifFieldSet::kEqsl;
  }
  return false;
}

void AppendDigits(int value, int width, std::string* out) {
  char digits[12];
  for (int i = width - 1; i >= 0; --i) {
    digits[i] = static_cast<char>('0' + value % 10);
    value /= 10;
  }
  out->append(digits, static_cast<size_t>(width));
}

// "%Y%m%d" or "%H%M%S" of a date; empty when unset.
void DatePart(const std::optional<OleDate>& date, bool time, std::string* out) {
  out->clear();
  if (!date) {
    return;
  }
  const OleDateParts p = SplitOleDate(*date);
  AppendDigits(time ? p.hour : p.year, time ? 2 : 4, out);
  AppendDigits(time ? p.minute : p.month, 2, out);
  AppendDigits(time ? p.second : p.day, 2, out);
}

// Appends a field to `out`, reusing the slot after `*used` when there is one.
AdifOutField& Slot(std::vector<AdifOutField>* out, size_t* used) {
  if (*used == out->size()) {
    out->emplace_back();
  }
  return (*out)[(*used)++];
}

std::string XmlEscaped(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\r':
        out += "&#13;";  // a reader turns a bare CR LF into LF; the reference survives
        break;
      default:
        // XML 1.0 cannot carry other control characters at all.
        out += static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r' ? ' ' : c;
    }
  }
  return out;
}

}  // namespace

std::span<const char* const> AdifFieldSetTexts() { return kSetTexts; }

std::string AdifFrequency(std::string_view stored) {
  std::string out(stored);
  size_t first = out.find('.');
  size_t second = first == std::string::npos ? first : out.find('.', first + 1);
  if (second != std::string::npos && out.find('.', second + 1) == std::string::npos) {
    out.erase(second, 1);
  }
  return out;
}

std::string AdifFlag(std::string_view stored) {
  std::string out(stored);
  for (char& c : out) {
    c = c == '1' ? 'Y' : c == '0' ? 'N' : c;
  }
  return out;
}

void BuildAdifFields(const CLogbookRecordset& contact, AdifFieldSet set, std::string_view comment,
                     std::vector<AdifOutField>* out) {
  size_t used = 0;
  const std::string_view keptMode = FindExtraField(contact.extraFields, "mode");
  std::string value;
  for (const Row& row : kRows) {
    if (!Writes(row.in, set)) {
      continue;
    }
    value.clear();
    switch (row.form) {
      case Form::kText:
        value = contact.*row.text;
        break;
      case Form::kDate:
      case Form::kTime:
        DatePart(contact.*row.date, row.form == Form::kTime, &value);
        break;
      case Form::kFreq:
        value = AdifFrequency(contact.*row.text);
        break;
      case Form::kFlag:
        value = AdifFlag(contact.*row.text);
        break;
      case Form::kComment:
        value = comment;
        break;
      case Form::kDateIfY:
        if (AdifFlag(contact.*row.flag) == "Y") {
          DatePart(contact.*row.date, false, &value);
        }
        break;
      case Form::kMode:
        // A contact read as MODE and SUBMODE keeps the MODE; the column holds the submode.
        value = keptMode.empty() ? contact.mode : std::string(keptMode);
        if (!keptMode.empty() && !contact.mode.empty()) {
          AdifOutField& field = Slot(out, &used);
          field.name = row.name;
          field.type = row.type;
          field.value = value;
          value = contact.mode;
          AdifOutField& sub = Slot(out, &used);
          sub.name = "submode";
          sub.type.clear();
          sub.value = value;
          continue;
        }
        break;
    }
    if (value.empty()) {
      continue;
    }
    AdifOutField& field = Slot(out, &used);
    field.name = row.name;
    field.type = row.type;
    field.value = std::move(value);
  }
  if (set == AdifFieldSet::kAllFields) {
    ForEachExtraField(contact.extraFields,
                      [&](std::string_view name, std::string_view type, std::string_view v) {
                        if (name == "mode" && !contact.mode.empty()) {
                          return;  // written above as the MODE of the pair
                        }
                        AdifOutField& field = Slot(out, &used);
                        field.name = name;
                        field.type = type;
                        field.value = v;
                      });
  }
  out->resize(used);
}

std::string FormatAdifCreated(std::time_t when) {
  std::tm local{};
  localtime_r(&when, &local);
  char text[64];
  std::strftime(text, sizeof text, "%d-%b-%Y %H:%M:%S", &local);
  return text;
}

AdifHeaderInfo MakeAdifHeaderInfo(const std::string& database, size_t records, std::time_t now) {
  // The program has no web address of its own yet; the line names its makers meanwhile.
  return {TAVLORIN_PROGRAM_NAME, TAVLORIN_VERSION, TAVLORIN_MAKER, FormatAdifCreated(now),
          database, records};
}

std::string AdiHeader(const AdifHeaderInfo& info) {
  std::string out;
  out += "#++\n";
  out += "#   " + info.programName + " " + info.version + "\n";
  out += "#   " + info.aboutLine + "\n";
  out += "#\n";
  out += "#   Free software for ever!\n";
  out += "#\n";
  out += "#   Created:  " + info.created + "\n";
  out += "#   Database: " + info.database + "\n";
  out += "#   Exported: " + std::to_string(info.records) + " records\n";
  out += "#\n";
  out += "#--\n";
  out += "\n";
  out += "<ADIF_VERS:3>2.0\n";
  out += "<PROGRAMID:" + std::to_string(std::string_view(kAdifProgramId).size()) + ">" +
         kAdifProgramId + "\n";
  out += "<PROGRAMVERSION:" + std::to_string(info.version.size()) + ">" + info.version + "\n";
  out += "<EOH>\n";
  out += "\n";
  return out;
}

void AppendAdiRecord(std::span<const AdifOutField> fields, std::string* out) {
  char length[24];
  for (const AdifOutField& f : fields) {
    out->push_back('<');
    out->append(f.name);
    out->push_back(':');
    const auto end = std::to_chars(length, length + sizeof length, f.value.size()).ptr;
    out->append(length, static_cast<size_t>(end - length));
    if (!f.type.empty()) {
      out->push_back(':');
      out->append(f.type);
    }
    out->push_back('>');
    out->append(f.value);
    out->push_back(' ');
  }
  out->append("<EOR>\n");
}

std::string AdxHeader(const AdifHeaderInfo& info) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ADX>\n  <HEADER>\n"
         "    <!-- " + XmlEscaped(info.programName + " " + info.version) + ", created " +
         XmlEscaped(info.created) + " from " + XmlEscaped(info.database) + ": " +
         std::to_string(info.records) + " records -->\n"
         "    <ADIF_VER>3.1.0</ADIF_VER>\n"
         "    <PROGRAMID>" + kAdifProgramId + "</PROGRAMID>\n"
         "    <PROGRAMVERSION>" + XmlEscaped(info.version) + "</PROGRAMVERSION>\n"
         "  </HEADER>\n  <RECORDS>\n";
}

void AppendAdxRecord(std::span<const AdifOutField> fields, std::string* out) {
  out->append("    <RECORD>\n");
  for (const AdifOutField& f : fields) {
    const std::string value = XmlEscaped(f.value);
    // An application field "app_<program>_<name>" is an APP element in the XML form.
    const size_t split = f.name.rfind("app_", 0) == 0 ? f.name.find('_', 4) : std::string::npos;
    if (split != std::string::npos) {
      const std::string program = f.name.substr(4, split - 4);
      const std::string id = EqualsIgnoreCase(program, kAdifProgramId) ? kAdifProgramId
                                                                       : UpperAscii(program);
      // TYPE only when the field came with one, so that reading it back gives the same field.
      out->append("      <APP PROGRAMID=\"" + XmlEscaped(id) + "\" FIELDNAME=\"" +
                  XmlEscaped(UpperAscii(f.name.substr(split + 1))) + "\"" +
                  (f.type.empty() ? "" : " TYPE=\"" + XmlEscaped(UpperAscii(f.type)) + "\"") +
                  ">" + value + "</APP>\n");
      continue;
    }
    const std::string tag = UpperAscii(f.name);
    out->append("      <" + tag + ">" + value + "</" + tag + ">\n");
  }
  out->append("    </RECORD>\n");
}

std::string AdxFooter() { return "  </RECORDS>\n</ADX>\n"; }

}  // namespace tavlorin
