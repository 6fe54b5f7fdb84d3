#include "spots/spot_list_model.h"

#include <cctype>

#include "spots/spot_frequency.h"
#include "spots/spot_parsers.h"

namespace tavlorin {
namespace {

std::string JoinedBody(const FetchResult& result, const std::vector<std::string>& lines) {
  std::string joined;
  if (result.range) {
    // The same log file seen through another band range is another list.
    joined = std::to_string(result.range->lowKhz) + "-" + std::to_string(result.range->highKhz) +
             "-" + std::to_string(result.range->count) + "|";
  }
  for (size_t i = 0; i < lines.size(); ++i) {
    joined += (i == 0 ? "" : ",") + lines[i];
  }
  return joined;
}

SpotTable Parse(const FetchResult& result, const std::vector<std::string>& lines) {
  const BandRange all{0, 0xFFFFFFFFu, 0xFFFFFFFFu};
  switch (result.source) {
    case SpotSource::kWebPages:
      return ParseWebPage(lines);
    case SpotSource::kCsvFiles:
      return ParseCsvSpots(lines);
    case SpotSource::kLogFile:
      return ParseLogFileSpots(lines, result.range.value_or(all));
    case SpotSource::kTelnet:
      break;
  }
  return ParseClusterLines(lines, result.range.value_or(all));
}

// What makes a spot the same spot from one refresh to the next.
std::string SpotKey(const Spot& spot) {
  return spot.frequency + '\x1f' + spot.callsign + '\x1f' + spot.spotter + '\x1f' + spot.time +
         '\x1f' + spot.comment;
}

}  // namespace

void SpotListModel::LookUpCountry(Spot& spot) const {
  spot.country.clear();
  if (!lookupCountry_ || countries_ == nullptr) {
    return;
  }
  // The tables hold capitals; a cluster may pass on a callsign as its spotter typed it.
  std::string call = spot.callsign;
  for (char& c : call) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  spot.country = countries_->CountryForCallsign(call);
}

SpotListModel::Update SpotListModel::Apply(const FetchResult& result) {
  Update update;
  if (!result.ok) {
    update.kind = Update::Kind::kFailed;
    update.message = result.error;
    return update;
  }
  std::vector<std::string> lines = SplitBodyLines(result.body);
  std::string joined = JoinedBody(result, lines);
  if (keptBody_ == joined && lookupAtLastDraw_ == lookupCountry_) {
    return update;
  }
  keptBody_ = joined;
  lookupAtLastDraw_ = lookupCountry_;
  update.kind = Update::Kind::kRedrawn;

  SpotTable table = Parse(result, lines);
  title_ = table.title;
  update.unreadable = table.unreadable;
  if (rows_.size() != table.spots.size()) {
    rows_.assign(table.spots.size(), Spot{});
    update.resized = true;
  }
  std::set<std::string> keys;
  for (size_t i = 0; i < table.spots.size(); ++i) {
    Spot& spot = table.spots[i];
    LookUpCountry(spot);
    std::string key = SpotKey(spot);
    if (shownKeys_.count(key) == 0) {
      update.newSpots.push_back(spot);
    }
    keys.insert(std::move(key));
    if (update.resized || !(rows_[i] == spot)) {
      rows_[i] = std::move(spot);
      update.changedRows.push_back(i);
    }
  }
  shownKeys_ = std::move(keys);
  return update;
}

std::optional<Frequency> SpotListModel::HertzOfRow(size_t row) const {
  if (row >= rows_.size()) {
    return std::nullopt;
  }
  return SpotHertz(rows_[row].frequency);
}

}  // namespace tavlorin
