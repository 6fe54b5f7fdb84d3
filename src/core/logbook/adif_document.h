// AdifDocument: the records of one ADIF file (ADI or ADX form) as the readers found them, in a
// compact form that holds a log of 100 000 contacts without a string per value.
//
// Every value is a slice of one text buffer (the file's own bytes where they could be kept,
// converted or joined text after them); names and type indicators are kept once each, in small
// letters. Records are numbered from 1 in file order; the header's fields are kept apart. The
// problems list says what the reader had to repair or skip, with record numbers.
//
// Built by AdifReader / AdxReader; afterwards read-only, and then any number of threads may read
// it. Movable, not copyable (it may hold a whole file).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tavlorin {

// Something a reader or the importer had to say about the file. `record` is the record's
// number (from 1), or 0 for the file as a whole and its header.
struct AdifProblem {
  size_t record = 0;
  bool error = false;  // error: the record is not stored; otherwise a warning
  std::string text;

  // "record 12: ..." or the text alone for record 0.
  std::string Format() const;
};

class AdifDocument {
 public:
  // One field of a record; the views point into the document.
  struct Field {
    std::string_view name;   // small letters
    std::string_view type;   // small letters; empty when the file gave none
    std::string_view value;  // UTF-8
  };

  AdifDocument();
  AdifDocument(AdifDocument&&) = default;
  AdifDocument& operator=(AdifDocument&&) = default;
  AdifDocument(const AdifDocument&) = delete;
  AdifDocument& operator=(const AdifDocument&) = delete;

  size_t size() const { return records_.size(); }
  // The fields of record `number` (1 to size()), in file order.
  std::vector<Field> Record(size_t number) const;
  // The same into `out`, whose storage is reused (the importer's loop).
  void Record(size_t number, std::vector<Field>* out) const;
  size_t FieldCount(size_t number) const { return Slot(number).count; }
  std::vector<Field> Header() const;
  const std::vector<AdifProblem>& problems() const { return problems_; }

  // --- Building (the readers) -----------------------------------------------------------
  // The buffer that values point into; a reader may fill it with the file's bytes first and
  // then add fields by offset.
  std::string& text() { return text_; }
  // Adds a field of the record being built; `name` and `type` in any case.
  void AddField(std::string_view name, std::string_view type, size_t offset, size_t length);
  // The same with a value that is not in text() yet: it is appended.
  void AddFieldValue(std::string_view name, std::string_view type, std::string_view value);
  // Ends the record being built (one without fields is dropped); returns its number or 0.
  size_t EndRecord();
  // The fields built so far become the header instead of a record.
  void EndHeader();
  bool RecordOpen() const { return fields_.size() > openFrom_; }
  // The number the record being built will get.
  size_t NextRecordNumber() const { return records_.size() + 1; }
  void AddProblem(size_t record, bool error, std::string text);
  void Reserve(size_t records, size_t fields);

 private:
  struct FieldRef {
    uint32_t name;
    uint32_t type;
    uint32_t offset;
    uint32_t length;
  };
  struct RecordSlot {
    uint32_t first;
    uint32_t count;
  };
  struct Hash {
    using is_transparent = void;
    size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };

  uint32_t Intern(std::string_view name);
  const RecordSlot& Slot(size_t number) const { return records_[number - 1]; }
  void Fields(RecordSlot slot, std::vector<Field>* out) const;

  std::string text_;
  std::vector<std::string> names_;  // [0] is ""
  std::unordered_map<std::string, uint32_t, Hash, std::equal_to<>> rawNames_;
  // Records repeat their fields in the same order: the name last met at each position of a
  // record, as written, spares most look-ups.
  std::vector<std::pair<std::string, uint32_t>> byPosition_;
  std::vector<FieldRef> fields_;
  std::vector<RecordSlot> records_;
  RecordSlot header_{0, 0};
  size_t openFrom_ = 0;  // first field of the record being built
  std::vector<AdifProblem> problems_;
};

}  // namespace tavlorin
