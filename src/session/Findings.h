// The lists that the analysis of a finished scan has made. They are empty until the first analysis
// of this run of the program has ended.
//
// Main thread only.
#pragma once

#include <vector>

#include <QObject>

#include "platform/Dispatch.h"
#include "reclaim/CloudItem.h"
#include "reclaim/DeadLink.h"
#include "reclaim/DuplicateGroup.h"
#include "reclaim/SafeItem.h"
#include "reclaim/ShareGroup.h"
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

 private:
  void take(PostScanAnalysis::Lists lists);

  PostScanAnalysis::Engines engines_;
  PostScanAnalysis::Lists lists_;
  Jobs jobs_;
};

}  // namespace tessaly
