// ProgressBar: the progress of a long logbook exchange drawn on standard error, on a terminal
// only (a pipe or a file gets no bar, so scripts see clean output). Command-line process only;
// the callbacks run on the thread that runs the operation.
#pragma once

#include <string>

#include "logbook/exchange_progress.h"

namespace tavlorin::cli {

class ProgressBar {
 public:
  // `enabled` false draws nothing (e.g. --json); otherwise only when stderr is a terminal.
  explicit ProgressBar(bool enabled);
  ~ProgressBar();  // clears the bar's line
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  const ExchangeProgress& progress() const { return progress_; }

 private:
  void Draw(size_t done, size_t total);

  bool on_;
  bool drawn_ = false;
  int lastPercent_ = -1;
  std::string label_;
  ExchangeProgress progress_;
};

}  // namespace tavlorin::cli
