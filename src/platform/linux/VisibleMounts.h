// Which mounts of a list are to be seen, and where. A mount is hidden when another one stands on
// its point, or on a folder on the way there. Immutable; safe from any thread.
//
// All questions are answered from indices, in time that hardly grows with the list: some machines
// have thousands of mounts, and a walk asks about each.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/linux/MountTable.h"

namespace tessaly {

// Whether `path` is `folder` or lies in it, by components. Both absolute; a folder other than "/"
// without a slash behind it.
bool isAtOrBelow(std::string_view path, std::string_view folder);

class VisibleMounts {
 public:
  using Index = std::size_t;  // into all()

  explicit VisibleMounts(std::vector<Mount> mounts);

  const std::vector<Mount>& all() const { return mounts_; }

  // The mount that what stands at the absolute `path` belongs to; absent when none is listed.
  std::optional<Index> at(std::string_view path) const;

  // Whether the top of the mount is what stands at its point.
  bool isVisible(Index mount) const { return at(mounts_[mount].point) == mount; }

  // What all()[mount].isPseudo() says.
  bool isPseudo(Index mount) const { return pseudo_[mount]; }

  // The mount that the point of `mount` lies on, where that is listed.
  std::optional<Index> parent(Index mount) const { return parents_[mount]; }

  // The mounts that whoever goes from "/" to the point of `mount` comes through: itself first, then
  // the one that its point lies on, and so on.
  std::vector<Index> way(Index mount) const;

  // The mounts whose points lie on `mount` and to which the way is not hidden.
  std::span<const Index> on(Index mount) const { return children_[mount]; }

  // The mounts whose points lie below `folder`, hidden ones too, in the order of the list.
  std::vector<Index> below(std::string_view folder) const;

  // The mounts that show this folder of the device at their point, in the order of the list.
  std::span<const Index> showing(std::string_view device, std::string_view root) const;

 private:
  // Whether it is hidden by another mount on the same one as itself.
  bool isShadowed(Index mount) const;
  std::span<const Index> neighboursAt(Index mount, std::string_view point) const;
  void findDepths();

  std::vector<Mount> mounts_;
  std::vector<bool> pseudo_;
  std::vector<std::optional<Index>> parents_;
  std::vector<std::size_t> depths_;  // mounts on the way; 0 where the way there is hidden
  std::vector<std::vector<Index>> children_;

  std::vector<Index> byParent_;  // by what they lie on, point, index
  std::vector<Index> byPoint_;   // by point, depth, index
  std::vector<Index> byRoot_;    // by device, root, index
};

}  // namespace tessaly
