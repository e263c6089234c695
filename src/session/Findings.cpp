#include "session/Findings.h"

#include <utility>

#include "session/FieldChanges.h"

namespace tessaly {

Findings::Findings(Dispatch& dispatch, PostScanAnalysis::Engines engines)
    : engines_(std::move(engines)), jobs_(dispatch) {}

void Findings::analyse(PostScanAnalysis::FinishedScan scan) {
  using PostScanAnalysis::Lists;
  jobs_.start(
      Dispatch::Queue::utility,
      [engines = engines_, scan = std::move(scan)](const Job& job) {
        return PostScanAnalysis::run(engines, scan, job.cancelTest());
      },
      [this](Lists lists) { take(std::move(lists)); });
}

void Findings::take(PostScanAnalysis::Lists lists) {
  FieldChanges changes;
  changes.set(this, lists_.duplicates, std::move(lists.duplicates), &Findings::duplicatesChanged);
  changes.set(this, lists_.deadLinks, std::move(lists.deadLinks), &Findings::deadLinksChanged);
  changes.set(this, lists_.cloudItems, std::move(lists.cloudItems), &Findings::cloudItemsChanged);
  changes.set(this, lists_.cloneGroups, std::move(lists.cloneGroups),
              &Findings::cloneGroupsChanged);
  changes.set(this, lists_.safeItems, std::move(lists.safeItems), &Findings::safeItemsChanged);
  changes.announce();
}

}  // namespace tessaly
