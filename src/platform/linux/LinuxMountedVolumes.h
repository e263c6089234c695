// The mounted file systems in the kernel's list.
#pragma once

#include <utility>

#include "platform/MountedVolumes.h"
#include "platform/linux/trash/TrashPlace.h"

namespace tessaly {

class LinuxMountedVolumes final : public MountedVolumes {
 public:
  explicit LinuxMountedVolumes(TrashPlace place = TrashPlace::current())
      : place_(std::move(place)) {}

  Result<std::vector<MountedVolume>> list() override;
  // Does not check that the volume is still the same on a system that does not identify mounts
  // (before Linux 5.8).
  Result<VolumeFigures> figures(const MountedVolume& volume) override;
  Result<std::vector<CountedTrash>> trashInHome() override;
  Result<std::vector<CountedTrash>> trashOn(const MountedVolume& volume) override;

 private:
  TrashPlace place_;
};

}  // namespace tessaly
