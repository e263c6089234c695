#include "session/Comparison.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "scan/PathName.h"
#include "scan/ScanDiff.h"
#include "scan/ShownName.h"

namespace tessaly {

namespace {

// The root, its children and their children.
constexpr int comparedLevels = 2;
// Items on both sides are listed if their sizes differ by at least this many bytes.
constexpr std::int64_t smallestDifference = 1048576;

}  // namespace

void Comparison::compare(FieldChanges& changes, const DiskNode& left, const std::string& folder) {
  const std::string rightName(lastPathComponent(folder));
  jobs_.start(
      Dispatch::Queue::userInitiated,
      [left, folder, walk = services_.walk](const Job& job) {
        DiskScanner::Callbacks callbacks;
        // The user cannot cancel this walk; only the end of the session does.
        callbacks.isCancelled = job.cancelTest();
        const DiskNode right = walk(folder, callbacks, {});
        return ScanDiff::compareFolders(
            ScanDiff::flattenRelative(left, left.path(), 0, comparedLevels),
            // Relative to the path of the tree, which differs from `folder` if that is a link.
            ScanDiff::flattenRelative(right, right.path(), 0, comparedLevels), smallestDifference);
      },
      [this, rightName](std::vector<FolderCompareRow> rows) {
        FieldChanges ended;
        comparing_.erase(std::find(comparing_.begin(), comparing_.end(), rightName));
        ended.note(this, &Comparison::comparingChanged);
        ended.set(this, compareRows_, std::move(rows), &Comparison::compareRowsChanged);
        ended.announce();
      });
  comparing_.push_back(rightName);
  changes.note(this, &Comparison::comparingChanged);

  std::string leftName = shownName(left);
  if (compareLeftName_ == leftName && compareRightName_ == rightName) return;
  compareLeftName_ = std::move(leftName);
  compareRightName_ = rightName;
  changes.note(this, &Comparison::compareNamesChanged);
}

}  // namespace tessaly
