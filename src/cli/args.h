// ArgReader: a small reader of command-line words for the tavlorin-cli commands.
//
// Options may come before, between or after the positional words ("--speed 9600", "--speed=9600"
// and flags such as "--cts"). A command asks for what it knows; Finish() then reports any word
// it did not take, so a typing error never passes silently. Not thread-safe; one per command.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tavlorin::cli {

class ArgReader {
 public:
  explicit ArgReader(std::vector<std::string> words);

  // Takes "--name VALUE" or "--name=VALUE"; the last one given wins.
  std::optional<std::string> Option(const std::string& name);
  // Takes "--name"; true when it was present.
  bool Flag(const std::string& name);
  // Takes a number option; sets error() when the value is not a whole number in range.
  std::optional<long long> NumberOption(const std::string& name, long long min, long long max);
  // The words that are not options, in order (call after every Option/Flag).
  std::vector<std::string> Positionals();

  // Empty when everything was understood, else the message for the user.
  std::string Finish();
  const std::string& error() const { return error_; }
  void SetError(std::string message) {
    if (error_.empty()) {
      error_ = std::move(message);
    }
  }

 private:
  std::vector<std::string> words_;
  std::vector<bool> taken_;
  std::string error_;
};

// Parses a whole decimal number in [min, max]; nullopt on anything else.
std::optional<long long> ParseNumber(const std::string& text, long long min, long long max);

}  // namespace tavlorin::cli
