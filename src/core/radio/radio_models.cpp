#include "radio/radio_models.h"

#include <charconv>
#include <fstream>
#include <sstream>
#include <unordered_map>

#include "link/manufacturer.h"
#include "radio/radio_model_properties.h"
#include "shell/debug_log.h"
#include "shell/paths.h"

namespace tavlorin {
namespace {

// Name|Company|Family|Command set|Speeds|Default speed|CI-V address|Frequency bytes|Properties
// (the ninth field may be left out: files written before it existed still read).
constexpr size_t kFieldsWithoutProperties = 8;
constexpr size_t kFields = 9;
// A model may borrow from a model that borrows in turn; deeper chains are a mistake.
constexpr int kMaxBorrowDepth = 4;

std::vector<std::string> Split(std::string_view line, char separator) {
  std::vector<std::string> parts;
  size_t start = 0;
  while (true) {
    const size_t end = line.find(separator, start);
    parts.emplace_back(line.substr(start, end == std::string_view::npos ? end : end - start));
    if (end == std::string_view::npos) {
      return parts;
    }
    start = end + 1;
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

bool ParseInt(std::string_view text, int* value, int base = 10) {
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), *value, base);
  return !text.empty() && ec == std::errc() && end == text.data() + text.size();
}

// "power=ask,s-meter=SM0,no-s-meter": each item checked against the vocabulary.
std::string ParseProperties(std::string_view field, RadioModel* model) {
  if (Trimmed(field).empty()) {
    return "";
  }
  for (const std::string& item : Split(field, ',')) {
    const size_t equals = item.find('=');
    const std::string_view name = Trimmed(std::string_view(item).substr(0, equals));
    const std::string_view value = equals == std::string::npos
                                       ? std::string_view()
                                       : Trimmed(std::string_view(item).substr(equals + 1));
    if (std::string why = CheckModelProperty(name, value, model->manufacturer); !why.empty()) {
      return why;
    }
    if (!model->properties.emplace(std::string(name), std::string(value)).second) {
      return "property \"" + std::string(name) + "\" is given twice";
    }
  }
  return "";
}

// Empty when the line is a definition; otherwise why it is not.
std::string ParseLine(std::string_view line, RadioModel* model) {
  std::vector<std::string> f = Split(line, '|');
  if (f.size() != kFields && f.size() != kFieldsWithoutProperties) {
    return "expected 8 or 9 fields separated by \"|\", found " + std::to_string(f.size());
  }
  if (f[0].empty() || f[1].empty()) {
    return "the name or the company is empty";
  }
  model->name = f[0];
  model->company = f[1];
  model->commandSet = f[3];
  model->speeds = Split(f[4], ',');
  model->defaultSpeed = f[5];
  model->civAddress = f[6];
  if (!ParseInt(f[2], &model->manufacturer) || !IsFamilyCode(model->manufacturer)) {
    return "\"" + f[2] + "\" is not a family code";
  }
  if (f[4].empty()) {
    return "no speeds are offered";
  }
  int address = 0;
  if (!f[6].empty() && (f[6].size() > 2 || !ParseInt(f[6], &address, 16))) {
    return "the CI-V address \"" + f[6] + "\" is not two hexadecimal digits";
  }
  if (!f[7].empty() && (!ParseInt(f[7], &model->civFrequencyBytes) ||
                        model->civFrequencyBytes < 4 || model->civFrequencyBytes > 6)) {
    return "a CI-V frequency has 4 to 6 bytes, not \"" + f[7] + "\"";
  }
  bool offered = false;
  for (const std::string& s : model->speeds) {
    offered = offered || s == model->defaultSpeed;
  }
  if (!offered) {
    return "the default speed \"" + model->defaultSpeed + "\" is not among the speeds offered";
  }
  return f.size() == kFields ? ParseProperties(f[8], model) : "";
}

const RadioModel* FindIn(const std::vector<RadioModel>& models, std::string_view name) {
  for (const RadioModel& m : models) {
    if (m.name == name) {
      return &m;
    }
  }
  return nullptr;
}

// A model takes every property of the model it borrows from that its own line does not set.
void InheritProperties(std::vector<RadioModel>& models, std::vector<std::string>* errors) {
  for (RadioModel& m : models) {
    const RadioModel* lender = &m;
    for (int depth = 0; depth < kMaxBorrowDepth && !lender->commandSet.empty(); ++depth) {
      lender = FindIn(models, lender->commandSet);
      if (lender == nullptr) {
        if (errors != nullptr) {
          errors->push_back(m.name + " borrows from \"" + m.commandSet + "\", which is not listed");
        }
        break;
      }
      for (const auto& [name, value] : lender->properties) {
        m.properties.emplace(name, value);  // keeps the model's own value
      }
    }
  }
}

std::vector<RadioModel> LoadFrom(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    DebugLog::Write("Error opening %s -", path.c_str());
    return {};
  }
  std::stringstream text;
  text << in.rdbuf();
  std::vector<std::string> errors;
  std::vector<RadioModel> models = ParseRadioDefinitions(text.str(), &errors);
  for (const std::string& e : errors) {
    DebugLog::Write("%s: %s", path.c_str(), e.c_str());
  }
  return models;
}

// The user's copy wins over the shipped file, so a model can be added without a new release.
std::vector<RadioModel> Load() {
  const std::filesystem::path user = DataDir() / kRadioDefinitionsFile;
  std::error_code ec;
  if (std::filesystem::exists(user, ec)) {
    std::vector<RadioModel> models = LoadFrom(user);
    if (!models.empty()) {
      return models;
    }
    DebugLog::Write("%s holds no radio definition: using the shipped file", user.c_str());
  }
  return LoadFrom(SharedDataDir() / kRadioDefinitionsFile);
}

struct Definitions {
  std::vector<RadioModel> models;
  std::unordered_map<std::string_view, const RadioModel*> byName;  // drivers look up per read
};

const Definitions& Loaded() {
  static const Definitions definitions = [] {
    Definitions d;
    d.models = Load();
    for (const RadioModel& m : d.models) {
      d.byName.emplace(m.name, &m);  // the first of two lines with one name wins
    }
    return d;
  }();
  return definitions;
}

const std::vector<RadioModel>& Table() { return Loaded().models; }

}  // namespace

std::string_view RadioModel::Property(std::string_view property, std::string_view fallback) const {
  auto it = properties.find(property);
  return it == properties.end() ? fallback : std::string_view(it->second);
}

int RadioModel::Number(std::string_view property, int fallback) const {
  auto it = properties.find(property);
  if (it == properties.end()) {
    return fallback;
  }
  const ModelPropertySpec* spec = FindModelProperty(property);
  int value = fallback;
  ParseInt(it->second, &value, spec != nullptr && spec->kind == PropertyKind::kHexByte ? 16 : 10);
  return value;
}

std::vector<RadioModel> ParseRadioDefinitions(std::string_view text,
                                              std::vector<std::string>* errors) {
  std::vector<RadioModel> models;
  size_t lineNumber = 0;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find_first_of("\r\n", start);
    if (end == std::string_view::npos) {
      end = text.size();
    }
    std::string_view line = text.substr(start, end - start);
    ++lineNumber;
    // CR LF counts as one line end
    start = end + ((end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n') ? 2 : 1);
    if (line.empty() || line[0] == '#') {
      continue;
    }
    RadioModel model;
    std::string why = ParseLine(line, &model);
    if (why.empty() && FindIn(models, model.name) != nullptr) {
      why = "\"" + model.name + "\" is listed already";
    }
    if (!why.empty()) {
      if (errors != nullptr) {
        errors->push_back("line " + std::to_string(lineNumber) + ": " + why);
      }
      continue;
    }
    models.push_back(std::move(model));
  }
  InheritProperties(models, errors);
  return models;
}

const RadioModel* FindRadioModel(std::string_view name) {
  const auto& byName = Loaded().byName;
  auto it = byName.find(name);
  return it == byName.end() ? nullptr : it->second;
}

const RadioModel& RadioModelOrDefault(std::string_view name) {
  static const RadioModel kUnlisted;
  const RadioModel* model = FindRadioModel(name);
  return model != nullptr ? *model : kUnlisted;
}

std::span<const RadioModel> AllRadioModels() { return Table(); }

std::vector<const RadioModel*> RadioModelsOfCompany(std::string_view company) {
  std::vector<const RadioModel*> out;
  for (const RadioModel& m : Table()) {
    if (m.company == company) {
      out.push_back(&m);
    }
  }
  return out;
}

std::string CommandSetOf(std::string_view name) {
  const RadioModel* model = FindRadioModel(name);
  if (model != nullptr && !model->commandSet.empty()) {
    return model->commandSet;
  }
  return std::string(name);
}

std::string RadioCaption(const RadioModel& model) {
  if (model.commandSet.empty() || model.manufacturer == kDemonstration) {
    return model.name;
  }
  return model.name + " (" + model.commandSet + " commands)";
}

int ResolvedFamily(const RadioModel& model) {
  if (model.manufacturer != kDemonstration) {
    return model.manufacturer;
  }
  const RadioModel* imitated = FindRadioModel(model.commandSet);
  return imitated != nullptr && imitated->manufacturer != kDemonstration ? imitated->manufacturer
                                                                         : kKenwood;
}

}  // namespace tavlorin
