// The bound records of the logbook file's five tables: one plain struct per table, holding
// every field as text except the key, the band edges and the dates.
//
// CLogbookRecordset is one contact (a row of TBL_LOGBOOK). Its fields are also reachable by
// their schema names through LogbookFields(), which the command line, the bulk edit and the
// SQL binding use, so the field list is written down once. Plain values; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "logbook/ole_date.h"
#include "shell/status.h"

namespace tavlorin {

struct CLogbookRecordset {
  int32_t primaryKey = 0;
  std::optional<OleDate> created;
  std::optional<OleDate> modified;
  std::string station;
  std::optional<OleDate> endTime;
  std::optional<OleDate> startTime;  // the one required field
  std::string remark;
  std::string reportRecv;
  std::string reportSent;
  std::string bandMHz;
  std::string mode;
  std::string frequency;
  std::string locator;
  std::string country;
  std::string dxcc;
  std::string iota;
  std::string qslRecv;
  std::string qslSent;
  std::optional<OleDate> qslRecvDate;
  std::optional<OleDate> qslSentDate;
  std::string eqslRecv;
  std::string eqslSent;
  std::optional<OleDate> eqslRecvDate;
  std::optional<OleDate> eqslSentDate;
  std::string eqslStatus;
  std::string qslVia;
  std::string name;
  std::string address;
  std::string qth;
  std::string myStation;
  std::string myAntenna;
  std::string myCallsign;
  std::string myLocator;
  std::string myPower;
  std::string myName;
  std::string myCountry;
  // The contact's ADIF fields that have no column of their own, as ADIF text
  // ("<submode:3>USB <my_rig:7>IC-7300"), written back by the "All fields" export.
  std::string extraFields;
};

// One field of CLogbookRecordset by its schema name: exactly one of text and date is set,
// except for PrimaryKey, which has neither.
struct LogbookField {
  const char* name;
  std::string CLogbookRecordset::*text;
  std::optional<OleDate> CLogbookRecordset::*date;
};

// The 37 fields in schema order.
std::span<const LogbookField> LogbookFields();
// The field named `name` (exact schema spelling, or any case), or nullptr.
const LogbookField* FindLogbookField(std::string_view name);

// The field's value as text: dates as "YYYY-MM-DD HH:MM:SS" (empty when unset), the key as a
// number.
std::string LogbookFieldText(const CLogbookRecordset& record, const LogbookField& field);
// Sets a field from text; a date must be readable by ParseOleDate (empty clears it). The key
// cannot be set this way.
Status SetLogbookFieldText(CLogbookRecordset* record, const LogbookField& field,
                           std::string_view value);

// The order in which the write path cuts text fields to their sizes.
std::span<const char* const> LogbookCutOrder();

struct CBandsRecordSet {
  int32_t primaryKey = 0;
  uint32_t minFreq = 0;  // hertz, unsigned: the 13cm edges exceed the signed range
  uint32_t maxFreq = 0;
  std::string title;
  std::string adif;
  std::string comment;
};

struct CModesRecordSet {
  int32_t primaryKey = 0;
  std::string title;
  std::string adif;
  std::string comment;
};

struct CCountriesRecordSet {
  int32_t primaryKey = 0;
  std::string country;  // with " [deleted]" for a deleted entity
  std::string dxcc;
  std::string comment;
  std::string prefix;  // comma-separated prefixes and whole callsigns
};

struct CQRZRecordSet {
  int32_t primaryKey = 0;
  std::optional<OleDate> qrzUpdated;
  std::string qrzCallsign;
  std::string qrzName;
  std::string qrzAddr1;
  std::string qrzAddr2;
  std::string qrzCountry;
  std::string qrzGrid;
  std::string qrzHomePage;
  std::string qrzQslMgr;
};

}  // namespace tavlorin
