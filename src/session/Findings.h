// The lists that the analysis of a finished scan has made. They are empty until the first analysis
// of this run of the program has ended.
//
// Main thread only.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <QObject>

#include "platform/Dispatch.h"
#include "platform/FileIdentity.h"
#include "reclaim/CloudItem.h"
#include "reclaim/DeadLink.h"
#include "reclaim/DuplicateGroup.h"
#include "reclaim/DuplicateProgress.h"
#include "reclaim/SafeItem.h"
#include "reclaim/ShareGroup.h"
#include "session/FieldChanges.h"
#include "session/Jobs.h"
#include "session/PostScanAnalysis.h"

namespace tessaly {

class Findings : public QObject {
  Q_OBJECT

 public:
  // `dispatch` must outlive the findings.
  Findings(Dispatch& dispatch, PostScanAnalysis::Engines engines);

  const std::vector<DuplicateGroup>& duplicates() const { return lists_.duplicates; }
  const std::vector<DeadLink>& deadLinks() const { return lists_.deadLinks; }
  const std::vector<CloudItem>& cloudItems() const { return lists_.cloudItems; }
  const std::vector<ShareGroup>& cloneGroups() const { return lists_.cloneGroups; }
  const std::vector<SafeItem>& safeItems() const { return lists_.safeItems; }

  // How far the search for duplicates is, of the analysis that was started last of those that run.
  // Empty if none runs, or none has a file to read.
  const std::optional<DuplicateProgress>& duplicateProgress() const { return progress_; }
  // The files in duplicates(), by path, as they were when they were compared.
  const std::unordered_map<std::string, FileIdentity>& copies() const { return lists_.copies; }

  // Runs all engines for `scan`, then replaces all lists at once. A newer scan does not cancel the
  // analysis: the lists of the one that ends last are kept.
  void analyse(PostScanAnalysis::FinishedScan scan);

  // Cancels all analyses without waiting for them.
  void end() { jobs_.end(); }

 signals:
  void duplicatesChanged();
  void deadLinksChanged();
  void cloudItemsChanged();
  void cloneGroupsChanged();
  void safeItemsChanged();
  void duplicateProgressChanged();
  // By each analysis that ends, also if it has found the same again: the files may have changed.
  void copiesListed();

 private:
  // The number of an analysis is that of its job: one that was started later has a higher one.
  void take(std::uint64_t analysis, PostScanAnalysis::Lists lists);
  void takeProgress(std::uint64_t analysis, const DuplicateProgress& progress);
  void showProgress(FieldChanges& changes);

  Dispatch& dispatch_;
  PostScanAnalysis::Engines engines_;
  PostScanAnalysis::Lists lists_;
  std::map<std::uint64_t, DuplicateProgress> running_;  // by the number of the analysis
  std::optional<DuplicateProgress> progress_;
  Jobs jobs_;
};

}  // namespace tessaly
