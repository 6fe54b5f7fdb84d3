// The demonstration radios' default value tables, one per family.
#pragma once

#include "radio/value_map.h"

namespace tavlorin {

// Clears `values` and loads the default table of `family` (Elecraft, Kenwood, Ten-Tec or
// PCR-1000); other families get an empty map.
void LoadDemonstrationDefaults(int family, bool pcr1000, ValueMap& values);

}  // namespace tavlorin
