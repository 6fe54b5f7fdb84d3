// The logbook file's schema: one ordered table of 62 field definitions, the single source from
// which CDefineDatabase creates and checks the five tables, their fields and key indexes, and
// from which the record classes take their field order.
//
// Constant data; any thread may read it.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace tavlorin {

inline constexpr const char* kTableBands = "TBL_BANDS";
inline constexpr const char* kTableCountries = "TBL_COUNTRIES";
inline constexpr const char* kTableModes = "TBL_MODES";
inline constexpr const char* kTableLogbook = "TBL_LOGBOOK";
inline constexpr const char* kTableQrz = "TBL_QRZ";

// Field types by their DAO numbers, which the schema stores.
enum class FieldType : int { kLong = 4, kDate = 8, kText = 10, kMemo = 12 };

// Field attributes as the schema records them.
inline constexpr int kAttrAutoIncrement = 16;
inline constexpr int kAttrUpdatable = 32;
inline constexpr int kAttrVariableLength = 34;

struct SchemaField {
  const char* table;
  const char* field;
  const char* keyIndex;  // name of the primary-key index, only on the key field; else ""
  FieldType type;
  int size;  // characters for Text; nominal for Memo; 0 otherwise
  int attributes;
  bool primaryKey;
  bool required;
  bool allowZeroLength;
};

// All 62 rows in order; a field's ordinal position is its index here.
std::span<const SchemaField> LogbookSchema();

// The rows of one table, in schema order (a contiguous slice of LogbookSchema()).
std::span<const SchemaField> TableSchema(const std::string& table);

// The five table names in schema order.
std::span<const char* const> LogbookTables();

// The declared SQL type of a field in our SQLite files ("VARCHAR(32)", "INTEGER", ...), and
// the size that a declared type reports back (0 when it carries none).
std::string DeclaredType(const SchemaField& row);
int SizeFromDeclaredType(const std::string& declared);

}  // namespace tavlorin
