// Which items a search leaves out. Immutable; safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/Places.h"

namespace tessaly::tools {

class SearchBounds {
 public:
  // `scope` and `home` are absolute paths without links. With `leavesOutCritical` a search also
  // leaves out what is in the folders that belong to the system.
  SearchBounds(const std::string& scope, const Places& places, const std::string& home,
               bool leavesOutCritical);

  // Whether there can be anything in the scope itself.
  bool entersScope() const;

  // Whether the item is left out with everything in it. `path()` returns its absolute path and is
  // called only if a rule needs it; `depth` is 1 directly in the scope. None of its folders below
  // the scope may be left out.
  template <typename Path>
  bool leavesOut(std::string_view name, std::uint32_t depth, Path&& path) const {
    if (skipNames_.contains(std::string(name))) return true;
    if (isScopeRoot_ && depth == 1 && skipRootNames_.contains(std::string(name))) return true;
    if (!needsPath(name, depth)) return false;
    const std::string whole = path();
    return isSkippedPath(whole) || (depth <= criticalDepth_ && isClosed(whole));
  }

  // Whether the item, which is not left out, belongs to the system. A folder of the system is
  // entered if a free one lies in it.
  bool isCritical(const std::string& path) const;

 private:
  bool needsPath(std::string_view name, std::uint32_t depth) const;
  bool isSkippedPath(const std::string& path) const;
  bool isClosed(const std::string& path) const;

  bool isScopeRoot_;
  std::string scope_;
  std::unordered_set<std::string> skipNames_;
  std::unordered_set<std::string> skipRootNames_;
  std::vector<std::string> skipPaths_;
  std::vector<std::string> critical_;  // those around the scope or in it
  std::vector<std::string> free_;      // not critical, although in one of these
  std::uint32_t criticalDepth_ = 0;    // of the deepest of these below the scope
};

}  // namespace tessaly::tools
