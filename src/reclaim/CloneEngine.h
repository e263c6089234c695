// Finds files that share the blocks of others on their disk, and so look like copies and cost
// nothing: names of one file (hard links), and files whose blocks the file system shares (clones).
//
// Safe from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/FileBlocks.h"
#include "reclaim/ShareGroup.h"
#include "scan/DiskNode.h"

namespace tessaly::CloneEngine {

using IsCancelled = std::function<bool()>;

// Examines the first `limit` nodes at or below `from` that are no folders, in the order of the
// tree, depth first; what cannot be examined is left out. None for a limit below 1.
//
// An inode number is unique only on its device, so records get it unchanged only on the device of
// the first record. On any other device it is replaced by a number that is mixed from both, and
// that no other file of the result has.
//
// Blocks; returns nothing within 50 ms once `isCancelled` is true.
std::vector<ShareRecord> collect(
    const DiskNode& from, std::int64_t limit, const IsCancelled& isCancelled = [] { return false; },
    const FileBlocksOf& look = fileBlocks);

// The groups of these records that save at least `minSavings` bytes, largest saving first; groups
// with the same saving in the order of their first records, clones before hard links. A group of
// clones has the records with one clone id. A group of hard links has those of one inode that
// are in no group of clones. Ends the program if a sum overflows.
std::vector<ShareGroup> groups(const std::vector<ShareRecord>& from, std::int64_t minSavings);

}  // namespace tessaly::CloneEngine
