// The content of a snapshot of the mounts on Linux.
#pragma once

#include "platform/MountSnapshot.h"
#include "platform/linux/VisibleMounts.h"

namespace tessaly {

class MountSnapshot {
 public:
  explicit MountSnapshot(std::vector<Mount> mounts) : mounts_(std::move(mounts)) {}

  const VisibleMounts& mounts() const { return mounts_; }

 private:
  VisibleMounts mounts_;
};

}  // namespace tessaly
