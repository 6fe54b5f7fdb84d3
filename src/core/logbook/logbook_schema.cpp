#include "logbook/logbook_schema.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

namespace tavlorin {
namespace {

constexpr FieldType L = FieldType::kLong;
constexpr FieldType D = FieldType::kDate;
constexpr FieldType T = FieldType::kText;
constexpr FieldType M = FieldType::kMemo;

// table, field, key index, type, size, attributes, key, required, zero length allowed
constexpr SchemaField kSchema[] = {
    {"TBL_BANDS", "PrimaryKey", "BAND_PRIMARY_KEY", L, 0, 16, true, false, false},
    {"TBL_BANDS", "MinFreq", "", L, 0, 34, false, true, false},
    {"TBL_BANDS", "MaxFreq", "", L, 0, 34, false, true, false},
    {"TBL_BANDS", "Title", "", T, 32, 34, false, true, false},
    {"TBL_BANDS", "ADIF", "", T, 32, 34, false, true, false},
    {"TBL_BANDS", "Comment", "", T, 64, 34, false, false, true},

    // The key index shares its name with TBL_MODES' one; existing files carry it that way.
    {"TBL_COUNTRIES", "PrimaryKey", "MODE_PRIMARY_KEY", L, 0, 16, true, false, false},
    {"TBL_COUNTRIES", "Country", "", T, 64, 34, false, true, false},
    {"TBL_COUNTRIES", "DXCC", "", T, 32, 34, false, false, true},
    {"TBL_COUNTRIES", "Comment", "", M, 64, 34, false, false, true},
    {"TBL_COUNTRIES", "Prefix", "", M, 1024, 34, false, false, true},

    {"TBL_MODES", "PrimaryKey", "MODE_PRIMARY_KEY", L, 0, 16, true, false, false},
    {"TBL_MODES", "Title", "", T, 32, 34, false, true, false},
    {"TBL_MODES", "ADIF", "", T, 32, 34, false, true, false},
    {"TBL_MODES", "Comment", "", T, 64, 34, false, false, true},

    {"TBL_LOGBOOK", "PrimaryKey", "LOG_PRIMARY_KEY", L, 0, 16, true, false, false},
    {"TBL_LOGBOOK", "Created", "", D, 0, 32, false, false, false},
    {"TBL_LOGBOOK", "Modified", "", D, 0, 32, false, false, false},
    {"TBL_LOGBOOK", "Station", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "EndTime", "", D, 0, 32, false, false, false},
    {"TBL_LOGBOOK", "StartTime", "", D, 0, 32, false, true, false},
    {"TBL_LOGBOOK", "Remark", "", M, 1024, 34, false, false, true},
    {"TBL_LOGBOOK", "ReportRecv", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "ReportSent", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "BandMHz", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "Mode", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "Frequency", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "Locator", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "Country", "", T, 64, 34, false, false, true},
    {"TBL_LOGBOOK", "DXCC", "", T, 10, 34, false, false, true},
    {"TBL_LOGBOOK", "IOTA", "", T, 10, 34, false, false, true},
    {"TBL_LOGBOOK", "QSLRecv", "", T, 10, 34, false, false, true},
    {"TBL_LOGBOOK", "QSLSent", "", T, 10, 34, false, false, true},
    {"TBL_LOGBOOK", "QSLRecvDate", "", D, 0, 32, false, false, false},
    {"TBL_LOGBOOK", "QSLSentDate", "", D, 0, 32, false, false, false},
    {"TBL_LOGBOOK", "eQSLRecv", "", T, 10, 34, false, false, true},
    {"TBL_LOGBOOK", "eQSLSent", "", T, 10, 34, false, false, true},
    {"TBL_LOGBOOK", "eQSLRecvDate", "", D, 0, 32, false, false, false},
    {"TBL_LOGBOOK", "eQSLSentDate", "", D, 0, 32, false, false, false},
    {"TBL_LOGBOOK", "eQSLStatus", "", T, 255, 34, false, false, true},
    {"TBL_LOGBOOK", "QSLVia", "", T, 64, 34, false, false, true},
    {"TBL_LOGBOOK", "Name", "", T, 64, 34, false, false, true},
    {"TBL_LOGBOOK", "Address", "", T, 255, 34, false, false, true},
    {"TBL_LOGBOOK", "QTH", "", T, 255, 34, false, false, true},
    {"TBL_LOGBOOK", "MyStation", "", T, 128, 34, false, false, true},
    {"TBL_LOGBOOK", "MyAntenna", "", T, 128, 34, false, false, true},
    {"TBL_LOGBOOK", "MyCallsign", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "MyLocator", "", T, 10, 34, false, false, true},
    {"TBL_LOGBOOK", "MyPower", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "MyName", "", T, 32, 34, false, false, true},
    {"TBL_LOGBOOK", "MyCountry", "", T, 64, 34, false, false, true},
    // ADIF fields that have no column of their own, kept with the contact as ADIF text.
    {"TBL_LOGBOOK", "ExtraFields", "", M, 1024, 34, false, false, true},

    {"TBL_QRZ", "PrimaryKey", "LOG_PRIMARY_KEY", L, 0, 16, true, false, false},
    {"TBL_QRZ", "QRZUpdated", "", D, 0, 32, false, false, false},
    {"TBL_QRZ", "QRZCallsign", "", T, 255, 34, false, false, true},
    {"TBL_QRZ", "QRZName", "", T, 255, 34, false, false, true},
    {"TBL_QRZ", "QRZAddr1", "", T, 255, 34, false, false, true},
    {"TBL_QRZ", "QRZAddr2", "", T, 255, 34, false, false, true},
    {"TBL_QRZ", "QRZCountry", "", T, 255, 34, false, false, true},
    {"TBL_QRZ", "QRZGrid", "", T, 255, 34, false, false, true},
    {"TBL_QRZ", "QRZHomePage", "", T, 255, 34, false, false, true},
    {"TBL_QRZ", "QRZQslMgr", "", T, 255, 34, false, false, true},
};
static_assert(std::size(kSchema) == 62, "the logbook schema has 62 fields");

constexpr const char* kTables[] = {kTableBands, kTableCountries, kTableModes, kTableLogbook,
                                   kTableQrz};

}  // namespace

std::span<const SchemaField> LogbookSchema() { return kSchema; }

std::span<const SchemaField> TableSchema(const std::string& table) {
  size_t first = std::size(kSchema);
  size_t count = 0;
  for (size_t i = 0; i < std::size(kSchema); ++i) {
    if (table == kSchema[i].table) {
      first = count == 0 ? i : first;
      ++count;
    }
  }
  if (count == 0) {
    return {};
  }
  return std::span<const SchemaField>(kSchema + first, count);
}

std::span<const char* const> LogbookTables() { return kTables; }

std::string DeclaredType(const SchemaField& row) {
  switch (row.type) {
    case FieldType::kLong:
      return "INTEGER";
    case FieldType::kDate:
      return "DOUBLE";  // days since 30 December 1899
    case FieldType::kText:
      return "VARCHAR(" + std::to_string(row.size) + ")";
    case FieldType::kMemo:
      return "TEXT";
  }
  return "TEXT";
}

int SizeFromDeclaredType(const std::string& declared) {
  size_t open = declared.find('(');
  if (open == std::string::npos) {
    return 0;
  }
  return std::atoi(declared.c_str() + open + 1);
}

}  // namespace tavlorin
