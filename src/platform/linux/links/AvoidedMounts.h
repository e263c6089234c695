// The mount points at which a path must not be followed: an access at or below them may wait for
// another machine or program. Immutable; safe from any thread.
//
// These are the automount points and the remote file systems that are visible. "/" is not one of
// them: a machine whose own system does not answer runs nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/VisibleMounts.h"

namespace tessaly {

class AvoidedMounts {
 public:
  explicit AvoidedMounts(const VisibleMounts& mounts);

  bool empty() const { return points_.empty(); }

  // Whether the path is such a mount point.
  bool isPoint(std::string_view path) const;

  // Whether the absolute path is at or below one.
  bool contains(std::string_view path) const;

 private:
  std::vector<std::string> points_;  // sorted
};

}  // namespace tessaly
