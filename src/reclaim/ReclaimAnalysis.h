// The whole analysis of what can be won back: the known locations, the folders of the scanned tree
// that tools make again, large unused files, and snapshots. Removes nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileAccess.h"
#include "platform/MountedVolumes.h"
#include "platform/Places.h"
#include "reclaim/BigWinsEngine.h"
#include "reclaim/LargeOldFile.h"
#include "reclaim/ReclaimEngine.h"
#include "reclaim/ReclaimItem.h"
#include "reclaim/TreeWin.h"
#include "scan/DiskNode.h"
#include "system/Shell.h"

namespace tessaly::ReclaimAnalysis {

struct Finds {
  std::vector<ReclaimItem> probes;
  std::vector<TreeWin> treeWins;
  std::vector<LargeOldFile> largeOld;
  std::int64_t snapshots = 0;

  friend bool operator==(const Finds&, const Finds&) = default;
};

struct Services {
  const FileAccess& files;
  MountedVolumes& volumes;
  Shell::Run run = {};  // empty: Shell::run, ended by a cancellation
  std::function<double()> now = {};
  const std::vector<ReclaimPlace>& places = ReclaimEngine::catalog();
};

using IsCancelled = std::function<bool()>;

// Runs the steps one after the other on the caller's thread, which is a worker: tools are waited
// for. `tree` is the root of the current scan. Once `isCancelled` is true, the tool that runs is
// ended and no other is started; what is returned then has no meaning. An empty `isCancelled` is
// never true.
Finds run(const std::string& home, const std::optional<DiskNode>& tree, const Services& services,
          const IsCancelled& isCancelled);

}  // namespace tessaly::ReclaimAnalysis
