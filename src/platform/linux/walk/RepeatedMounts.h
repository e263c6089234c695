// The mounts that show only what a walk also sees elsewhere, such as bind mounts.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/VisibleMounts.h"

namespace tessaly::walk {

// Whether the walk's own rules let it enter the folder at the absolute path, which is the walk's
// root or below it, and all folders in between. Mounts do not matter here.
using Reaches = std::function<bool(const std::string& path)>;

// The mounts that a walk of `root` must leave out to see nothing twice. Each shows a folder of a
// file system that the walk also sees through another mount of the same device: that one's root is
// the same folder or one above it, the walk enters it, and no rule or other mount keeps the walk
// from the folder. Of mounts that could replace each other the first in the list stays. The mount
// of `root` itself is never left out, nor a mount that contains another one whose contents are
// visible nowhere else.
//
// Devices are those of the list. stat() may report other ones, as for subvolumes of a btrfs: each
// of these is walked, unless one contains the other.
std::vector<VisibleMounts::Index> repeatedMounts(const VisibleMounts& mounts,
                                                 const std::string& root, const Reaches& reaches);

}  // namespace tessaly::walk
