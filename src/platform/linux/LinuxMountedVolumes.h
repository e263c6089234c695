// The mounted file systems in the kernel's list.
#pragma once

#include <utility>

#include "platform/MountedVolumes.h"
#include "platform/linux/trash/TrashConfig.h"

namespace tessaly {

class LinuxMountedVolumes final : public MountedVolumes {
 public:
  explicit LinuxMountedVolumes(TrashConfig config = TrashConfig::current())
      : config_(std::move(config)) {}

  Result<std::vector<MountedVolume>> list() override;
  // Does not check that the volume is still the same on a system that does not identify mounts
  // (before Linux 5.8).
  Result<VolumeFigures> figures(const MountedVolume& volume) override;
  Result<std::vector<CountedTrash>> trashInHome() override;
  Result<std::vector<CountedTrash>> trashOn(const MountedVolume& volume) override;

 private:
  TrashConfig config_;
};

}  // namespace tessaly
