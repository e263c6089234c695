#include "session/Findings.h"

#include <utility>
#include <vector>

namespace tessaly {

Findings::Findings(Dispatch& dispatch, PostScanAnalysis::Stages stages)
    : stages_(std::move(stages)), jobs_(dispatch) {}

void Findings::analyse(PostScanAnalysis::FinishedScan scan) {
  using PostScanAnalysis::Publish;
  jobs_.start(
      Dispatch::Queue::utility,
      [stages = stages_, scan = std::move(scan)](const Job& job) {
        std::vector<Publish> found;
        for (const PostScanAnalysis::Stage& stage : stages) {
          if (job.isCancelled()) break;
          found.push_back(stage(scan, job.cancelTest()));
        }
        return found;
      },
      [this](const std::vector<Publish>& found) {
        FieldChanges changes;
        for (const Publish& publish : found) {
          if (publish) publish(*this, changes);
        }
        changes.announce();
      });
}

}  // namespace tessaly
