#include "session/UnusedFiles.h"

#include <utility>

#include "reclaim/BigWinsEngine.h"
#include "reclaim/SafeScore.h"

namespace tessaly::UnusedFiles {

PostScanAnalysis::Engine<SafeItem> engine(Shell::Run run) {
  return [run = std::move(run)](
             const PostScanAnalysis::FinishedScan& scan,
             const PostScanAnalysis::IsCancelled& isCancelled) -> std::vector<SafeItem> {
    const std::vector<LargeOldFile> files =
        BigWinsEngine::largeOld(scan.idleScope, run ? run : Shell::cancellable(isCancelled));
    if (isCancelled()) return {};
    return SafeScore::rank(files);
  };
}

}  // namespace tessaly::UnusedFiles
