// The mounted volumes that users know as disks. Safe from any thread.
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

// The current volumes, in the order of df, which `run` starts, or Shell::run when it is empty.
// Blocks until df has ended or timed out; empty when it fails.
std::vector<VolumeMount> list(const Shell::Run& run = {});

// The volumes in the output of "df -k", in its order, each mount point once. The mount point is the
// last word of a row, so one with a blank in its path is not listed. Rows that cannot be read, or
// whose sizes do not fit, are skipped. Pure.
std::vector<VolumeMount> parse(std::string_view text, const Places& places = Places::current());

// A volume to list, with the name shown for it.
struct Listed {
  std::string name;
  MountedVolume mount;

  friend bool operator==(const Listed&, const Listed&) = default;
};

// Those of `mounts` that users know as disks, in their order. A mount whose contents an earlier one
// shows too, such as a bind mount, is left out. Pure, like the functions below.
std::vector<Listed> listed(const std::vector<MountedVolume>& mounts,
                           const Places& places = Places::current());

// The volume with its figures, rounded as df does. Absent for a volume of size 0, which stores
// nothing.
std::optional<VolumeMount> withFigures(const Listed& volume, const VolumeFigures& figures);

// The volume before its figures are known: with size 0.
VolumeMount withoutFigures(const Listed& volume);

// Usage of a volume with these figures. All zero without a size.
DiskUsage usageOf(const VolumeFigures& figures);

}  // namespace tessaly::VolumeEngine
