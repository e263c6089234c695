// Reports the progress of a scan. Progress is measured in finished top-level entries of the root,
// so it advances unevenly: a folder with one huge subfolder stays at 0% for most of its time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "scan/DiskScanner.h"

namespace tessaly {

class ScanProgress {
 public:
  // `topCount` is the number of entries directly in the root.
  ScanProgress(const DiskScanner::Callbacks& callbacks, std::size_t topCount);

  // The walk has reached an item of this top-level entry.
  void reachTop(std::string_view name);

  // The top-level entry `name` is finished.
  void finishTop(std::string_view name);

  // Counts one more item; reports the current entry at every scanLimits::progressStride-th one.
  void countItem(std::uint64_t items);

  void finishLastTop();

 private:
  double fraction() const;
  void finish();
  const std::string& line(std::string_view text, std::string_view more = {});

  const DiskScanner::Callbacks& callbacks_;
  std::size_t topCount_;
  // The walk is in pre-order, so it never returns to a top-level entry that it has left; it is
  // enough to count them without their names.
  std::size_t finished_ = 0;
  std::string current_;  // empty at first
  bool currentIsFinished_ = true;
  std::string line_;
};

}  // namespace tessaly
