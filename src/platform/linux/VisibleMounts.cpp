#include "platform/linux/VisibleMounts.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "platform/linux/FoldersUpwards.h"

namespace tessaly {

namespace {

using Index = VisibleMounts::Index;

// The indices of `count` mounts, sorted by `key` and then by index.
template <class Key>
std::vector<Index> sortedBy(std::size_t count, const Key& key) {
  std::vector<Index> all(count);
  std::iota(all.begin(), all.end(), Index{0});
  std::ranges::stable_sort(all, {}, key);
  return all;
}

template <class Value, class Key>
std::span<const Index> equalTo(const std::vector<Index>& sorted, const Value& value,
                               const Key& key) {
  const auto first = std::ranges::lower_bound(sorted, value, {}, key);
  const auto last = std::ranges::upper_bound(first, sorted.end(), value, {}, key);
  return {first, last};
}

}  // namespace

bool isAtOrBelow(std::string_view path, std::string_view folder) {
  if (folder == "/") return path.starts_with('/');
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

VisibleMounts::VisibleMounts(std::vector<Mount> mounts)
    : mounts_(std::move(mounts)),
      pseudo_(mounts_.size()),
      parents_(mounts_.size()),
      depths_(mounts_.size()),
      children_(mounts_.size()) {
  std::unordered_map<std::uint64_t, Index> byId;
  for (Index i = 0; i < mounts_.size(); ++i) byId.emplace(mounts_[i].id, i);
  for (Index i = 0; i < mounts_.size(); ++i) {
    pseudo_[i] = mounts_[i].isPseudo();
    const auto parent = byId.find(mounts_[i].parent);
    if (parent != byId.end() && parent->second != i) parents_[i] = parent->second;
  }
  byParent_ = sortedBy(mounts_.size(), [this](Index i) {
    return std::tuple(mounts_[i].parent, parents_[i], std::string_view(mounts_[i].point));
  });
  findDepths();
  byPoint_ = sortedBy(mounts_.size(), [this](Index i) {
    return std::pair(std::string_view(mounts_[i].point), depths_[i]);
  });
  byRoot_ = sortedBy(mounts_.size(), [this](Index i) {
    return std::pair(std::string_view(mounts_[i].device), std::string_view(mounts_[i].root));
  });
  for (Index i = 0; i < mounts_.size(); ++i) {
    if (depths_[i] > 1) children_[*parents_[i]].push_back(i);
  }
}

// The mounts at `point` with the same parent as `mount`.
std::span<const Index> VisibleMounts::neighboursAt(Index mount, std::string_view point) const {
  return equalTo(
      byParent_, std::tuple(mounts_[mount].parent, parents_[mount], point), [this](Index i) {
        return std::tuple(mounts_[i].parent, parents_[i], std::string_view(mounts_[i].point));
      });
}

bool VisibleMounts::isShadowed(Index mount) const {
  const std::string_view self = mounts_[mount].point;
  bool isHidden = neighboursAt(mount, self).back() > mount;
  // If the parent of a mount is not listed, it is unknown what hides the mounts below it.
  if (isHidden || !parents_[mount]) return isHidden;
  forEachUpwards(self, [&](std::string_view folder) {
    isHidden = folder != self && !neighboursAt(mount, folder).empty();
    return !isHidden;
  });
  return isHidden;
}

// A mount is one deeper than its parent. A damaged list may contain a cycle: the way to all mounts
// that lead into it is hidden. A mount that is met again while its depth is still 0 shows a cycle.
void VisibleMounts::findDepths() {
  std::vector<bool> isKnown(mounts_.size());
  std::vector<Index> way;
  for (Index i = 0; i < mounts_.size(); ++i) {
    std::optional<Index> at = i;
    for (; at && !isKnown[*at]; at = parents_[*at]) {
      isKnown[*at] = true;
      if (isShadowed(*at)) break;
      way.push_back(*at);
    }
    std::size_t depth = at ? depths_[*at] : 0;
    const bool isOpen = !at || depth > 0;
    for (; !way.empty(); way.pop_back()) {
      if (isOpen) depths_[way.back()] = ++depth;
    }
  }
}

std::optional<VisibleMounts::Index> VisibleMounts::at(std::string_view path) const {
  std::optional<Index> deepest;
  forEachUpwards(path, [&](std::string_view folder) {
    const std::span<const Index> there =
        equalTo(byPoint_, folder, [this](Index i) { return std::string_view(mounts_[i].point); });
    if (there.empty() || depths_[there.back()] == 0) return true;
    const auto order = [this](Index i) { return std::pair(depths_[i], i); };
    if (!deepest || order(there.back()) > order(*deepest)) deepest = there.back();
    return true;
  });
  return deepest;
}

std::vector<VisibleMounts::Index> VisibleMounts::way(Index mount) const {
  std::vector<Index> all;
  for (std::optional<Index> at = mount; at && all.size() < mounts_.size(); at = parents_[*at]) {
    all.push_back(*at);
  }
  return all;
}

std::vector<VisibleMounts::Index> VisibleMounts::below(std::string_view folder) const {
  const auto point = [this](Index i) { return std::string_view(mounts_[i].point); };
  std::string prefix(folder);
  if (!prefix.ends_with('/')) prefix += '/';
  std::vector<Index> all;
  // In sorted order, all texts with the same prefix are adjacent.
  for (auto at = std::ranges::lower_bound(byPoint_, std::string_view(prefix), {}, point);
       at != byPoint_.end() && point(*at).starts_with(prefix); ++at) {
    if (point(*at) != prefix) all.push_back(*at);
  }
  std::ranges::sort(all);
  return all;
}

std::span<const VisibleMounts::Index> VisibleMounts::showing(std::string_view device,
                                                             std::string_view root) const {
  return equalTo(byRoot_, std::pair(device, root), [this](Index i) {
    return std::pair(std::string_view(mounts_[i].device), std::string_view(mounts_[i].root));
  });
}

}  // namespace tessaly
