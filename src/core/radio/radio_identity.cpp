#include "radio/radio_identity.h"

#include "link/manufacturer.h"
#include "radio/radio_model_properties.h"

namespace tavlorin {
namespace {

// ICOM radios name themselves by their CI-V address; the others by their "ID;" answer.
bool Names(const RadioModel& model, int family, std::string_view identity) {
  if (family == kIcom) {
    return !model.civAddress.empty() && model.civAddress.size() == identity.size() &&
           std::equal(identity.begin(), identity.end(), model.civAddress.begin(),
                      [](char a, char b) { return std::toupper(a) == std::toupper(b); });
  }
  return model.Property(model_property::kIdentity) == identity;
}

}  // namespace

std::string FoundModel(std::span<const RadioModel> models, const RadioModel& chosen, int family,
                       std::string_view identity) {
  if (identity.empty()) {
    return {};
  }
  if (chosen.manufacturer == family && Names(chosen, family, identity)) {
    return chosen.name;
  }
  for (const RadioModel& m : models) {
    if (m.manufacturer == family && Names(m, family, identity)) {
      return m.name;
    }
  }
  return {};
}

std::string IdentityReport(std::string_view found, std::string_view connectedAs) {
  if (found.empty()) {
    return {};
  }
  return "found " + std::string(found) + ", connected as " + std::string(connectedAs);
}

}  // namespace tavlorin
