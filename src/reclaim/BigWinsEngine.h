// Finds what can be won back beside the known locations: folders that tools make again, large files
// that nobody has changed for a month, and snapshots of the disk. Removes nothing.
//
// A tool that fails, is missing or is late counts as one that found nothing. Calls that start a
// tool block up to its time limit. Safe from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/FileAccess.h"
#include "reclaim/LargeOldFile.h"
#include "reclaim/TreeWin.h"
#include "scan/DiskNode.h"
#include "system/Shell.h"

namespace tessaly::BigWinsEngine {

struct ArtifactDir {
  std::string_view category;
  std::string_view note;

  friend bool operator==(const ArtifactDir&, const ArtifactDir&) = default;
};

// The folders that tools make again, by their names, which are matched exactly.
const std::unordered_map<std::string_view, ArtifactDir>& artifactDirs();

// An artifact folder below this size is not listed.
inline constexpr std::int64_t leastArtifactBytes = 1048576;

// The artifact folders below `root`, largest first; among equal sizes in the order of the tree.
// Nothing inside an artifact folder is looked at, whatever its size.
std::vector<TreeWin> findTreeWins(const DiskNode& root);

// The same in the order of the tree, appended to `into`.
void walk(const DiskNode& node, std::vector<TreeWin>& into);

// What largeOld() reads besides the output of the tool.
struct FileFacts {
  const FileAccess& files = FileAccess::ofMachine();
  std::function<double()> now = {};  // seconds since 1970; empty: the clock of this machine
};

// The files below the folder `scope` of at least 50 MiB that were not modified for more than 30
// days, largest first. Only the first 80 files that the search prints are looked at. A file whose
// date cannot be read counts as not modified. `run` replaces Shell::run unless it is empty.
std::vector<LargeOldFile> largeOld(const std::string& scope, const Shell::Run& run = {},
                                   const FileFacts& facts = {});

// Number of snapshots that the system keeps on the disk itself. `run` replaces Shell::run unless it
// is empty.
std::int64_t localSnapshotCount(const Shell::Run& run = {});

// The arguments with which /usr/bin/tmutil is asked to remove snapshots of the start-up volume, of
// up to 20 GiB.
const std::vector<std::string>& thinArguments();

// Asks for that and returns what the tool says, as text without a limit; empty if it fails. `run`
// replaces Shell::run unless it is empty.
std::string thinLocalSnapshots(const Shell::Run& run = {});

}  // namespace tessaly::BigWinsEngine
