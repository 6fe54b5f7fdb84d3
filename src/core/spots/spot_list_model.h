// SpotListModel: the DX cluster window's list and the rules common to every source: a fetch
// result becomes rows, redrawn only when the body or the country switch changed, filled in
// place so that an unchanged list does not flicker, with each spot's country looked up.
//
// Apply reports what changed, so a view redraws just that: whether the rows were emptied and
// sized afresh, which rows got new text, and which spots were not in the list before (the
// command-line tool prints those as they come; a window may mark them).
//
// Thread: the window's thread only. The country tables (optional) must outlive the model and
// must not be rebuilt while Apply runs.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "geo/country_tables.h"
#include "radio/frequency.h"
#include "spots/fetch_result.h"
#include "spots/spot.h"

namespace tavlorin {

class SpotListModel {
 public:
  struct Update {
    enum class Kind { kFailed, kUnchanged, kRedrawn };
    Kind kind = Kind::kUnchanged;
    std::string message;  // kFailed: the fetcher's error text
    bool resized = false;
    std::vector<size_t> changedRows;
    std::vector<Spot> newSpots;
    int unreadable = 0;  // lines of the body the parser could not place
  };

  explicit SpotListModel(const CountryTables* countries = nullptr) : countries_(countries) {}

  void SetCountries(const CountryTables* countries) { countries_ = countries; }
  // Takes effect at the next Apply, which redraws even an unchanged body.
  void SetLookupCountry(bool on) { lookupCountry_ = on; }
  bool lookupCountry() const { return lookupCountry_; }

  Update Apply(const FetchResult& result);
  // Forgets the kept body, so the next one is drawn whatever it holds.
  void ForgetBody() { keptBody_.reset(); }

  const std::vector<Spot>& rows() const { return rows_; }
  const std::string& title() const { return title_; }
  // The hertz to tune to for a row; nullopt for a row out of range or a spot that cannot be
  // tuned (above 4 000 000 kHz, no number).
  std::optional<Frequency> HertzOfRow(size_t row) const;

 private:
  void LookUpCountry(Spot& spot) const;

  const CountryTables* countries_;
  bool lookupCountry_ = true;
  std::optional<bool> lookupAtLastDraw_;
  // The body's lines joined with "," (with the band range first, for the ranged sources).
  std::optional<std::string> keptBody_;
  std::string title_;
  std::vector<Spot> rows_;
  std::set<std::string> shownKeys_;
};

}  // namespace tavlorin
