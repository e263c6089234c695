// What is known of the latest finished scan besides its tree: its growth, counts and lists, and the
// scans of the same root before.
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
  // `directory` is where sizes and histories are kept.
  explicit ScanResult(ScanStore::Directory directory) : directory_(std::move(directory)) {}

  // What has grown since the scan of this root before, and its paths.
  const std::vector<ScanDelta>& deltas() const { return deltas_; }
  const std::set<std::string>& grewPaths() const { return grewPaths_; }
  const std::optional<ScanStats>& scanStats() const { return scanStats_; }
  // What the scan of the tree could not read. Like scanStats() it belongs to the scan: to open a
  // folder or a package adds nothing, though a package is read anew for that. None of a tree that
  // the last run has left.
  const UnreadableItems& unreadable() const { return unreadable_; }
  const std::vector<DiskNode>& largest() const { return largest_; }
  const std::vector<DiskNode>& emptyFolders() const { return emptyFolders_; }
  // The scans of this root, oldest first.
  const std::vector<HistoryPoint>& history() const { return history_; }

  // A finished scan: compares it with the sizes that are kept of `root`, and keeps its own.
  void takeGrowth(FieldChanges& changes, const DiskNode& tree, const std::string& root);
  // Counts and lists of the same scan, which took `duration` seconds, and which enters the history
  // at `date`, in seconds since 1970.
  void takeFigures(FieldChanges& changes, const DiskNode& tree, const std::string& root,
                   double duration, const UnreadableItems& unreadable, double date);
  // The same of a tree that the last run has left; keeps nothing.
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
