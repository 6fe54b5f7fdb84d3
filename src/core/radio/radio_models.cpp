#include "radio/radio_models.h"

#include <charconv>
#include <fstream>
#include <sstream>

#include "shell/debug_log.h"
#include "shell/paths.h"

namespace tavlorin {
namespace {

// Body line: Name|Company|Family|Command set|Speeds|Default speed|CI-V address|Frequency bytes
constexpr size_t kFields = 8;

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

bool ParseInt(const std::string& text, int* value) {
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), *value);
  return ec == std::errc() && end == text.data() + text.size();
}

bool ParseLine(std::string_view line, RadioModel* model) {
  std::vector<std::string> f = Split(line, '|');
  if (f.size() != kFields || f[0].empty() || f[1].empty()) {
    return false;
  }
  model->name = f[0];
  model->company = f[1];
  model->commandSet = f[3];
  model->speeds = Split(f[4], ',');
  model->defaultSpeed = f[5];
  model->civAddress = f[6];
  if (!ParseInt(f[2], &model->manufacturer) || model->manufacturer < 1 || model->manufacturer > 8 ||
      f[4].empty()) {
    return false;
  }
  if (!f[7].empty() && (!ParseInt(f[7], &model->civFrequencyBytes) ||
                        model->civFrequencyBytes < 4 || model->civFrequencyBytes > 5)) {
    return false;
  }
  for (const std::string& s : model->speeds) {
    if (s == model->defaultSpeed) {
      return true;
    }
  }
  return false;  // the default speed must be one the list offers
}

std::vector<RadioModel> LoadShipped() {
  const std::filesystem::path path = SharedDataDir() / kRadioDefinitionsFile;
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

const std::vector<RadioModel>& Table() {
  static const std::vector<RadioModel> table = LoadShipped();
  return table;
}

}  // namespace

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
    if (!ParseLine(line, &model)) {
      if (errors != nullptr) {
        errors->push_back("line " + std::to_string(lineNumber) + " is not a radio definition");
      }
      continue;
    }
    models.push_back(std::move(model));
  }
  return models;
}

const RadioModel* FindRadioModel(std::string_view name) {
  for (const RadioModel& m : Table()) {
    if (m.name == name) {
      return &m;
    }
  }
  return nullptr;
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
  if (model.commandSet.empty()) {
    return model.name;
  }
  return model.name + " (" + model.commandSet + " commands)";
}

}  // namespace tavlorin
