#include "radio/demo/demo_defaults.h"

namespace tavlorin {

// Not written yet: the tables are empty.
void LoadDemonstrationDefaults(int, bool, ValueMap& values) { values.Clear(); }

}  // namespace tavlorin
