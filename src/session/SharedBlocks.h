// The engine of the analysis that finds files that share blocks of the disk.
#pragma once

#include "platform/FileBlocks.h"
#include "reclaim/ShareGroup.h"
#include "session/PostScanAnalysis.h"

namespace tessaly::SharedBlocks {

// Compares the first 400 files of the scanned tree, and lists groups that save at least 1 MiB.
PostScanAnalysis::Engine<ShareGroup> engine(FileBlocksOf look = fileBlocks);

}  // namespace tessaly::SharedBlocks
