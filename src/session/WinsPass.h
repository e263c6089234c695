// One pass over everything that can be won back, for the page that lists it: the finds of the
// analysis, and each listed item as it was at that time, so that what moves to the Trash later is
// what was listed.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/FileIdentity.h"
#include "reclaim/ReclaimAnalysis.h"
#include "reclaim/Trash.h"
#include "scan/DiskNode.h"

namespace tessaly::WinsPass {

using IsCancelled = std::function<bool()>;

// A listed item, as it was seen.
struct Sighting {
  Trash::Location location = {};
  FileIdentity identity = {};

  friend bool operator==(const Sighting&, const Sighting&) = default;
};

// They must not access the session. All but the last run on a worker and may block, but must return
// within 50 ms once `isCancelled` is true. If a function is empty, it finds nothing.
struct Engines {
  std::function<ReclaimAnalysis::Finds(const std::string& home, const std::optional<DiskNode>& tree,
                                       const IsCancelled& isCancelled)>
      analyse = {};
  // Asks the system to give up snapshots, and returns its answer.
  std::function<std::string(const IsCancelled& isCancelled)> thin = {};
  // Identifies the item at a path; FileIdentity::of if it is empty.
  std::function<Result<FileIdentity>(const std::string& path)> identify = {};
  // Whether a folder has entries; that of this machine if it is empty.
  std::function<bool(const std::string& folder)> hasEntries = {};
  // Whether a known location is the Trash, which can only be emptied.
  std::function<bool(std::string_view id)> isTrashAction = {};
};

// What a pass looks at, as values.
struct Request {
  std::string home;
  std::optional<DiskNode> tree = {};  // the root of the scan
  // Folders without a node below them: the tree has left out small files.
  std::vector<std::string> emptyFolders = {};
};

struct Found {
  ReclaimAnalysis::Finds finds = {};
  std::unordered_map<std::string, Sighting> sightings = {};  // by path, of the items that exist
  // Paths of the tree that no longer exist, since the tree is as old as its scan.
  std::unordered_set<std::string> gone = {};
  // Of the requested empty folders, those that are not empty.
  std::unordered_set<std::string> filled = {};
};

// Runs on the caller's thread, which is a worker.
Found run(const Engines& engines, const Request& request, const IsCancelled& isCancelled);

}  // namespace tessaly::WinsPass
