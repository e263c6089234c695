// What is found out about a finished scan beyond its tree: one pass on the utility queue, stage
// after stage, whose results reach the session together at its end.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "scan/DiskNode.h"

namespace tessaly {

class ScanSession;

namespace PostScanAnalysis {

// The scan that a pass is about, as values: the session may have gone on meanwhile.
struct FinishedScan {
  DiskNode tree;
  std::string root;       // as it was given to the scan
  std::string idleScope;  // where files that nobody uses are looked for
};

// Hands what a stage has found to the session. Main thread.
using Publish = std::function<void(ScanSession& session)>;

// Finds something out. Worker thread; blocks as long as it takes. It touches nothing of the
// session; what it returns may be empty where there is nothing to hand over.
using Stage = std::function<Publish(const FinishedScan& scan)>;

// In the order in which they run, and in which they publish.
using Stages = std::vector<Stage>;

// All of the home where the root's path begins with that of the home, as text; else the root.
std::string idleScope(const std::string& root, const std::string& homeDirectory);

}  // namespace PostScanAnalysis
}  // namespace tessaly
