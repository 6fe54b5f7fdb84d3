#include "logbook/adif_document.h"

#include <algorithm>

#include "logbook/adif_text.h"

namespace tavlorin {

std::string AdifProblem::Format() const {
  return record == 0 ? text : "record " + std::to_string(record) + ": " + text;
}

AdifDocument::AdifDocument() { names_.emplace_back(); }

uint32_t AdifDocument::Intern(std::string_view name) {
  if (name.empty()) {
    return 0;
  }
  if (auto it = rawNames_.find(name); it != rawNames_.end()) {
    return it->second;
  }
  // A name met for the first time in this spelling: one id per name in small letters.
  const std::string lower = LowerAscii(name);
  uint32_t id = 0;
  for (uint32_t i = 1; i < names_.size() && id == 0; ++i) {
    id = names_[i] == lower ? i : 0;
  }
  if (id == 0) {
    id = static_cast<uint32_t>(names_.size());
    names_.push_back(lower);
  }
  rawNames_.emplace(std::string(name), id);
  return id;
}

void AdifDocument::AddField(std::string_view name, std::string_view type, size_t offset,
                            size_t length) {
  const size_t position = std::min<size_t>(fields_.size() - openFrom_, 63);
  if (position >= byPosition_.size()) {
    byPosition_.resize(position + 1);
  }
  auto& cached = byPosition_[position];
  if (cached.first != name) {
    cached = {std::string(name), Intern(name)};
  }
  fields_.push_back({cached.second, type.empty() ? 0 : Intern(type), static_cast<uint32_t>(offset),
                     static_cast<uint32_t>(length)});
}

void AdifDocument::AddFieldValue(std::string_view name, std::string_view type,
                                 std::string_view value) {
  const size_t offset = text_.size();
  text_.append(value);
  AddField(name, type, offset, value.size());
}

size_t AdifDocument::EndRecord() {
  if (!RecordOpen()) {
    return 0;
  }
  records_.push_back({static_cast<uint32_t>(openFrom_),
                      static_cast<uint32_t>(fields_.size() - openFrom_)});
  openFrom_ = fields_.size();
  return records_.size();
}

void AdifDocument::EndHeader() {
  header_ = {static_cast<uint32_t>(openFrom_), static_cast<uint32_t>(fields_.size() - openFrom_)};
  openFrom_ = fields_.size();
}

void AdifDocument::AddProblem(size_t record, bool error, std::string text) {
  problems_.push_back({record, error, std::move(text)});
}

void AdifDocument::Reserve(size_t records, size_t fields) {
  records_.reserve(records);
  fields_.reserve(fields);
}

void AdifDocument::Fields(RecordSlot slot, std::vector<Field>* out) const {
  out->clear();
  const std::string_view text(text_);
  for (uint32_t i = slot.first; i < slot.first + slot.count; ++i) {
    const FieldRef& f = fields_[i];
    out->push_back({names_[f.name], names_[f.type], text.substr(f.offset, f.length)});
  }
}

void AdifDocument::Record(size_t number, std::vector<Field>* out) const {
  Fields(Slot(number), out);
}

std::vector<AdifDocument::Field> AdifDocument::Record(size_t number) const {
  std::vector<Field> out;
  Fields(Slot(number), &out);
  return out;
}

std::vector<AdifDocument::Field> AdifDocument::Header() const {
  std::vector<Field> out;
  Fields(header_, &out);
  return out;
}

}  // namespace tavlorin
