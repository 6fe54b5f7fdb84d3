#include "logbook/logbook_row_io.h"

namespace tavlorin {
namespace {

std::string JoinFields(const char* suffix) {
  std::string out;
  for (const LogbookField& f : LogbookFields()) {
    if (f.text == nullptr && f.date == nullptr) {
      continue;  // the key is the database's to assign
    }
    if (!out.empty()) {
      out += ", ";
    }
    out += std::string("[") + f.name + "]" + suffix;
  }
  return out;
}

}  // namespace

std::string LogbookColumnList() { return JoinFields(""); }
std::string LogbookAssignmentList() { return JoinFields(" = ?"); }

std::string LogbookValueMarks() {
  std::string out;
  for (size_t i = 1; i < LogbookFields().size(); ++i) {
    out += i == 1 ? "?" : ", ?";
  }
  return out;
}

int BindLogbookRecord(SqliteStatement& st, const CLogbookRecordset& record, int first) {
  int index = first;
  for (const LogbookField& f : LogbookFields()) {
    if (f.text != nullptr) {
      st.BindTextNoCopy(index++, record.*f.text);
    } else if (f.date != nullptr) {
      st.BindDouble(index++, record.*f.date);
    }
  }
  return index;
}

int LogbookParameterIndex(const char* name) {
  int index = 0;
  for (const LogbookField& f : LogbookFields()) {
    if (f.text == nullptr && f.date == nullptr) {
      continue;
    }
    ++index;
    if (std::string_view(f.name) == name) {
      return index;
    }
  }
  return 0;
}

LogbookRowReader::LogbookRowReader(const SqliteStatement& st) {
  const int count = st.ColumnCount();
  fields_.reserve(static_cast<size_t>(count));
  for (int c = 0; c < count; ++c) {
    fields_.push_back(FindLogbookField(st.ColumnName(c)));
  }
}

void LogbookRowReader::Read(const SqliteStatement& st, CLogbookRecordset* record) const {
  for (size_t c = 0; c < fields_.size(); ++c) {
    const LogbookField* f = fields_[c];
    const int column = static_cast<int>(c);
    if (f == nullptr) {
      continue;
    }
    if (f->text != nullptr) {
      record->*f->text = st.ColumnText(column);
    } else if (f->date != nullptr) {
      record->*f->date = st.ColumnOptionalDouble(column);
    } else {
      record->primaryKey = static_cast<int32_t>(st.ColumnInt(column));
    }
  }
}

}  // namespace tavlorin
