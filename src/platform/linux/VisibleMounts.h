// Which mounts of a list are visible, and where. A mount is hidden when another one is mounted on
// its point, or on a folder above it. Immutable; safe from any thread.
//
// Answers all questions from indices, in time that hardly depends on the length of the list: some
// machines have thousands of mounts, and a walk asks about each.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/linux/MountTable.h"

namespace tessaly {

// Whether `path` is `folder` or is inside it, by components. Both are absolute; a folder other than
// "/" has no slash at its end.
bool isAtOrBelow(std::string_view path, std::string_view folder);

class VisibleMounts {
 public:
  using Index = std::size_t;  // into all()

  explicit VisibleMounts(std::vector<Mount> mounts);

  const std::vector<Mount>& all() const { return mounts_; }

  // The mount of the item at the absolute `path`; absent if it is not listed.
  std::optional<Index> at(std::string_view path) const;

  // Whether the mount is visible at its own mount point.
  bool isVisible(Index mount) const { return at(mounts_[mount].point) == mount; }

  // The value of all()[mount].isPseudo().
  bool isPseudo(Index mount) const { return pseudo_[mount]; }

  // The mount that contains the point of `mount`, if that is listed.
  std::optional<Index> parent(Index mount) const { return parents_[mount]; }

  // The mounts on the way from the point of `mount` up to "/": itself first, then the mount that
  // contains its point, and so on.
  std::vector<Index> way(Index mount) const;

  // The visible mounts whose points are directly on `mount`.
  std::span<const Index> on(Index mount) const { return children_[mount]; }

  // The mounts whose points are below `folder`, hidden ones too, in the order of the list.
  std::vector<Index> below(std::string_view folder) const;

  // The mounts that show this folder of the device at their point, in the order of the list.
  std::span<const Index> showing(std::string_view device, std::string_view root) const;

 private:
  // Whether another mount with the same parent hides it.
  bool isShadowed(Index mount) const;
  std::span<const Index> neighboursAt(Index mount, std::string_view point) const;
  void findDepths();

  std::vector<Mount> mounts_;
  std::vector<bool> pseudo_;
  std::vector<std::optional<Index>> parents_;
  std::vector<std::size_t> depths_;  // number of mounts on the way; 0 if the way is hidden
  std::vector<std::vector<Index>> children_;

  std::vector<Index> byParent_;  // by parent, point, index
  std::vector<Index> byPoint_;   // by point, depth, index
  std::vector<Index> byRoot_;    // by device, root, index
};

}  // namespace tessaly
