// Where one path lies below another.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tessaly::DiskScanner {

// The components that lead from `root` to `path`, after resolving links in both. Empty when they
// are the same, absent when `path` does not lie below `root`.
std::optional<std::vector<std::string>> relativeParts(const std::string& root,
                                                      const std::string& path);

}  // namespace tessaly::DiskScanner
