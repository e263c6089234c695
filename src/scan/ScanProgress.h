// Words the progress of a scan. Progress is measured in top-level entries of the root, so it
// advances unevenly: a folder with one huge subfolder stands at 0% for most of its time.
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

  // The walk stands at an item of this top-level entry.
  void reachTop(std::string_view name);

  // The top-level entry `name` is finished with.
  void finishTop(std::string_view name);

  // One more item was enumerated; every so many of them are told of.
  void countItem(std::uint64_t items);

  void finishLastTop();

 private:
  double fraction() const;
  void finish();
  const std::string& line(std::string_view text, std::string_view more = {});

  const DiskScanner::Callbacks& callbacks_;
  std::size_t topCount_;
  // The walk is in pre-order, so a top-level entry that it has left never comes back, and counting
  // them is as good as keeping their names.
  std::size_t finished_ = 0;
  std::string current_;  // empty at first
  bool currentIsFinished_ = true;
  std::string line_;
};

}  // namespace tessaly
