// Logbook speed: the importers' bulk add, and listing the newest contacts of a big logbook.
// Each run works on a fresh file in a temporary folder.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>

#include "logbook/logbook_database.h"
#include "logbook/ole_date.h"
#include "shell/settings.h"

namespace tavlorin {
namespace {

struct TempLogbook {
  TempLogbook() {
    char pattern[] = "/tmp/tavlorin-bench-XXXXXX";
    dir = mkdtemp(pattern);
    settings = std::make_unique<Settings>(dir / "settings.ini");
    db = std::make_unique<LogbookDatabase>((dir / "log.sqlite").string(), *settings);
    db->Define(false);
  }
  ~TempLogbook() { std::filesystem::remove_all(dir); }
  std::filesystem::path dir;
  std::unique_ptr<Settings> settings;
  std::unique_ptr<LogbookDatabase> db;
};

std::vector<CLogbookRecordset> MakeContacts(int count) {
  static const char* kBands[] = {"160m", "80m", "40m", "20m", "15m", "10m"};
  static const char* kModes[] = {"SSB", "CW", "FT8", "RTTY"};
  std::vector<CLogbookRecordset> out(static_cast<size_t>(count));
  const OleDate start = OleDateFromCivil(2015, 1, 1);
  for (int i = 0; i < count; ++i) {
    CLogbookRecordset& c = out[static_cast<size_t>(i)];
    c.station = "DL" + std::to_string(i % 10) + "A" + std::string(1, char('A' + i % 26)) +
                std::to_string(i);
    c.startTime = start + i * (3.0 / 1440);  // one contact every three minutes
    c.endTime = *c.startTime + 1.0 / 1440;
    c.bandMHz = kBands[i % 6];
    c.mode = kModes[i % 4];
    c.frequency = "14.074.000";
    c.reportSent = "59";
    c.reportRecv = "57";
    c.locator = "JO62QM";
    c.country = "FEDERAL REPUBLIC OF GERMANY";
    c.dxcc = "230";
    c.name = "Op " + std::to_string(i);
    c.myCallsign = "G4XYZ";
    c.myLocator = "IO91WM";
  }
  return out;
}

void BM_BulkAdd(benchmark::State& state) {
  const auto contacts = MakeContacts(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    auto logbook = std::make_unique<TempLogbook>();
    state.ResumeTiming();
    BulkAddResult r = logbook->db->AddRecords(contacts);
    if (r.stored != static_cast<int>(contacts.size())) {
      state.SkipWithError("not every contact was stored");
    }
    state.PauseTiming();
    logbook.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_BulkAdd)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_ListNewest100(benchmark::State& state) {
  TempLogbook logbook;
  logbook.db->AddRecords(MakeContacts(100000));
  std::vector<CLogbookRecordset> rows;
  for (auto _ : state) {
    logbook.db->ListRecords(100, "", "", &rows);
    benchmark::DoNotOptimize(rows.data());
  }
  if (rows.size() != 100) {
    state.SkipWithError("the list did not give 100 rows");
  }
}
BENCHMARK(BM_ListNewest100)->Unit(benchmark::kMillisecond);

void BM_AddOneContact(benchmark::State& state) {
  TempLogbook logbook;
  auto contacts = MakeContacts(1);
  for (auto _ : state) {
    logbook.db->AddRecord(&contacts[0]);
  }
}
BENCHMARK(BM_AddOneContact)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavlorin

BENCHMARK_MAIN();
