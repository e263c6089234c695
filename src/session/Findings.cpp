#include "session/Findings.h"

#include <utility>

#include "session/NewestValue.h"

namespace tessaly {

Findings::Findings(Dispatch& dispatch, PostScanAnalysis::Engines engines)
    : dispatch_(dispatch), engines_(std::move(engines)), jobs_(dispatch) {}

void Findings::analyse(PostScanAnalysis::FinishedScan scan) {
  using PostScanAnalysis::Lists;
  using Numbered = std::pair<std::uint64_t, Lists>;
  jobs_.start(
      Dispatch::Queue::utility,
      // The worker does not access this object: the receiver runs on the main queue, and a job that
      // is not cancelled has an owner.
      [this, &dispatch = dispatch_, engines = engines_,
       scan = std::move(scan)](const Job& job) mutable {
        NewestValue<DuplicateProgress> newest(dispatch,
                                              [this, job](const DuplicateProgress& progress) {
                                                if (!job.isCancelled())
                                                  takeProgress(job.number(), progress);
                                              });
        scan.duplicates.progress = [&newest](const DuplicateProgress& progress) {
          newest.put(progress);
        };
        return Numbered(job.number(),
                        PostScanAnalysis::run(engines, std::move(scan), job.cancelTest()));
      },
      [this](Numbered found) { take(found.first, std::move(found.second)); });
}

void Findings::take(std::uint64_t analysis, PostScanAnalysis::Lists lists) {
  FieldChanges changes;
  changes.set(this, lists_.duplicates, std::move(lists.duplicates), &Findings::duplicatesChanged);
  changes.set(this, lists_.deadLinks, std::move(lists.deadLinks), &Findings::deadLinksChanged);
  changes.set(this, lists_.cloudItems, std::move(lists.cloudItems), &Findings::cloudItemsChanged);
  changes.set(this, lists_.cloneGroups, std::move(lists.cloneGroups),
              &Findings::cloneGroupsChanged);
  changes.set(this, lists_.safeItems, std::move(lists.safeItems), &Findings::safeItemsChanged);
  lists_.copies = std::move(lists.copies);
  running_.erase(analysis);
  showProgress(changes);
  changes.note(this, &Findings::copiesListed);
  changes.announce();
}

void Findings::takeProgress(std::uint64_t analysis, const DuplicateProgress& progress) {
  running_.insert_or_assign(analysis, progress);
  FieldChanges changes;
  showProgress(changes);
  changes.announce();
}

void Findings::showProgress(FieldChanges& changes) {
  std::optional<DuplicateProgress> latest;
  if (!running_.empty()) latest = running_.rbegin()->second;
  changes.set(this, progress_, latest, &Findings::duplicateProgressChanged);
}

}  // namespace tessaly
