// The demonstration radios' default value tables, one per family, and their loading.
//
// Each table is a list of lines "KEY=VALUE"; lines starting with "#" are comments. Loading
// goes in order and a later line with the same key replaces the earlier one: the Kenwood table
// deliberately lists "RM", "IS" and "FW" twice, and the second values are the ones that count.
// The tables are constant; any thread may read them. Loading touches only the map passed in.
#pragma once

#include <span>
#include <string_view>

#include "radio/value_map.h"

namespace tavlorin {

// The lines of the default table of `family` (Elecraft, Kenwood, Ten-Tec, Yaesu ASCII, and the
// PCR-1000 receiver's for General). Empty for other families.
std::span<const std::string_view> DemonstrationTable(int family);

// Clears `values` and loads the default table of `family` (see DemonstrationTable).
void LoadDemonstrationDefaults(int family, ValueMap& values);

}  // namespace tavlorin
