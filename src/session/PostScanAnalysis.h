// The analysis of a finished scan: one run of several engines on the utility queue. The session's
// Findings store all lists together at its end.
#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/FileIdentity.h"
#include "reclaim/CloudItem.h"
#include "reclaim/DeadLink.h"
#include "reclaim/DuplicateGroup.h"
#include "reclaim/DuplicateProgress.h"
#include "reclaim/SafeItem.h"
#include "reclaim/ShareGroup.h"
#include "scan/DiskNode.h"

namespace tessaly::PostScanAnalysis {

// What the search for duplicates reports while it runs. Each function is called by one thread at a
// time, which may be any thread, and may be empty.
struct DuplicateReports {
  std::function<void(const DuplicateProgress& progress)> progress = {};
  // A file as it was when it was compared, of those that are listed.
  std::function<void(const std::string& path, const FileIdentity& identity)> compared = {};
};

// The scan to analyse, as values: the session may have changed meanwhile.
struct FinishedScan {
  DiskNode tree;
  std::string root;       // as passed to the scan
  std::string idleScope;  // the folder in which unused files are searched
  DuplicateReports duplicates = {};
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
  // The files in `duplicates` as they were compared, by path.
  std::unordered_map<std::string, FileIdentity> copies = {};
};

// Runs the engines one after the other on the caller's thread, and starts no more once cancelled.
// The compared files are in the result; `scan.duplicates.compared` is not called.
Lists run(const Engines& engines, FinishedScan scan, const IsCancelled& isCancelled);

// The home directory if `root` begins with its text, else `root`.
std::string idleScope(const std::string& root, const std::string& homeDirectory);

}  // namespace tessaly::PostScanAnalysis
