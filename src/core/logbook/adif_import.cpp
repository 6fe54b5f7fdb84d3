#include "logbook/adif_import.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "logbook/adif_reader.h"
#include "logbook/adx_reader.h"

namespace tavlorin {
namespace {

constexpr size_t kChunk = 2000;

Status ReadWholeFile(const std::string& path, std::string* bytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    return Status::Error("Cannot open " + path);
  }
  in.seekg(0, std::ios::end);
  const std::streamoff size = in.tellg();
  in.seekg(0, std::ios::beg);
  if (size < 0) {
    return Status::Error("Cannot read " + path);
  }
  bytes->resize(static_cast<size_t>(size));
  if (!in.read(bytes->data(), size)) {
    return Status::Error("Cannot read " + path);
  }
  return Status::Ok();
}

}  // namespace

std::string AdifImportResult::FinishedText() const {
  return "Finished, " + std::to_string(errors) + " errors (" + std::to_string(duplicates) +
         " duplicates)";
}

AdifImport::AdifImport(LogbookDatabase& database, AdifImportOptions options)
    : database_(database), options_(options) {}

Status AdifImport::Read(const std::string& path, const ExchangeProgress& progress,
                        bool analyse) {
  progress.Status(kImportExtracting);
  std::string bytes;
  Status s = ReadWholeFile(path, &bytes);
  return s.ok() ? ReadBytes(std::move(bytes), progress, analyse) : s;
}

Status AdifImport::ReadBytes(std::string bytes, const ExchangeProgress& progress, bool analyse) {
  problems_.clear();
  refused_ = 0;
  analysed_ = false;
  progress.Status(kImportExtracting);
  const ReadProgress reading = [&progress](size_t done, size_t total) {
    progress.Step(done, total);
    return !progress.Cancelled();
  };
  Status s;
  if (LooksLikeAdx(bytes)) {
    s = ReadAdx(bytes, &document_, reading);
  } else {
    s = ReadAdif(std::move(bytes), &document_, reading);
  }
  if (!s.ok()) {
    return s;
  }
  if (document_.size() == 0 && document_.Header().empty()) {
    return Status::Error("The file holds no ADIF records");
  }
  reference_ = AdifReference();
  reference_.countries = &database_.countries();
  reference_.fieldSizes = database_.fieldSizes();
  s = database_.Bands(&reference_.bands);
  if (s.ok()) {
    s = database_.Modes(&reference_.modes);
  }
  if (!s.ok() || !analyse) {
    problems_ = document_.problems();
    return s;
  }
  return Analyse(progress);
}

namespace {

void SortByRecord(std::vector<AdifProblem>* problems) {
  std::stable_sort(problems->begin(), problems->end(),
                   [](const AdifProblem& a, const AdifProblem& b) { return a.record < b.record; });
}

}  // namespace

Status AdifImport::Analyse(const ExchangeProgress& progress) {
  progress.Status(kImportAnalysing);
  problems_ = document_.problems();
  AdifContactMapper mapper(reference_, options_);
  std::vector<AdifDocument::Field> fields;
  CLogbookRecordset contact;
  for (size_t n = 1; n <= document_.size(); ++n) {
    document_.Record(n, &fields);
    if (!mapper.Map(fields, n, &contact, &problems_)) {
      ++refused_;
    }
    if (n % kChunk == 0) {
      progress.Step(n, document_.size());
      if (progress.Cancelled()) {
        return Status::Error("Cancelled");
      }
    }
  }
  mapper.AppendSummary(&problems_);
  SortByRecord(&problems_);
  analysed_ = true;
  progress.Step(document_.size(), document_.size());
  return Status::Ok();
}

bool AdifImport::Contact(size_t number, CLogbookRecordset* contact) const {
  AdifContactMapper mapper(reference_, options_);
  std::vector<AdifProblem> ignored;
  return mapper.Map(document_.Record(number), number, contact, &ignored);
}

AdifImportResult AdifImport::Save(const ExchangeProgress& progress, bool dryRun) {
  if (!dryRun) {
    progress.Status(kImportSaving);
  }
  AdifImportResult result;
  result.records = document_.size();
  AdifContactMapper mapper(reference_, options_);
  std::vector<AdifDocument::Field> fields;
  std::vector<AdifProblem> ignored;
  // The chunk's contacts are reused from chunk to chunk, strings and all.
  std::vector<CLogbookRecordset> chunk(std::min(kChunk, document_.size()));
  std::vector<size_t> numbers(chunk.size());  // the record number of each contact
  size_t next = 1;
  BulkAddSource source;
  source.next = [&](bool* cancel) {
    progress.Step(next - 1, document_.size());
    if (progress.Cancelled()) {
      *cancel = true;
      return std::span<const CLogbookRecordset>();
    }
    size_t used = 0;
    for (; next <= document_.size() && used < chunk.size(); ++next) {
      document_.Record(next, &fields);
      ignored.clear();
      if (mapper.Map(fields, next, &chunk[used], analysed_ ? &ignored : &problems_)) {
        numbers[used++] = next;
      } else {
        ++result.errors;  // problems() says why
      }
    }
    return std::span<const CLogbookRecordset>(chunk.data(), used);
  };
  source.rollBack = dryRun;
  source.notStored = [&](size_t index, const std::string& reason) {
    result.notStored.push_back({numbers[index], true, reason});
  };
  BulkAddResult added = database_.AddRecords(source);
  progress.Step(document_.size(), document_.size());
  if (!analysed_) {
    // The analysis was done on the way: its problems are the file's from now on.
    refused_ = static_cast<size_t>(result.errors);
    mapper.AppendSummary(&problems_);
    SortByRecord(&problems_);
    analysed_ = true;
  }
  result.cancelled = added.cancelled;
  result.status = added.status;
  if (!added.status.ok()) {
    result.stored = result.duplicates = 0;
    result.errors = static_cast<int>(result.records);
    result.notStored.clear();
    return result;
  }
  result.stored = added.stored;
  result.duplicates = added.duplicates;
  result.errors += added.failed + added.duplicates;
  SortByRecord(&result.notStored);
  progress.Status(result.FinishedText());
  return result;
}

}  // namespace tavlorin
