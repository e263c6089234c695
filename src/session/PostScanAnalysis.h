// The analysis of a finished scan: one run of several engines on the utility queue. The session's
// Findings store all lists together at its end.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "reclaim/CloudItem.h"
#include "reclaim/DeadLink.h"
#include "reclaim/DuplicateGroup.h"
#include "reclaim/SafeItem.h"
#include "reclaim/ShareGroup.h"
#include "scan/DiskNode.h"

namespace tessaly::PostScanAnalysis {

// The scan to analyse, as values: the session may have changed meanwhile.
struct FinishedScan {
  DiskNode tree;
  std::string root;       // as passed to the scan
  std::string idleScope;  // the folder in which unused files are searched
};

using IsCancelled = std::function<bool()>;

// Makes one list. Runs on a worker thread and may block, but must return within 50 ms once
// `isCancelled` is true, which only quitting causes. Must not access the session.
template <class Row>
using Engine =
    std::function<std::vector<Row>(const FinishedScan& scan, const IsCancelled& isCancelled)>;

// In the order in which they run. Where an engine is missing, its list is empty.
struct Engines {
  Engine<DuplicateGroup> duplicates = {};
  Engine<DeadLink> deadLinks = {};
  Engine<CloudItem> cloudItems = {};
  Engine<ShareGroup> cloneGroups = {};
  Engine<SafeItem> safeItems = {};
};

struct Lists {
  std::vector<DuplicateGroup> duplicates;
  std::vector<DeadLink> deadLinks;
  std::vector<CloudItem> cloudItems;
  std::vector<ShareGroup> cloneGroups;
  std::vector<SafeItem> safeItems;
};

// Runs the engines one after the other on the caller's thread, and starts no more once cancelled.
Lists run(const Engines& engines, const FinishedScan& scan, const IsCancelled& isCancelled);

// The home directory if `root` begins with its text, else `root`.
std::string idleScope(const std::string& root, const std::string& homeDirectory);

}  // namespace tessaly::PostScanAnalysis
