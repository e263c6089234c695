#include "platform/linux/VisibleMounts.h"

#include <unordered_map>
#include <utility>

namespace tessaly {

bool isAtOrBelow(std::string_view path, std::string_view folder) {
  if (folder == "/") return path.starts_with('/');
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

VisibleMounts::VisibleMounts(std::vector<Mount> mounts) : mounts_(std::move(mounts)) {
  std::unordered_map<std::uint64_t, Index> byId;
  for (Index i = 0; i < mounts_.size(); ++i) byId.emplace(mounts_[i].id, i);
  parents_.resize(mounts_.size());
  for (Index i = 0; i < mounts_.size(); ++i) {
    const auto parent = byId.find(mounts_[i].parent);
    if (parent != byId.end() && parent->second != i) parents_[i] = parent->second;
  }

  std::vector<bool> isOpen(mounts_.size());
  for (Index i = 0; i < mounts_.size(); ++i) isOpen[i] = !isShadowed(i);
  depths_.resize(mounts_.size());
  for (Index i = 0; i < mounts_.size(); ++i) {
    std::size_t depth = 1;
    std::optional<Index> at = i;
    // A damaged list may lead round in a circle.
    for (; isOpen[*at] && depth <= mounts_.size(); ++depth) {
      at = parents_[*at];
      if (!at) break;
    }
    depths_[i] = at ? 0 : depth;
  }
}

bool VisibleMounts::isShadowed(Index mount) const {
  const Mount& self = mounts_[mount];
  for (Index i = 0; i < mounts_.size(); ++i) {
    const Mount& other = mounts_[i];
    if (i == mount || other.parent != self.parent || parents_[i] != parents_[mount]) continue;
    if (!isAtOrBelow(self.point, other.point)) continue;
    // What is not mounted on a listed mount is not known to hide what lies below it.
    if (other.point == self.point ? i > mount : parents_[mount].has_value()) return true;
  }
  return false;
}

std::optional<VisibleMounts::Index> VisibleMounts::at(std::string_view path) const {
  std::optional<Index> deepest;
  for (Index i = 0; i < mounts_.size(); ++i) {
    if (depths_[i] == 0 || !isAtOrBelow(path, mounts_[i].point)) continue;
    if (!deepest || depths_[i] >= depths_[*deepest]) deepest = i;
  }
  return deepest;
}

std::vector<VisibleMounts::Index> VisibleMounts::way(Index mount) const {
  std::vector<Index> all;
  for (std::optional<Index> at = mount; at && all.size() < mounts_.size(); at = parents_[*at]) {
    all.push_back(*at);
  }
  return all;
}

}  // namespace tessaly
