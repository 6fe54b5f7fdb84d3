#include "args.h"

#include <charconv>

namespace tavlorin::cli {

ArgReader::ArgReader(std::vector<std::string> words)
    : words_(std::move(words)), taken_(words_.size(), false) {}

std::optional<std::string> ArgReader::Option(const std::string& name) {
  std::optional<std::string> value;
  const std::string withEquals = name + "=";
  for (size_t i = 0; i < words_.size(); ++i) {
    if (taken_[i]) {
      continue;
    }
    if (words_[i] == name) {
      taken_[i] = true;
      if (i + 1 >= words_.size()) {
        SetError(name + " needs a value");
        return value;
      }
      taken_[i + 1] = true;
      value = words_[i + 1];
      ++i;
    } else if (words_[i].rfind(withEquals, 0) == 0) {
      taken_[i] = true;
      value = words_[i].substr(withEquals.size());
    }
  }
  return value;
}

bool ArgReader::Flag(const std::string& name) {
  bool found = false;
  for (size_t i = 0; i < words_.size(); ++i) {
    if (!taken_[i] && words_[i] == name) {
      taken_[i] = true;
      found = true;
    }
  }
  return found;
}

std::optional<long long> ArgReader::NumberOption(const std::string& name, long long min,
                                                 long long max) {
  auto text = Option(name);
  if (!text) {
    return std::nullopt;
  }
  auto number = ParseNumber(*text, min, max);
  if (!number) {
    SetError(name + " takes a whole number from " + std::to_string(min) + " to " +
             std::to_string(max) + ", not \"" + *text + "\"");
  }
  return number;
}

std::vector<std::string> ArgReader::Positionals() {
  std::vector<std::string> out;
  for (size_t i = 0; i < words_.size(); ++i) {
    if (taken_[i]) {
      continue;
    }
    const std::string& w = words_[i];
    if (w.size() > 1 && w[0] == '-' && !(w[1] >= '0' && w[1] <= '9')) {
      continue;  // an unknown option: left for Finish() to report
    }
    taken_[i] = true;
    out.push_back(w);
  }
  return out;
}

std::string ArgReader::Finish() {
  if (!error_.empty()) {
    return error_;
  }
  for (size_t i = 0; i < words_.size(); ++i) {
    if (!taken_[i]) {
      return "unknown option or extra word \"" + words_[i] + "\" (see --help)";
    }
  }
  return {};
}

std::optional<long long> ParseNumber(const std::string& text, long long min, long long max) {
  long long value = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size() || value < min || value > max) {
    return std::nullopt;
  }
  return value;
}

}  // namespace tavlorin::cli
