#include "session/ScanResult.h"

#include <utility>

#include "scan/ScanDiff.h"

namespace tessaly {

namespace {

// Sizes of a root, its children and their children are kept.
constexpr int keptLevels = 2;
constexpr std::int64_t smallestGrowth = 1048576;
constexpr int largestLimit = 80;
constexpr int emptyFoldersLimit = 200;

}  // namespace

void ScanResult::takeGrowth(FieldChanges& changes, const DiskNode& tree, const std::string& root) {
  const PathSizes sizes = ScanDiff::flatten(tree, 0, keptLevels);
  compare(changes, sizes, root);
  ScanStore::saveSizes(sizes, root, directory_);
}

void ScanResult::takeFigures(FieldChanges& changes, const DiskNode& tree, const std::string& root,
                             double duration, const UnreadableItems& unreadable, double date) {
  count(changes, tree, duration);
  changes.set(this, unreadable_, unreadable, &ScanResult::unreadableChanged);
  ScanStore::appendHistory({.at = date, .bytes = tree.size(), .files = scanStats_->files}, root,
                           directory_);
  changes.set(this, history_, ScanStore::loadHistory(root, directory_),
              &ScanResult::historyChanged);
}

void ScanResult::restore(FieldChanges& changes, const DiskNode& tree, const std::string& root) {
  compare(changes, ScanDiff::flatten(tree, 0, keptLevels), root);
  count(changes, tree, 0);
  changes.set(this, history_, ScanStore::loadHistory(root, directory_),
              &ScanResult::historyChanged);
}

void ScanResult::compare(FieldChanges& changes, const PathSizes& newer, const std::string& root) {
  std::vector<ScanDelta> deltas =
      ScanDiff::compare(ScanStore::loadSizes(root, directory_), newer, smallestGrowth);
  if (deltas == deltas_) return;
  deltas_ = std::move(deltas);
  grewPaths_.clear();
  for (const ScanDelta& delta : deltas_) grewPaths_.insert(delta.path);
  changes.note(this, &ScanResult::deltasChanged);
}

void ScanResult::count(FieldChanges& changes, const DiskNode& tree, double duration) {
  changes.set(this, scanStats_, ScanInsights::stats(tree, duration), &ScanResult::scanStatsChanged);
  changes.set(this, largest_, ScanInsights::largestFiles(tree, largestLimit),
              &ScanResult::largestChanged);
  changes.set(this, emptyFolders_, ScanInsights::emptyFolders(tree, emptyFoldersLimit),
              &ScanResult::emptyFoldersChanged);
}

}  // namespace tessaly
