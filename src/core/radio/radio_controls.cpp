#include "radio/radio_controls.h"

#include <charconv>
#include <map>
#include <mutex>

#include "link/manufacturer.h"
#include "radio/control_operations.h"
#include "shell/debug_log.h"
#include "shell/definition_file.h"
#include "shell/paths.h"

namespace tavlorin {
namespace {

// Kind|Name|Caption|Group|Models|Read|Set|Options
constexpr size_t kFields = 8;
constexpr std::string_view kOnOffSeparator = " / ";

struct KindWord {
  std::string_view word;
  ControlKind kind;
  ControlPoll poll;  // the request that reads it unless an option says otherwise
};
constexpr KindWord kKinds[] = {
    {"button", ControlKind::kButton, ControlPoll::kButtons},
    {"status", ControlKind::kStatus, ControlPoll::kStatus},
    {"dropdown", ControlKind::kDropdown, ControlPoll::kDropdowns},
    {"slider", ControlKind::kSlider, ControlPoll::kSlider},
    {"meter", ControlKind::kMeter, ControlPoll::kRxMeters},
};

struct FamilyFile {
  Manufacturer family;
  const char* name;  // after "TVR Custom Defs - "
};
constexpr FamilyFile kFiles[] = {
    {kIcom, "ICOM"},      {kElecraft, "Elecraft"}, {kKenwood, "Kenwood"}, {kYaesu, "Yaesu"},
    {kTenTec, "Ten-Tec"}, {kGeneral, "General"},   {kNrd535, "NRD-535"},
    {kYaesuAscii, "Yaesu ASCII"},
};

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (true) {
    const size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) {
      return parts;
    }
    text.remove_prefix(end + 1);
  }
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
    text.remove_prefix(1);
  }
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
    text.remove_suffix(1);
  }
  return text;
}

// A decimal number, or one character in quotes ('F'), which stands for its code.
bool Number(std::string_view text, uint32_t* value) {
  if (text.size() == 3 && text.front() == '\'' && text.back() == '\'') {
    *value = static_cast<unsigned char>(text[1]);
    return true;
  }
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), *value);
  return !text.empty() && ec == std::errc() && end == text.data() + text.size();
}

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string ParseModels(std::string_view field, FamilyControl* out) {
  for (std::string_view item : Split(field, ',')) {
    item = Trimmed(item);
    if (item.empty()) {
      return "an empty model name in " + Quoted(field);
    }
    if (item == "*") {
      continue;
    }
    if (item[0] == '!') {
      out->excluded.emplace_back(item.substr(1));
    } else {
      out->models.emplace_back(item);
    }
  }
  if (!out->models.empty() && field.find('*') != std::string_view::npos) {
    return "\"*\" and model names together: list the models, or \"*\" with \"!\" exclusions";
  }
  return "";
}

std::string ParseOption(std::string_view item, ControlDefinition* c) {
  const size_t equals = item.find('=');
  const std::string_view name = Trimmed(item.substr(0, equals));
  const std::string_view value =
      equals == std::string_view::npos ? std::string_view() : Trimmed(item.substr(equals + 1));
  uint32_t number = 0;
  const bool isNumber = Number(value, &number);
  if (c->kind == ControlKind::kDropdown && equals != std::string_view::npos) {
    if (!isNumber || name.empty()) {
      return "the choice " + Quoted(item) + " is not \"Caption=N\"";
    }
    c->choices.push_back({std::string(name), number});
    return "";
  }
  const bool onOff = c->kind == ControlKind::kButton || c->kind == ControlKind::kStatus;
  const bool ranged = c->kind == ControlKind::kSlider || c->kind == ControlKind::kMeter;
  if (onOff && (name == "on" || name == "off") && isNumber) {
    (name == "on" ? c->onValue : c->offValue) = number;
  } else if (ranged && (name == "min" || name == "max") && isNumber) {
    (name == "min" ? c->min : c->max) = number;
  } else if (c->kind == ControlKind::kButton && name == "group2" && value.empty()) {
    c->poll = ControlPoll::kButtons2;
  } else if (c->kind == ControlKind::kButton && name == "satellite" && value.empty()) {
    c->satellite = true;
  } else if (c->kind == ControlKind::kMeter && name == "tx" && value.empty()) {
    c->poll = ControlPoll::kTxMeters;
  } else if ((name == "start" || name == "slow") && value.empty()) {
    c->poll = name == "start" ? ControlPoll::kStart : ControlPoll::kSlow;
  } else {
    return "the option " + Quoted(item) + " does not fit a control of this kind";
  }
  return "";
}

std::string CheckText(int family, std::string_view text, bool forSet) {
  std::string why;
  if (!text.empty() && !ParseControlText(family, text, forSet, &why)) {
    return (forSet ? "set " : "read ") + Quoted(text) + ": " + why;
  }
  return "";
}

std::string ParseLine(int family, std::string_view line, FamilyControl* out) {
  std::vector<std::string_view> f = Split(line, '|');
  if (f.size() != kFields) {
    return "expected 8 fields separated by \"|\", found " + std::to_string(f.size());
  }
  ControlDefinition& c = out->control;
  const KindWord* kind = nullptr;
  for (const KindWord& k : kKinds) {
    kind = k.word == Trimmed(f[0]) ? &k : kind;
  }
  if (kind == nullptr) {
    return "unknown kind " + Quoted(f[0]) + " (button, status, dropdown, slider or meter)";
  }
  c.kind = kind->kind;
  c.poll = kind->poll;
  c.name = std::string(Trimmed(f[1]));
  c.caption = std::string(Trimmed(f[2]));
  c.group = std::string(Trimmed(f[3]));
  if (c.name.empty()) {
    return "the control has no name";
  }
  if (c.caption.empty()) {
    c.caption = c.name;
  }
  if (std::string why = ParseModels(f[4], out); !why.empty()) {
    return why;
  }
  c.read = std::string(Trimmed(f[5]));
  const std::string_view set = Trimmed(f[6]);
  const size_t slash = set.find(kOnOffSeparator);
  c.set = std::string(Trimmed(set.substr(0, slash)));
  if (slash != std::string_view::npos) {
    if (c.kind != ControlKind::kButton) {
      return "only a button has separate on and off commands";
    }
    c.setOff = std::string(Trimmed(set.substr(slash + kOnOffSeparator.size())));
  }
  for (std::string_view item : Split(f[7], ',')) {
    if (!Trimmed(item).empty()) {
      if (std::string why = ParseOption(item, &c); !why.empty()) {
        return why;
      }
    }
  }
  if (!c.readable() && !c.settable()) {
    return "the control can neither be read nor set";
  }
  if ((c.kind == ControlKind::kMeter || c.kind == ControlKind::kStatus) && !c.readable()) {
    return "a meter or status item needs a read";
  }
  if (c.kind == ControlKind::kDropdown && c.choices.empty()) {
    return "a drop-down needs its choices (\"Caption=N\")";
  }
  if (c.min > c.max) {
    return "min is above max";
  }
  for (const auto& [text, forSet] :
       {std::pair{std::string_view(c.read), false}, std::pair{std::string_view(c.set), true},
        std::pair{std::string_view(c.setOff), true}}) {
    if (std::string why = CheckText(family, text, forSet); !why.empty()) {
      return why;
    }
  }
  return "";
}

std::vector<FamilyControl> LoadFamily(int family) {
  const std::string name = ControlFileName(family);
  if (name.empty()) {
    return {};
  }
  std::filesystem::path path = DataDir() / name;
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) {
    path = SharedDataDir() / name;
  }
  std::vector<std::string> lines;
  Status read = ReadDefinitionFile(path, [&](std::string_view line) { lines.emplace_back(line); });
  if (!read.ok()) {
    DebugLog::Write("Radio controls: %s", read.message().c_str());
    return {};
  }
  std::vector<std::string> errors;
  std::vector<FamilyControl> controls = ParseControlDefinitions(family, lines, &errors);
  for (const std::string& e : errors) {
    DebugLog::Write("%s %s", path.c_str(), e.c_str());
  }
  return controls;
}

// Loaded files by family and the controls of each model asked for, kept until a reload.
struct Cache {
  std::mutex mutex;
  std::map<int, std::vector<FamilyControl>> families;
  std::map<std::pair<int, std::string>, std::shared_ptr<const ModelControls>> models;
};

Cache& TheCache() {
  static Cache cache;
  return cache;
}

}  // namespace

bool ControlDefinition::IsOn(uint32_t value) const {
  if (onValue) {
    return value == *onValue;
  }
  if (offValue) {
    return value != *offValue;
  }
  return value != 0;
}

uint32_t ControlDefinition::ValueFor(bool on) const {
  if (on) {
    return onValue.value_or(1);
  }
  return offValue.value_or(0);
}

const ControlChoice* ControlDefinition::ChoiceOf(uint32_t value) const {
  for (const ControlChoice& choice : choices) {
    if (choice.value == value) {
      return &choice;
    }
  }
  return nullptr;
}

const ControlDefinition* ModelControls::Find(std::string_view name) const {
  for (const ControlDefinition& c : controls_) {
    if (c.name == name) {
      return &c;
    }
  }
  return nullptr;
}

std::vector<const ControlDefinition*> ModelControls::OfKind(ControlKind kind) const {
  std::vector<const ControlDefinition*> out;
  for (const ControlDefinition& c : controls_) {
    if (c.kind == kind) {
      out.push_back(&c);
    }
  }
  return out;
}

std::vector<const ControlDefinition*> ModelControls::PolledBy(ControlPoll poll) const {
  std::vector<const ControlDefinition*> out;
  for (const ControlDefinition& c : controls_) {
    if (c.poll == poll && c.readable()) {
      out.push_back(&c);
    }
  }
  return out;
}

bool FamilyControl::AppliesTo(const RadioModel& model) const {
  auto names = [&](const std::vector<std::string>& list) {
    for (const std::string& name : list) {
      if (name == model.name || (!model.commandSet.empty() && name == model.commandSet)) {
        return true;
      }
    }
    return false;
  };
  return (models.empty() || names(models)) && !names(excluded);
}

std::string ControlFileName(int family) {
  for (const FamilyFile& f : kFiles) {
    if (f.family == family) {
      return std::string("TVR Custom Defs - ") + f.name + ".txt";
    }
  }
  return "";
}

std::vector<FamilyControl> ParseControlDefinitions(int family,
                                                   const std::vector<std::string>& lines,
                                                   std::vector<std::string>* errors) {
  std::vector<FamilyControl> out;
  for (size_t i = 0; i < lines.size(); ++i) {
    std::string_view line = lines[i];
    if (Trimmed(line).empty() || line[0] == '#') {
      continue;
    }
    FamilyControl control;
    if (std::string why = ParseLine(family, line, &control); !why.empty()) {
      if (errors != nullptr) {
        errors->push_back("line " + std::to_string(i + 1) + ": " + why);
      }
      continue;
    }
    out.push_back(std::move(control));
  }
  return out;
}

std::shared_ptr<const ModelControls> ControlsForModel(int family, const RadioModel& model) {
  Cache& cache = TheCache();
  std::lock_guard lock(cache.mutex);
  auto key = std::pair{family, model.name};
  if (auto it = cache.models.find(key); it != cache.models.end()) {
    return it->second;
  }
  auto loaded = cache.families.find(family);
  if (loaded == cache.families.end()) {
    loaded = cache.families.emplace(family, LoadFamily(family)).first;
  }
  std::vector<ControlDefinition> controls;
  for (const FamilyControl& fc : loaded->second) {
    if (!fc.AppliesTo(model)) {
      continue;
    }
    bool taken = false;
    for (const ControlDefinition& c : controls) {
      taken = taken || c.name == fc.control.name;
    }
    if (!taken) {
      controls.push_back(fc.control);
    }
  }
  auto result = std::make_shared<const ModelControls>(std::move(controls));
  cache.models.emplace(std::move(key), result);
  return result;
}

void ReloadControlDefinitions() {
  Cache& cache = TheCache();
  std::lock_guard lock(cache.mutex);
  cache.families.clear();
  cache.models.clear();
}

}  // namespace tavlorin
