// Walks one folder and returns it as a pruned tree.
//
// The walk has two phases: every item is folded into an accumulator, then the accumulator is frozen
// into a DiskNode tree. Pruning keeps a tree of millions of files small enough for a treemap:
// directories always have a node (down to depth 12), files below 256 KiB are counted in their
// folder without one of their own, and a folder keeps its 80 largest children and one node for the
// rest.
//
// A file without a node weighs twice in the size of its direct parent and once in every folder
// above. Sizes are bytes on disk. Links are neither followed nor counted.
#pragma once

#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/Places.h"
#include "platform/SystemError.h"
#include "scan/DiskNode.h"

namespace tessaly::DiskScanner {

// Called on the thread that called scan(). They must be cheap.
struct Callbacks {
  std::function<void(const std::string& line)> progress;  // a status line
  std::function<void(double fraction)> percent;  // 0 to 1, in top-level entries of the root
  std::function<bool()> isCancelled;             // polled once per item
  // Told of each item that is there and could not be read, or not to its end: the root or a folder
  // that cannot be opened or listed, any other item whose attributes cannot be had, also inside a
  // package. Not told is what is left out of the scan, and what has vanished meanwhile.
  std::function<void(const SystemError& failure)> unreadable = {};
};

struct Options {
  std::unordered_set<std::string> extraNames;     // further names to skip, exactly
  std::unordered_set<std::string> extraSuffixes;  // endings of the lower-cased name to skip
  std::vector<std::string> extraPrefixes;         // folders to skip, as paths
  bool expandPackages = false;                    // treat packages as ordinary folders
  int threads = 0;  // threads that read the disk, the caller's included; 0: as many as pay off
};

// Walks `root` and blocks until done; not for the main thread. Never fails: what cannot be read is
// passed over and told, and the worst result is a root of size 0 without children. After a
// cancellation the result is the part that was walked.
DiskNode scan(const std::string& root, const Callbacks& callbacks = {}, const Options& options = {},
              const Places& places = Places::current());

}  // namespace tessaly::DiskScanner
