#include "session/SharedBlocks.h"

#include <utility>

#include "reclaim/CloneEngine.h"

namespace tessaly::SharedBlocks {

PostScanAnalysis::Engine<ShareGroup> engine(FileBlocksOf look) {
  return [look = std::move(look)](const PostScanAnalysis::FinishedScan& scan,
                                  const PostScanAnalysis::IsCancelled& isCancelled) {
    constexpr std::int64_t mostFiles = 400;
    constexpr std::int64_t leastSaving = 1048576;
    return CloneEngine::groups(CloneEngine::collect(scan.tree, mostFiles, isCancelled, look),
                               leastSaving);
  };
}

}  // namespace tessaly::SharedBlocks
