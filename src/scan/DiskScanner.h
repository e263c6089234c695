// Walks one folder and returns it as a pruned tree.
//
// The walk has two phases: every item is folded into an accumulator, then the accumulator is frozen
// into a DiskNode tree. Pruning keeps a tree of millions of files small enough for a treemap:
// directories always have a node (down to depth 12), files below 256 KiB get none and count in the
// size of their folder, and a folder keeps its 80 largest children and one node for the rest.
//
// A file without a node counts twice in the size of its direct parent and once in every folder
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
  // Called for each item that exists and could not be read completely: the root or a folder that
  // cannot be opened or listed, any other item whose attributes cannot be read, inside packages
  // too. Not called for items that the scan leaves out, nor for items that vanished during the
  // scan.
  std::function<void(const SystemError& failure)> unreadable = {};
};

struct Options {
  std::unordered_set<std::string> extraNames;     // further names to skip, exactly
  std::unordered_set<std::string> extraSuffixes;  // endings of the lower-cased name to skip
  std::vector<std::string> extraPrefixes;         // folders to skip, as paths
  bool expandPackages = false;                    // treat packages as ordinary folders
  int threads = 0;  // threads that read the disk, including the caller's; 0 picks a number that
                    // pays off
};

// Walks `root` and blocks until done; not for the main thread. Never fails: an item that cannot be
// read is passed over and reported through `unreadable`; at worst the result is a root of size 0
// without children. After a cancellation the result is the part that was walked.
DiskNode scan(const std::string& root, const Callbacks& callbacks = {}, const Options& options = {},
              const Places& places = Places::current());

}  // namespace tessaly::DiskScanner
