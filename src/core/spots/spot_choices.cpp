#include "spots/spot_choices.h"

#include <array>
#include <charconv>

namespace tavlorin {
namespace {

// The irregular rows are kept as they stand: "50 HF" and "50 VHF" fetch the 25-spot pages, and
// the 137 kHz and 1.8 MHz pages have no trailing "?".
constexpr std::array<const char*, 29> kWebPageRows = {
    "25 DX, dxs/dx25.html?",          "250 DX, dxs/dx250.html?",
    "50 HF, dxs/hfdx25.html?",        "50 HF CW, dxs/hfcwdx50.html?",
    "50 HF Phone, dxs/hffonedx50.html?", "50 VHF, dxs/vhfdx25.html?",
    "50 VHF CW, dxs/vhfcwdx50.html?", "50 VHF Phone, dxs/vhffonedx50.html?",
    "137 kHz, dxs/137.html",          "1.8 MHz, dxs/1.html",
    "3.5 MHz, dxs/3.html?",           "7 MHz, dxs/7.html?",
    "10 MHz, dxs/10.html?",           "14 MHz, dxs/14.html?",
    "18 MHz, dxs/18.html?",           "21 MHz, dxs/21.html?",
    "24 MHz, dxs/24.html?",           "28 MHz, dxs/28.html?",
    "50 MHz, dxs/50.html?",           "70 MHz, dxs/70.html?",
    "144 MHz, dxs/144.html?",         "430 MHz, dxs/430.html?",
    "1.2 GHz, dxs/1g2.html?",         "10 GHz, dxs/10g.html?",
    "Beacon, dxs/beacon.html?",       "Digital, dxs/digi.html?",
    "IOTA, dxs/iota.html?",           "QRP, dxs/qrp.html?",
    "Satellite, dxs/sat.html?",
};

// Each path is "dxc/top_50_" + the name with its blank as "_" + ".csv".
constexpr std::array<const char*, 24> kCsvFileRows = {
    "ALL, dxc/top_50_ALL.csv",         "HF, dxc/top_50_HF.csv",
    "VHF, dxc/top_50_VHF.csv",         "1.8 MHz, dxc/top_50_1.8_MHz.csv",
    "3.5 MHz, dxc/top_50_3.5_MHz.csv", "7 MHz, dxc/top_50_7_MHz.csv",
    "10 MHz, dxc/top_50_10_MHz.csv",   "14 MHz, dxc/top_50_14_MHz.csv",
    "18 MHz, dxc/top_50_18_MHz.csv",   "21 MHz, dxc/top_50_21_MHz.csv",
    "24 MHz, dxc/top_50_24_MHz.csv",   "28 MHz, dxc/top_50_28_MHz.csv",
    "50 MHz, dxc/top_50_50_MHz.csv",   "70 MHz, dxc/top_50_70_MHz.csv",
    "144 MHz, dxc/top_50_144_MHz.csv", "220 MHz, dxc/top_50_220_MHz.csv",
    "430 MHz, dxc/top_50_430_MHz.csv", "1.2 GHz, dxc/top_50_1.2_GHz.csv",
    "2.3 GHz, dxc/top_50_2.3_GHz.csv", "3.4 GHz, dxc/top_50_3.4_GHz.csv",
    "5.6 GHz, dxc/top_50_5.6_GHz.csv", "10 GHz, dxc/top_50_10_GHz.csv",
    "24 GHz, dxc/top_50_24_GHz.csv",   "47 GHz, dxc/top_50_47_GHz.csv",
};

// low - high - count, in kHz.
constexpr std::array<const char*, 25> kBandRangeRows = {
    "ALL, 0 - 999999 - 250",
    "HF, 0 - 30000 - 250",
    "VHF, 30001 - 999999 - 250",
    "137 kHz, 130 - 140 - 250",
    "1.8 MHz, 1800 - 2000 - 250",
    "3.5 MHz, 3500 - 4000 - 250",
    "7 MHz, 7000 - 7300 - 250",
    "10 MHz, 10100 - 10150 - 250",
    "14 MHz, 14000 - 14500 - 250",
    "18 MHz, 18068 - 18168 - 250",
    "21 MHz, 21000 - 21500 - 250",
    "24 MHz, 24890 - 24990 - 250",
    "28 MHz, 28000 - 29700 - 250",
    "50 MHz, 50000 - 54000 - 250",
    "70 MHz, 70000 - 70500 - 250",
    "144 MHz, 144000 - 148000 - 250",
    "220 MHz, 220000 - 222000 - 250",
    "430 MHz, 420000 - 460000 - 250",
    "1.2 GHz, 1240000 - 1325000 - 250",
    "2.3 GHz, 2310000 - 2450000 - 250",
    "3.4 GHz, 3400000 - 3475000 - 250",
    "5.6 GHz, 5650000 - 5850000 - 250",
    "10 GHz, 10000000 - 10500000 - 250",
    "24 GHz, 24000000 - 24250000 - 250",
    "47 GHz, 47000000 - 47200000 - 250",
};

constexpr const char* kSourceNames[kSpotSourceCount] = {"web", "csv", "log", "telnet"};

std::string_view TrimBlanks(std::string_view text) {
  size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// "0 - 30000 - 250" -> "0<TAB>30000<TAB>250": blanks removed, each "-" a tab.
std::string RangeText(std::string_view value) {
  std::string out;
  for (char c : value) {
    if (c == '-') {
      out += '\t';
    } else if (c != ' ') {
      out += c;
    }
  }
  return out;
}

bool ReadNumber(std::string_view text, uint32_t* value) {
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), *value);
  return ec == std::errc() && end == text.data() + text.size() && !text.empty();
}

}  // namespace

const char* SpotSourceName(SpotSource source) { return kSourceNames[static_cast<int>(source)]; }

std::optional<SpotSource> SpotSourceFromName(std::string_view name) {
  for (int i = 0; i < kSpotSourceCount; ++i) {
    if (name == kSourceNames[i]) {
      return static_cast<SpotSource>(i);
    }
  }
  return std::nullopt;
}

std::optional<SpotSource> SpotSourceFromNumber(int number) {
  if (number < 0 || number >= kSpotSourceCount) {
    return std::nullopt;
  }
  return static_cast<SpotSource>(number);
}

ChoiceRow SplitChoiceRow(std::string_view row) {
  size_t comma = row.find(',');
  if (comma == std::string_view::npos) {
    return {std::string(row), {}};
  }
  return {std::string(row.substr(0, comma)), std::string(TrimBlanks(row.substr(comma + 1)))};
}

std::span<const char* const> ChoiceRowTexts(SpotSource source) {
  switch (source) {
    case SpotSource::kWebPages:
      return kWebPageRows;
    case SpotSource::kCsvFiles:
      return kCsvFileRows;
    case SpotSource::kLogFile:
    case SpotSource::kTelnet:
      break;
  }
  return kBandRangeRows;
}

std::vector<std::string> ChoiceNames(SpotSource source) {
  std::vector<std::string> names;
  for (const char* row : ChoiceRowTexts(source)) {
    names.push_back(SplitChoiceRow(row).name);
  }
  return names;
}

std::optional<ChoiceRow> FindChoice(SpotSource source, std::string_view name) {
  for (const char* row : ChoiceRowTexts(source)) {
    ChoiceRow split = SplitChoiceRow(row);
    if (split.name == name) {
      return split;
    }
  }
  return std::nullopt;
}

std::optional<BandRange> ParseBandRange(std::string_view text) {
  BandRange range;
  uint32_t* fields[] = {&range.lowKhz, &range.highKhz, &range.count};
  for (size_t i = 0; i < 3; ++i) {
    size_t tab = i < 2 ? text.find('\t') : text.size();
    if (tab == std::string_view::npos || !ReadNumber(text.substr(0, tab), fields[i])) {
      return std::nullopt;
    }
    text.remove_prefix(std::min(text.size(), tab + 1));
  }
  return range;
}

std::string ServerAddress(std::string_view host, std::string_view path) {
  std::string address(TrimBlanks(host));
  if (address.find("://") == std::string::npos) {
    address.insert(0, "http://");
  }
  while (!address.empty() && address.back() == '/') {
    address.pop_back();
  }
  return address + "/" + std::string(TrimBlanks(path));
}

SpotRequest MakeSpotRequest(SpotSource source, std::string_view choice,
                            const SpotServers& servers) {
  SpotRequest request;
  request.source = source;
  std::optional<ChoiceRow> row = FindChoice(source, choice);
  if (!row) {
    request.error = "There is no spot list named \"" + std::string(choice) + "\" for the " +
                    SpotSourceName(source) + " source";
    return request;
  }
  switch (source) {
    case SpotSource::kWebPages:
    case SpotSource::kCsvFiles: {
      const std::string& host =
          source == SpotSource::kWebPages ? servers.webPagesHost : servers.csvFilesHost;
      if (TrimBlanks(host).empty()) {
        request.error = std::string("No server is set for the ") + SpotSourceName(source) +
                        " spot lists";
        return request;
      }
      request.target = ServerAddress(host, row->value);
      break;
    }
    case SpotSource::kLogFile:
      if (servers.logFile.empty()) {
        request.error = "No spot log file is set";
        return request;
      }
      request.target = servers.logFile + "\t" + RangeText(row->value);
      break;
    case SpotSource::kTelnet:
      request.target = RangeText(row->value);
      break;
  }
  return request;
}

std::string HomePageAddress(SpotSource source, const SpotServers& servers) {
  const std::string& host =
      source != SpotSource::kWebPages ? servers.csvFilesHost : servers.webPagesHost;
  return TrimBlanks(host).empty() ? std::string() : ServerAddress(host, "");
}

std::string CallsignLookupAddress(const SpotServers& servers, std::string_view callsign) {
  if (TrimBlanks(servers.lookupHost).empty()) {
    return {};
  }
  return ServerAddress(servers.lookupHost, "detail/" + std::string(callsign));
}

}  // namespace tavlorin
