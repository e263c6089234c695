#include "platform/MountSnapshot.h"

#include "platform/linux/MountSnapshotData.h"
#include "platform/linux/ReadMounts.h"

namespace tessaly {

std::shared_ptr<const MountSnapshot> mountsOfNow() {
  Result<std::vector<Mount>> mounts = readMounts("/proc/self/mountinfo");
  return std::make_shared<const MountSnapshot>(mounts ? std::move(mounts).value()
                                                      : std::vector<Mount>());
}

}  // namespace tessaly
