#include "logbook/logbook_records.h"

#include <strings.h>

namespace tavlorin {
namespace {

using R = CLogbookRecordset;

#define TEXT_FIELD(n, m) \
  { n, &R::m, nullptr }
#define DATE_FIELD(n, m) \
  { n, nullptr, &R::m }

const LogbookField kFields[] = {
    {"PrimaryKey", nullptr, nullptr},
    DATE_FIELD("Created", created),
    DATE_FIELD("Modified", modified),
    TEXT_FIELD("Station", station),
    DATE_FIELD("EndTime", endTime),
    DATE_FIELD("StartTime", startTime),
    TEXT_FIELD("Remark", remark),
    TEXT_FIELD("ReportRecv", reportRecv),
    TEXT_FIELD("ReportSent", reportSent),
    TEXT_FIELD("BandMHz", bandMHz),
    TEXT_FIELD("Mode", mode),
    TEXT_FIELD("Frequency", frequency),
    TEXT_FIELD("Locator", locator),
    TEXT_FIELD("Country", country),
    TEXT_FIELD("DXCC", dxcc),
    TEXT_FIELD("IOTA", iota),
    TEXT_FIELD("QSLRecv", qslRecv),
    TEXT_FIELD("QSLSent", qslSent),
    DATE_FIELD("QSLRecvDate", qslRecvDate),
    DATE_FIELD("QSLSentDate", qslSentDate),
    TEXT_FIELD("eQSLRecv", eqslRecv),
    TEXT_FIELD("eQSLSent", eqslSent),
    DATE_FIELD("eQSLRecvDate", eqslRecvDate),
    DATE_FIELD("eQSLSentDate", eqslSentDate),
    TEXT_FIELD("eQSLStatus", eqslStatus),
    TEXT_FIELD("QSLVia", qslVia),
    TEXT_FIELD("Name", name),
    TEXT_FIELD("Address", address),
    TEXT_FIELD("QTH", qth),
    TEXT_FIELD("MyStation", myStation),
    TEXT_FIELD("MyAntenna", myAntenna),
    TEXT_FIELD("MyCallsign", myCallsign),
    TEXT_FIELD("MyLocator", myLocator),
    TEXT_FIELD("MyPower", myPower),
    TEXT_FIELD("MyName", myName),
    TEXT_FIELD("MyCountry", myCountry),
    TEXT_FIELD("ExtraFields", extraFields),
};
static_assert(std::size(kFields) == 37);

#undef TEXT_FIELD
#undef DATE_FIELD

constexpr const char* kCutOrder[] = {
    "Station",    "BandMHz",    "Mode",      "Remark",  "Frequency",  "Country",    "DXCC",
    "IOTA",       "Locator",    "QSLSent",   "QSLRecv", "QSLVia",     "eQSLSent",   "eQSLRecv",
    "eQSLStatus", "Name",       "Address",   "QTH",     "ReportRecv", "ReportSent", "MyStation",
    "MyAntenna",  "MyCallsign", "MyLocator", "MyPower", "MyName",     "MyCountry",
};
static_assert(std::size(kCutOrder) == 27);

}  // namespace

std::span<const LogbookField> LogbookFields() { return kFields; }

const LogbookField* FindLogbookField(std::string_view name) {
  for (const LogbookField& f : kFields) {
    if (name.size() == std::char_traits<char>::length(f.name) &&
        strncasecmp(name.data(), f.name, name.size()) == 0) {
      return &f;
    }
  }
  return nullptr;
}

std::string LogbookFieldText(const CLogbookRecordset& record, const LogbookField& field) {
  if (field.text != nullptr) {
    return record.*field.text;
  }
  if (field.date != nullptr) {
    const auto& date = record.*field.date;
    return date ? FormatOleDate(*date) : std::string();
  }
  return std::to_string(record.primaryKey);
}

Status SetLogbookFieldText(CLogbookRecordset* record, const LogbookField& field,
                           std::string_view value) {
  if (field.text != nullptr) {
    record->*field.text = std::string(value);
    return Status::Ok();
  }
  if (field.date == nullptr) {
    return Status::Error("The record number (PrimaryKey) is assigned by the database");
  }
  if (value.empty()) {
    (record->*field.date).reset();
    return Status::Ok();
  }
  auto date = ParseOleDate(value);
  if (!date) {
    return Status::Error(std::string(field.name) + ": \"" + std::string(value) +
                         "\" is not a date (use YYYY-MM-DD HH:MM:SS)");
  }
  record->*field.date = *date;
  return Status::Ok();
}

std::span<const char* const> LogbookCutOrder() { return kCutOrder; }

}  // namespace tavlorin
