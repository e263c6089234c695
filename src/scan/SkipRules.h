// Decides which items a scan leaves out. Immutable; safe from any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Places.h"
#include "scan/DiskScanner.h"
#include "scan/NameSet.h"
#include "scan/ProInsights.h"

namespace tessaly {

class SkipRules {
 public:
  // `root` must be resolved.
  SkipRules(const std::string& root, const DiskScanner::Options& options, const Places& places);

  // Whether the item `name` is left out. None of its ancestors below the root may be left out.
  // `path()` returns its absolute path and is called only if a rule needs it.
  template <typename Path>
  bool skips(std::string_view name, Path&& path) const {
    if (everything_ || names_.contains(name)) return true;
    if (!suffixes_.empty() && hasSkippedSuffix(name)) return true;
    if (!pathEnds_.contains(name)) return false;
    return skipsPath(path());
  }

  // Whether a scan of the whole disk leaves out this entry of "/".
  bool skipsAtRoot(std::string_view name, std::uint32_t depth) const {
    return rootIsSlash_ && depth == 1 && rootNames_.contains(name);
  }

 private:
  bool hasSkippedSuffix(std::string_view name) const;
  bool skipsPath(const std::string& path) const;

  bool rootIsSlash_;
  bool everything_;
  NameSet names_;
  NameSet rootNames_;
  NameSet pathEnds_;  // last components of prefixes_ and paths_
  std::vector<std::string> suffixes_;
  std::vector<std::string> prefixes_;
  std::vector<std::string> paths_;
};

}  // namespace tessaly
