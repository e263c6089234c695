// Data about the latest finished scan besides its tree: growth, counts, lists, and the earlier
// scans of the same root.
//
// Main thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <QObject>

#include "scan/DiskNode.h"
#include "scan/HistoryPoint.h"
#include "scan/PathSizes.h"
#include "scan/ScanDelta.h"
#include "scan/ScanInsights.h"
#include "scan/UnreadableItems.h"
#include "session/FieldChanges.h"
#include "session/ScanStore.h"

namespace tessaly {

class ScanResult : public QObject {
  Q_OBJECT

 public:
  // `directory` is the folder of the sizes and histories.
  explicit ScanResult(ScanStore::Directory directory) : directory_(std::move(directory)) {}

  // The items that have grown since the previous scan of this root, and their paths.
  const std::vector<ScanDelta>& deltas() const { return deltas_; }
  const std::set<std::string>& grewPaths() const { return grewPaths_; }
  const std::optional<ScanStats>& scanStats() const { return scanStats_; }
  // The items that the scan could not read. Like scanStats(), this belongs to the scan: opening a
  // folder or a package adds nothing, although a package is read again then. Empty for a restored
  // tree.
  const UnreadableItems& unreadable() const { return unreadable_; }
  const std::vector<DiskNode>& largest() const { return largest_; }
  const std::vector<DiskNode>& emptyFolders() const { return emptyFolders_; }
  // The scans of this root, oldest first.
  const std::vector<HistoryPoint>& history() const { return history_; }

  // For a finished scan: compares it with the stored sizes of `root`, and stores the new ones.
  void takeGrowth(FieldChanges& changes, const DiskNode& tree, const std::string& root);
  // Counts and lists of the same scan, which took `duration` seconds and enters the history with
  // `date`, in seconds since 1970.
  void takeFigures(FieldChanges& changes, const DiskNode& tree, const std::string& root,
                   double duration, const UnreadableItems& unreadable, double date);
  // The same for a restored tree; stores nothing.
  void restore(FieldChanges& changes, const DiskNode& tree, const std::string& root);

 signals:
  void deltasChanged();  // deltas and grewPaths, which always change together
  void scanStatsChanged();
  void unreadableChanged();
  void largestChanged();
  void emptyFoldersChanged();
  void historyChanged();

 private:
  void compare(FieldChanges& changes, const PathSizes& newer, const std::string& root);
  void count(FieldChanges& changes, const DiskNode& tree, double duration);

  ScanStore::Directory directory_;
  std::vector<ScanDelta> deltas_;
  std::set<std::string> grewPaths_;
  std::optional<ScanStats> scanStats_;
  UnreadableItems unreadable_;
  std::vector<DiskNode> largest_;
  std::vector<DiskNode> emptyFolders_;
  std::vector<HistoryPoint> history_;
};

}  // namespace tessaly
