// The mounts that show a walk only what it sees at another place as well, as bind mounts do.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/VisibleMounts.h"

namespace tessaly::walk {

// Whether the walk's own rules let it enter the folder at the absolute path, which is the walk's
// root or lies below it, and all folders between the two. Mounts are not its affair.
using Reaches = std::function<bool(const std::string& path)>;

// What a walk of `root` has to leave out, so that it sees nothing twice. Each shows a folder of a
// file system that is to be seen elsewhere in the walk: through another mount of the same device,
// whose own top is that folder or one above it, which the walk enters, and in which no rule and no
// other mount keeps it from that folder. Of mounts that could each stand for the other the first
// in the list stays. The mount that `root` itself lies on is never left out, nor one that holds
// another mount with something to be seen nowhere else.
//
// Devices are those that the list tells. What stat tells may differ, as it does for parts of one
// btrfs: these are walked each, unless one of them holds the other.
std::vector<VisibleMounts::Index> repeatedMounts(const VisibleMounts& mounts,
                                                 const std::string& root, const Reaches& reaches);

}  // namespace tessaly::walk
