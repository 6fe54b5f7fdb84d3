#include "progress_bar.h"

#include <unistd.h>

#include <cstdio>

namespace tavlorin::cli {

ProgressBar::ProgressBar(bool enabled) : on_(enabled && isatty(STDERR_FILENO) != 0) {
  if (!on_) {
    return;
  }
  progress_.status = [this](const std::string& text) {
    label_ = text;
    lastPercent_ = -1;
  };
  progress_.step = [this](size_t done, size_t total) { Draw(done, total); };
}

ProgressBar::~ProgressBar() {
  if (drawn_) {
    std::fprintf(stderr, "\r%78s\r", "");
    std::fflush(stderr);
  }
}

void ProgressBar::Draw(size_t done, size_t total) {
  const int percent = total == 0 ? 0 : static_cast<int>(done * 100 / total);
  if (percent == lastPercent_) {
    return;
  }
  lastPercent_ = percent;
  constexpr int kWidth = 30;
  std::string bar(kWidth, '.');
  bar.replace(0, static_cast<size_t>(percent * kWidth / 100), static_cast<size_t>(percent * kWidth / 100), '#');
  std::fprintf(stderr, "\r%-30.30s [%s] %3d%%", label_.c_str(), bar.c_str(), percent);
  std::fflush(stderr);
  drawn_ = true;
}

}  // namespace tavlorin::cli
