#include "session/DuplicateFiles.h"

#include <utility>

#include "reclaim/DuplicateEngine.h"

namespace tessaly::DuplicateFiles {

PostScanAnalysis::Engine<DuplicateGroup> engine(
    std::function<std::vector<std::string>()> mountPoints, std::int64_t minBytes) {
  return [mountPoints = std::move(mountPoints), minBytes](
             const PostScanAnalysis::FinishedScan& scan,
             const PostScanAnalysis::IsCancelled& isCancelled) {
    return DuplicateEngine::find(scan.tree, minBytes,
                                 {.isCancelled = isCancelled,
                                  .progress = scan.duplicates.progress,
                                  .compared = scan.duplicates.compared,
                                  .mountPoints = mountPoints});
  };
}

}  // namespace tessaly::DuplicateFiles
