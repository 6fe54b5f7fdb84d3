// The spot sources of the DX cluster window, their fixed choice tables, and the request that a
// refresh builds from the current source and choice.
//
// Each source has a table of text rows "name, value"; a row splits at its first ",", the name
// being what the user picks and the value (blanks trimmed) what is fetched: a path on the web
// pages' server (source 0), a path on the CSV files' server (source 1), or a band range
// "low - high - count" in kHz (source 2, the local log file). The telnet cluster (source 3)
// filters its spots by the log file's band ranges.
//
// Pure functions and constant tables; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavlorin {

// The number is what "CDXClusterDyn::m_nCluster" stores.
enum class SpotSource : int { kWebPages = 0, kCsvFiles = 1, kLogFile = 2, kTelnet = 3 };
inline constexpr int kSpotSourceCount = 4;

// "web", "csv", "log", "telnet": the names tavlorin-cli takes.
const char* SpotSourceName(SpotSource source);
std::optional<SpotSource> SpotSourceFromName(std::string_view name);
std::optional<SpotSource> SpotSourceFromNumber(int number);

struct ChoiceRow {
  std::string name;
  std::string value;
};

// Splits at the first ","; the value loses its blanks at both ends.
ChoiceRow SplitChoiceRow(std::string_view row);
// The rows as written; the telnet source shares the log file's band ranges.
std::span<const char* const> ChoiceRowTexts(SpotSource source);
std::vector<std::string> ChoiceNames(SpotSource source);
std::optional<ChoiceRow> FindChoice(SpotSource source, std::string_view name);

// A band range of the log file and telnet sources: spots from lowKhz to highKhz (whole kHz,
// both included), at most `count` of them.
struct BandRange {
  uint32_t lowKhz = 0;
  uint32_t highKhz = 0;
  uint32_t count = 0;
};
// Reads "low<TAB>high<TAB>count"; nullopt when it is not three whole numbers.
std::optional<BandRange> ParseBandRange(std::string_view text);

// Where the fetchable sources live. Hosts are "host", "host:port" or a whole address with its
// scheme ("https://host/base"); an empty host points nowhere.
struct SpotServers {
  std::string webPagesHost;  // web cluster A
  std::string csvFilesHost;  // web cluster B
  std::string logFile;       // the local log file of source 2
  std::string lookupHost;    // the callsign look-up service
};

// What a refresh asks the fetcher for. `target` is the full address (sources 0 and 1),
// "path<TAB>low<TAB>high<TAB>count" (source 2) or "low<TAB>high<TAB>count" (source 3); empty when
// nothing can be fetched, with `error` saying why.
struct SpotRequest {
  SpotSource source = SpotSource::kWebPages;
  std::string target;
  std::string error;
};

SpotRequest MakeSpotRequest(SpotSource source, std::string_view choice,
                            const SpotServers& servers);

// "http://" + host unless the host names its scheme, then "/" + path; blanks trimmed.
std::string ServerAddress(std::string_view host, std::string_view path);
// The "DX Cluster homepage" command: web cluster B's server unless the source is 0.
std::string HomePageAddress(SpotSource source, const SpotServers& servers);
// The look-up service's page of one callsign ("detail/%s").
std::string CallsignLookupAddress(const SpotServers& servers, std::string_view callsign);

}  // namespace tavlorin
