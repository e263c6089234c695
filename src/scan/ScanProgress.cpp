#include "scan/ScanProgress.h"

#include <algorithm>

#include "scan/ScanLimits.h"

namespace tessaly {

ScanProgress::ScanProgress(const DiskScanner::Callbacks& callbacks, std::size_t topCount)
    : callbacks_(callbacks), topCount_(std::max<std::size_t>(topCount, 1)) {}

double ScanProgress::fraction() const {
  return std::clamp(static_cast<double>(finished_.size()) / static_cast<double>(topCount_), 0.0,
                    1.0);
}

std::string ScanProgress::line(std::string_view text) const {
  std::string result = std::to_string(static_cast<int>(fraction() * 100)) + "%  ";
  return result.append(text);
}

void ScanProgress::finishTop(std::string_view name) {
  if (name.empty()) return;
  if (finished_.emplace(name).second && callbacks_.percent) callbacks_.percent(fraction());
}

void ScanProgress::reachTop(std::string_view name) {
  if (current_ == name) return;
  finishLastTop();
  if (callbacks_.percent) callbacks_.percent(fraction());
  if (callbacks_.progress) callbacks_.progress(line(name));
  current_ = name;
}

void ScanProgress::finishLastTop() {
  if (current_) finishTop(*current_);
}

void ScanProgress::countItem(std::uint64_t items) {
  if (items % scanLimits::progressStride != 0 || !callbacks_.progress) return;
  callbacks_.progress(line("Mapping " + current_.value_or(std::string())));
}

}  // namespace tessaly
