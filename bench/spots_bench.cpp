// The DX cluster window's cost of one refresh: a 250-spot page split, compared, parsed, each
// callsign's country looked up and the rows filled; the same page again (skipped); and the
// parsing of a telnet cluster's spot lines.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <random>
#include <string>

#include "built_in_countries.h"
#include "spots/spot_list_model.h"
#include "spots/spot_parsers.h"

namespace tavlorin {
namespace {

std::string RandomCall(std::mt19937& random) {
  static const char* kPrefixes[] = {"DL", "G", "JA", "VK", "K", "W", "PY", "ZS", "9A", "VP2E",
                                    "3DA", "HB9", "UA", "EA8", "KH6", "ZL", "VU", "A6"};
  std::string call = kPrefixes[random() % std::size(kPrefixes)];
  call += static_cast<char>('0' + random() % 10);
  for (auto n = 1 + random() % 3; n > 0; --n) {
    call += static_cast<char>('A' + random() % 26);
  }
  return call;
}

// A web cluster page of `count` spots in its columns; `seed` varies the spots.
std::string WebPage(int count, unsigned seed) {
  std::mt19937 random(seed);
  std::string page = "<HTML><BODY><H4>Cluster: Last 250 DX spots</H4>\n<PRE>\n";
  for (int i = 0; i < count; ++i) {
    char line[128];
    std::snprintf(line, sizeof line, "%-8s %8.1f %-12s%-30s%04uZ\n", RandomCall(random).c_str(),
                  1800.0 + double(random() % 280000) / 10.0, RandomCall(random).c_str(),
                  "CW up 2 loud", unsigned(random() % 2400));
    page += line;
  }
  return page + "</PRE></BODY></HTML>\n";
}

FetchResult Result(std::string body) {
  FetchResult r;
  r.source = SpotSource::kWebPages;
  r.ok = true;
  r.body = std::move(body);
  return r;
}

void BM_RefreshWith250NewSpots(benchmark::State& state) {
  SpotListModel model(&BuiltInTables());
  const FetchResult pages[2] = {Result(WebPage(250, 1)), Result(WebPage(250, 2))};
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(model.Apply(pages[i++ % 2]));
  }
  state.SetItemsProcessed(int64_t(state.iterations()) * 250);
}
BENCHMARK(BM_RefreshWith250NewSpots);

void BM_RefreshWithAnUnchangedPage(benchmark::State& state) {
  SpotListModel model(&BuiltInTables());
  const FetchResult page = Result(WebPage(250, 1));
  model.Apply(page);
  for (auto _ : state) {
    benchmark::DoNotOptimize(model.Apply(page));
  }
}
BENCHMARK(BM_RefreshWithAnUnchangedPage);

void BM_TelnetSpotLine(benchmark::State& state) {
  const std::string line =
      "DX de W3LPL:     14025.0  VK9XX        CW up 2                       1234Z FN20\a\a";
  for (auto _ : state) {
    benchmark::DoNotOptimize(ParseDxLine(line));
  }
  state.SetItemsProcessed(int64_t(state.iterations()));
}
BENCHMARK(BM_TelnetSpotLine);

}  // namespace
}  // namespace tavlorin

BENCHMARK_MAIN();
