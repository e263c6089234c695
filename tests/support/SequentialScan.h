// The expected result of a scan, computed in the simplest way: one thread, one item after the
// other, whole paths and ordered maps. It shares no code with DiskScanner, which is compared with
// it. Changes the current directory while it runs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "scan/DiskScanner.h"
#include "support/FolderEnumerator.h"

namespace tessaly::SequentialScan {

// Same contract as DiskScanner::scan, with a choice of the order of siblings. Children of equal
// size are sorted by the bytes of their paths.
DiskNode scan(const std::string& root, const DiskScanner::Callbacks& callbacks = {},
              const DiskScanner::Options& options = {}, const Places& places = Places::current(),
              const FolderEnumerator::SiblingOrder& order = {});

// The components from `root` to `path`, after resolving links in both; absent if `path` is not
// below `root`.
std::optional<std::vector<std::string>> relativeParts(const std::string& root,
                                                      const std::string& path);

// Whether `path` is one of `prefixes` or below one.
bool isExcluded(const std::string& path, const std::vector<std::string>& prefixes);

}  // namespace tessaly::SequentialScan
