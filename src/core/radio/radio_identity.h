// What a radio's identity names: the model of a family whose definition carries that identity
// (Kenwood and Yaesu ASCII: the "identity" property, the answer to "ID;"; ICOM: the default
// CI-V address the radio reports to 19 00), and the line the connection result shows.
//
// Pure over the radio definitions (immutable once read); any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "radio/radio_models.h"

namespace tavlorin {

// The name of the model `identity` names among `models` of `family`: `chosen` itself when its
// definition (or the model it borrows from) carries that identity, else the first model of the
// family that does; empty when none does. Demonstration models are never found.
std::string FoundModel(std::span<const RadioModel> models, const RadioModel& chosen, int family,
                       std::string_view identity);

// "found FT-991A, connected as FT-991A"; empty when `found` is.
std::string IdentityReport(std::string_view found, std::string_view connectedAs);

}  // namespace tavlorin
