// The position of one path below another.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tessaly::DiskScanner {

// The components from `root` to `path`, after resolving links in both. Empty when both are the
// same, absent when `path` is not below `root`.
std::optional<std::vector<std::string>> relativeParts(const std::string& root,
                                                      const std::string& path);

}  // namespace tessaly::DiskScanner
