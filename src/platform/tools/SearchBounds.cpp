#include "platform/tools/SearchBounds.h"

#include <algorithm>

namespace tessaly::tools {

namespace {

// Whether `path` is `folder` or is inside it.
bool isWithin(std::string_view path, std::string_view folder) {
  if (folder == "/") return true;
  if (!path.starts_with(folder)) return false;
  return path.size() == folder.size() || path[folder.size()] == '/';
}

bool isWithinAny(std::string_view path, const std::vector<std::string>& folders) {
  return std::ranges::any_of(folders,
                             [path](const auto& folder) { return isWithin(path, folder); });
}

// 1 for an item directly in `scope`; 0 if `path` is not inside it.
std::uint32_t depthBelow(const std::string& scope, const std::string& path) {
  if (path == scope || !isWithin(path, scope)) return 0;
  const std::size_t start = scope == "/" ? 0 : scope.size();
  return static_cast<std::uint32_t>(
      std::count(path.begin() + static_cast<std::ptrdiff_t>(start), path.end(), '/'));
}

}  // namespace

SearchBounds::SearchBounds(const std::string& scope, const Places& places, const std::string& home,
                           bool leavesOutCritical)
    : isScopeRoot_(scope == "/"),
      scope_(scope),
      skipNames_(places.skipNames),
      skipRootNames_(places.skipRootNames),
      skipPaths_(places.skipPaths) {
  if (!leavesOutCritical) return;
  free_ = places.critical.exempt;
  if (places.critical.freesHome && home != "/") free_.push_back(home);
  if (isWithinAny(scope, free_)) return;
  for (const std::string& prefix : places.critical.prefixes) {
    if (isWithin(prefix, scope) || isWithin(scope, prefix)) critical_.push_back(prefix);
  }
  for (const std::vector<std::string>* const list : {&critical_, &free_}) {
    for (const std::string& path : *list) {
      criticalDepth_ = std::max(criticalDepth_, depthBelow(scope, path));
    }
  }
}

bool SearchBounds::entersScope() const {
  return !isClosed(scope_);
}

bool SearchBounds::needsPath(std::string_view name, std::uint32_t depth) const {
  if (!critical_.empty() && depth <= criticalDepth_) return true;
  return std::ranges::any_of(skipPaths_, [name](std::string_view path) {
    return path.ends_with(name) && path.substr(0, path.size() - name.size()).ends_with('/');
  });
}

bool SearchBounds::isSkippedPath(const std::string& path) const {
  return std::ranges::find(skipPaths_, path) != skipPaths_.end();
}

bool SearchBounds::isCritical(const std::string& path) const {
  return isWithinAny(path, critical_) && !isWithinAny(path, free_);
}

bool SearchBounds::isClosed(const std::string& path) const {
  return isCritical(path) && std::ranges::none_of(free_, [&](const std::string& place) {
           return isWithin(place, path);
         });
}

}  // namespace tessaly::tools
