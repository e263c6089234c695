// The mounted volumes that a person knows. Safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/MountedVolumes.h"
#include "platform/Places.h"
#include "system/DiskUsage.h"
#include "system/Shell.h"
#include "system/VolumeMount.h"

namespace tessaly::VolumeEngine {

// Mount points that are never listed.
inline const std::unordered_set<std::string>& skipMounts(const Places& places = Places::current()) {
  return places.volumes.skipMounts;
}

// The volumes of now, in the order of df, which `run`, or Shell::run when it is empty, starts.
// Blocks until that has ended or given up; empty when it fails.
std::vector<VolumeMount> list(const Shell::Run& run = {});

// The volumes of what "df -k" prints, in its order and each mount point once. The mount point is
// the last word of a row, so that one with a blank in its path is not listed. Rows that cannot be
// read are passed over, as are sizes that do not fit. Pure.
std::vector<VolumeMount> parse(std::string_view text, const Places& places = Places::current());

// A volume to list, and the name to show it by.
struct Listed {
  std::string name;
  MountedVolume mount;

  friend bool operator==(const Listed&, const Listed&) = default;
};

// Those of `mounts` that a person knows, in their order. One that shows only what one of those
// before it shows too, as a bind mount does, is left out. Pure, as are those below.
std::vector<Listed> listed(const std::vector<MountedVolume>& mounts,
                           const Places& places = Places::current());

// The volume with what it tells of itself, rounded as df does. Absent without a size: nothing takes
// room there.
std::optional<VolumeMount> withFigures(const Listed& volume, const VolumeFigures& figures);

// The volume while it tells nothing: with a size of 0.
VolumeMount withoutFigures(const Listed& volume);

// How full a volume of these figures is. All zero without a size.
DiskUsage usageOf(const VolumeFigures& figures);

}  // namespace tessaly::VolumeEngine
