// Status: the outcome of a core operation that is not a radio operation.
//
// Core code never throws across a module or thread boundary; it returns a Status whose message
// is a sentence a user can act on ("Error opening database: file is not a database"). Cheap to
// copy; an ok Status carries no text. Any thread may create and read one.
#pragma once

#include <string>
#include <utility>

namespace tavlorin {

class Status {
 public:
  Status() = default;
  static Status Ok() { return Status(); }
  static Status Error(std::string message) { return Status(std::move(message)); }

  bool ok() const { return !failed_; }
  explicit operator bool() const { return ok(); }
  const std::string& message() const { return message_; }

 private:
  explicit Status(std::string message) : failed_(true), message_(std::move(message)) {}

  bool failed_ = false;
  std::string message_;
};

}  // namespace tavlorin
