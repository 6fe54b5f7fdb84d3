// Country look-ups per second over 100,000 realistic callsigns, with the built-in list.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "built_in_countries.h"
#include "geo/countries_file.h"
#include "geo/country_tables.h"
#include "geo/locator.h"
#include "shell/definition_file.h"
#include "shell/paths.h"

namespace tavlorin {
namespace {

// Prefix, digit, suffix letters; some portable forms, as a contest log holds them.
std::vector<std::string> RealisticCallsigns(size_t count) {
  static const char* kPrefixes[] = {"DL",   "DK",  "G",  "M",   "F",  "I",  "EA", "OH",  "SM",
                                    "UA",   "R",   "JA", "VK",  "ZL", "K",  "W",  "N",   "VE",
                                    "PY",   "LU",  "ZS", "9A",  "S5", "OK", "SP", "HA",  "YO",
                                    "LZ",   "4X",  "A6", "VU",  "BY", "HL", "YB", "KH6", "KL7",
                                    "VP2E", "3DA", "FO", "HB9", "OE", "ON", "PA", "LA",  "OZ"};
  std::mt19937 random(42);
  std::vector<std::string> out;
  out.reserve(count);
  for (size_t i = 0; i < count; ++i) {
    std::string call = kPrefixes[random() % std::size(kPrefixes)];
    call += static_cast<char>('0' + random() % 10);
    for (auto n = 1 + random() % 3; n > 0; --n) {
      call += static_cast<char>('A' + random() % 26);
    }
    if (random() % 20 == 0) {
      call += "/P";
    }
    out.push_back(call);
  }
  return out;
}

void BM_CountryForCallsign(benchmark::State& state) {
  const CountryTables& tables = BuiltInTables();
  const auto calls = RealisticCallsigns(100000);
  size_t found = 0;
  for (auto _ : state) {
    for (const std::string& call : calls) {
      std::string dxcc;
      found += tables.CountryForCallsign(call, &dxcc).empty() ? 0 : 1;
    }
  }
  benchmark::DoNotOptimize(found);
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(calls.size()));
}
BENCHMARK(BM_CountryForCallsign)->Unit(benchmark::kMillisecond);

void BM_BuildCountryTables(benchmark::State& state) {
  std::vector<std::string> lines;
  ReadDefinitionBody(SharedDataDir() / "TVR Countries.txt", &lines);
  for (auto _ : state) {
    CountryTables t;
    t.Build(ParseCountryLines(lines).rows);
    benchmark::DoNotOptimize(t.activeSize());
  }
}
BENCHMARK(BM_BuildCountryTables)->Unit(benchmark::kMillisecond);

void BM_LocatorBearing(benchmark::State& state) {
  double sum = 0;
  for (auto _ : state) {
    GeoPosition a = LocatorToPosition("JO62QM"), b = LocatorToPosition("FN31PR");
    sum += BearingAndDistance(a.longitude, a.latitude, b.longitude, b.latitude).kilometres;
  }
  benchmark::DoNotOptimize(sum);
}
BENCHMARK(BM_LocatorBearing);

}  // namespace
}  // namespace tavlorin

BENCHMARK_MAIN();
