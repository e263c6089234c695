#include "scan/ScanProgress.h"

#include <algorithm>

#include "scan/Percent.h"
#include "scan/ScanLimits.h"

namespace tessaly {

ScanProgress::ScanProgress(const DiskScanner::Callbacks& callbacks, std::size_t topCount)
    : callbacks_(callbacks), topCount_(std::max<std::size_t>(topCount, 1)) {}

double ScanProgress::fraction() const {
  return std::min(static_cast<double>(finished_) / static_cast<double>(topCount_), 1.0);
}

// Reuses one buffer, since a folder of many files causes a line for each.
const std::string& ScanProgress::line(std::string_view text, std::string_view more) {
  line_.assign(Percent::cut(fraction() * 100));
  return line_.append("  ").append(text).append(more);
}

void ScanProgress::finish() {
  ++finished_;
  if (callbacks_.percent) callbacks_.percent(fraction());
}

void ScanProgress::finishTop(std::string_view name) {
  if (name == current_) {
    finishLastTop();
  } else {
    finish();
  }
}

void ScanProgress::reachTop(std::string_view name) {
  if (current_ == name) return;
  finishLastTop();
  if (callbacks_.percent) callbacks_.percent(fraction());
  if (callbacks_.progress) callbacks_.progress(line(name));
  current_ = name;
  currentIsFinished_ = false;
}

void ScanProgress::finishLastTop() {
  if (currentIsFinished_) return;
  currentIsFinished_ = true;
  finish();
}

void ScanProgress::countItem(std::uint64_t items) {
  if (items % scanLimits::progressStride != 0 || !callbacks_.progress) return;
  callbacks_.progress(line("Mapping ", current_));
}

}  // namespace tessaly
