#include "logbook/adif_export.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "logbook/jet_sql.h"
#include "logbook/logbook_schema.h"
#include "logbook/sqlite_db.h"

namespace tavlorin {

Status WriteFileAtomically(const std::string& path,
                           std::initializer_list<std::string_view> pieces) {
  const std::filesystem::path target(path);
  const std::filesystem::path folder =
      target.parent_path().empty() ? std::filesystem::path(".") : target.parent_path();
  // A name of our own beside the target (the rename must not cross file systems), created
  // with the usual permissions of a new file.
  static std::atomic<unsigned> serial{0};
  std::string temp;
  int fd = -1;
  for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
    temp = (folder / ("." + target.filename().string() + "." + std::to_string(::getpid()) + "." +
                      std::to_string(serial++)))
               .string();
    fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0 && errno != EEXIST) {
      break;
    }
  }
  if (fd < 0) {
    return Status::Error("Cannot write " + path + ": " + std::strerror(errno));
  }
  for (std::string_view text : pieces) {
    size_t written = 0;
    while (written < text.size()) {
      const ssize_t n = ::write(fd, text.data() + written, text.size() - written);
      if (n < 0 && errno == EINTR) {
        continue;
      }
      if (n <= 0) {
        const std::string error = std::strerror(errno);
        ::close(fd);
        ::unlink(temp.c_str());
        return Status::Error("Cannot write " + path + ": " + error);
      }
      written += static_cast<size_t>(n);
    }
  }
  if (::fsync(fd) != 0 || ::close(fd) != 0 || ::rename(temp.c_str(), path.c_str()) != 0) {
    const std::string error = std::strerror(errno);
    ::unlink(temp.c_str());
    return Status::Error("Cannot write " + path + ": " + error);
  }
  return Status::Ok();
}

Status CountListed(const LogbookDatabase& database, const std::string& where, size_t* count) {
  std::string sql;
  Status s = TranslateJetSql(std::string("SELECT COUNT(*) FROM ") + kTableLogbook + " AS Q " + where,
                             &sql);
  SqliteDb db;
  if (s.ok()) {
    s = db.Open(database.path(), SqliteDb::OpenMode::kExisting);
  }
  SqliteStatement st;
  if (s.ok()) {
    s = db.Prepare(sql, &st);
  }
  if (s.ok() && st.Step()) {
    *count = static_cast<size_t>(st.ColumnInt(0));
    return Status::Ok();
  }
  return Status::Error(std::string("Error reading ") + kTableLogbook + ": " +
                       (s.ok() ? st.status().message() : s.message()));
}

AdifExportResult ExportAdif(LogbookDatabase& database, const std::string& path,
                            const AdifExportOptions& options, const ExchangeProgress& progress) {
  AdifExportResult result;
  size_t total = 0;
  result.status = CountListed(database, options.where, &total);
  if (!result.status.ok()) {
    return result;
  }
  std::string body;
  std::vector<AdifOutField> fields;
  const std::string& order = options.order.empty() ? std::string(kExportOrder) : options.order;
  result.status = database.ForEachRecord(0, options.where, order, [&](const CLogbookRecordset& c) {
    if (result.records % 256 == 0) {
      progress.Step(result.records, total);
      if (progress.Cancelled()) {
        result.cancelled = true;
        return false;
      }
    }
    BuildAdifFields(c, options.fields, options.comment, &fields);
    if (options.xml) {
      AppendAdxRecord(fields, &body);
    } else {
      AppendAdiRecord(fields, &body);
    }
    ++result.records;
    return true;
  });
  if (result.cancelled) {
    result.status = Status::Error("Cancelled");
  }
  if (!result.status.ok()) {
    return result;
  }
  progress.Step(result.records, total);
  const AdifHeaderInfo info =
      MakeAdifHeaderInfo(database.path(), result.records, options.now.value_or(std::time(nullptr)));
  result.status = WriteFileAtomically(path, {options.xml ? AdxHeader(info) : AdiHeader(info), body,
                                             options.xml ? AdxFooter() : std::string()});
  return result;
}

}  // namespace tavlorin
