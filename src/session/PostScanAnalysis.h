// What is found out about a finished scan beyond its tree: one pass on the utility queue, stage
// after stage, whose results reach the session's Findings together at its end.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "scan/DiskNode.h"

namespace tessaly {

class FieldChanges;
class Findings;

namespace PostScanAnalysis {

// The scan that a pass is about, as values: the session may have gone on meanwhile.
struct FinishedScan {
  DiskNode tree;
  std::string root;       // as it was given to the scan
  std::string idleScope;  // where files that nobody uses are looked for
};

// Stores what a stage has found. Main thread.
using Publish = std::function<void(Findings& findings, FieldChanges& changes)>;

using IsCancelled = std::function<bool()>;

// Finds something out. Worker thread; blocks as long as it takes, but gives up within 50 ms once
// `isCancelled` says so, which it does for quitting alone. It touches nothing of the session; what
// it returns may be empty where there is nothing to store.
using Stage = std::function<Publish(const FinishedScan& scan, const IsCancelled& isCancelled)>;

// In the order in which they run, and in which they publish.
using Stages = std::vector<Stage>;

// All of the home where the root's path begins with that of the home, as text; else the root.
std::string idleScope(const std::string& root, const std::string& homeDirectory);

}  // namespace PostScanAnalysis
}  // namespace tessaly
