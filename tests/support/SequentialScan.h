// What a scan must give, worked out in the plainest way: one thread, one item after the other,
// whole path strings and ordered maps. It shares no step with DiskScanner and is what DiskScanner
// is compared with. Changes the current directory while it runs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "scan/DiskScanner.h"
#include "support/FolderEnumerator.h"

namespace tessaly::SequentialScan {

// The same promise as DiskScanner::scan, with the order in which siblings are met as a choice.
// Children of equal size stand in the order of their paths' bytes.
DiskNode scan(const std::string& root, const DiskScanner::Callbacks& callbacks = {},
              const DiskScanner::Options& options = {}, const Places& places = Places::current(),
              const FolderEnumerator::SiblingOrder& order = {});

// The components that lead from `root` to `path`, links in both resolved; absent when `path` does
// not lie under `root`.
std::optional<std::vector<std::string>> relativeParts(const std::string& root,
                                                      const std::string& path);

// Whether `path` is one of `prefixes` or lies below one.
bool isExcluded(const std::string& path, const std::vector<std::string>& prefixes);

}  // namespace tessaly::SequentialScan
