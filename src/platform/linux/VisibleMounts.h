// Which mounts of a list are to be seen, and where. A mount is hidden when another one stands on
// its point, or on a folder on the way there. Immutable; safe from any thread.
#pragma once

#include <cstddef>
#include <optional>
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

  // The mounts that whoever goes from "/" to the point of `mount` comes through: itself first, then
  // the one that its point lies on, and so on.
  std::vector<Index> way(Index mount) const;

 private:
  // Whether it is hidden by another mount on the same one as itself.
  bool isShadowed(Index mount) const;

  std::vector<Mount> mounts_;
  std::vector<std::optional<Index>> parents_;
  std::vector<std::size_t> depths_;  // mounts on the way; 0 where the way there is hidden
};

}  // namespace tessaly
