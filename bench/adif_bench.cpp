// ADIF speed and memory: a generated log of 100 000 contacts with 20 fields each, imported into
// a new logbook end to end (file read, parse, analysis, one transaction), parsed alone, and
// exported. Peak memory is the process's maximum resident set (getrusage), so run one
// benchmark per process to read it: adif_bench --benchmark_filter=BM_AdifImport
#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "logbook/adif_export.h"
#include "logbook/adif_import.h"
#include "logbook/adif_reader.h"
#include "shell/settings.h"

namespace tavlorin {
namespace {

constexpr int kContacts = 100000;

struct TempDir {
  TempDir() {
    char pattern[] = "/tmp/tavlorin-adif-bench-XXXXXX";
    path = mkdtemp(pattern);
    settings = std::make_unique<Settings>(path / "settings.ini");
  }
  ~TempDir() { std::filesystem::remove_all(path); }
  std::unique_ptr<LogbookDatabase> NewLogbook(const std::string& name) {
    auto db = std::make_unique<LogbookDatabase>((path / name).string(), *settings);
    db->Define(false);
    return db;
  }
  std::filesystem::path path;
  std::unique_ptr<Settings> settings;
};

std::string Field(const char* name, const std::string& value) {
  return "<" + std::string(name) + ":" + std::to_string(value.size()) + ">" + value + " ";
}

// 100 000 contacts of 20 fields, one every two minutes from 2015 on.
std::string MakeFile() {
  static const char* kBands[] = {"160m", "80m", "40m", "20m", "15m", "10m"};
  static const char* kFreqs[] = {"1.8325", "3.573", "7.074", "14.074", "21.074", "28.074"};
  static const char* kModes[] = {"SSB", "CW", "FT8", "RTTY"};
  std::string text = "Generated for the ADIF benchmark\n<ADIF_VER:5>3.1.4<EOH>\n";
  text.reserve(static_cast<size_t>(kContacts) * 330);
  for (int i = 0; i < kContacts; ++i) {
    const int minutes = i * 2;
    const int day = minutes / 1440, minute = minutes % 1440;
    char date[16], on[8], off[8];
    std::snprintf(date, sizeof date, "%04d%02d%02d", 2015 + day / 336, 1 + day / 28 % 12,
                  1 + day % 28);
    std::snprintf(on, sizeof on, "%02d%02d00", minute / 60, minute % 60);
    std::snprintf(off, sizeof off, "%02d%02d30", minute / 60, minute % 60);
    const std::string call = "DL" + std::to_string(i % 10) + "A" + std::string(1, char('A' + i % 26)) +
                             std::to_string(i);
    text += Field("CALL", call) + Field("QSO_DATE", date) + Field("TIME_ON", on) +
            Field("TIME_OFF", off) + Field("BAND", kBands[i % 6]) + Field("MODE", kModes[i % 4]) +
            Field("FREQ", kFreqs[i % 6]) + Field("RST_SENT", "59") + Field("RST_RCVD", "57") +
            Field("NAME", "Operator " + std::to_string(i)) + Field("QTH", "M\xC3\xBCnchen") +
            Field("GRIDSQUARE", "JN58td") + Field("DXCC", "230") +
            Field("COUNTRY", "Fed. Rep. of Germany") + Field("COMMENT", "tnx fer QSO, 73") +
            Field("OPERATOR", "G4XYZ") + Field("MY_GRIDSQUARE", "IO91wm") +
            Field("TX_PWR", "100") + Field("QSL_SENT", "Y") + Field("QSL_RCVD", "N") + "<EOR>\n";
  }
  return text;
}

const std::string& File() {
  static const std::string text = MakeFile();
  return text;
}

void PeakMemory(benchmark::State& state) {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["peak_rss_MB"] = static_cast<double>(usage.ru_maxrss) / 1024.0;
  state.counters["file_MB"] = static_cast<double>(File().size()) / 1e6;
}

void BM_AdifParse(benchmark::State& state) {
  for (auto _ : state) {
    AdifDocument doc;
    ReadAdif(File(), &doc);
    if (doc.size() != kContacts) {
      state.SkipWithError("not every record was read");
    }
  }
  state.SetItemsProcessed(state.iterations() * kContacts);
  PeakMemory(state);
}
BENCHMARK(BM_AdifParse)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_AdifImport(benchmark::State& state) {
  TempDir dir;
  const std::string file = (dir.path / "log.adi").string();
  std::ofstream(file, std::ios::binary) << File();
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove(dir.path / "import.sqlite");
    auto db = dir.NewLogbook("import.sqlite");
    state.ResumeTiming();
    AdifImport import(*db, {});
    import.Read(file, {}, false);  // as the CLI does: the save analyses on its way
    AdifImportResult r = import.Save();
    if (r.stored != kContacts) {
      state.SkipWithError("not every contact was stored");
    }
  }
  state.SetItemsProcessed(state.iterations() * kContacts);
  PeakMemory(state);
}
BENCHMARK(BM_AdifImport)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_AdifExport(benchmark::State& state) {
  TempDir dir;
  const std::string file = (dir.path / "log.adi").string();
  std::ofstream(file, std::ios::binary) << File();
  auto db = dir.NewLogbook("export.sqlite");
  AdifImport import(*db, {});
  import.Read(file);
  import.Save();
  AdifExportOptions options;
  options.fields = static_cast<AdifFieldSet>(state.range(0));
  for (auto _ : state) {
    AdifExportResult r = ExportAdif(*db, (dir.path / "out.adi").string(), options);
    if (r.records != kContacts) {
      state.SkipWithError("not every contact was exported");
    }
  }
  state.SetItemsProcessed(state.iterations() * kContacts);
  PeakMemory(state);
}
BENCHMARK(BM_AdifExport)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace tavlorin

BENCHMARK_MAIN();
