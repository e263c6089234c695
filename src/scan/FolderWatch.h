// Snapshots of a folder, cheap enough to be taken again and again: one level of children, each of
// them measured no further than a number of items. What has grown between two snapshots is for
// ScanDiff to say.
//
// Nothing is written, no tree is built and no thread is started. Functions block for as long as the
// disk takes, and are safe from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/MountSnapshot.h"
#include "scan/FolderSnapshot.h"

namespace tessaly::FolderWatch {

// Items of a child that a snapshot looks at.
inline constexpr std::int64_t itemsPerChild = 8000;

// Polled once per item of a walk and per child; what is measured after it has said yes is not
// whole.
using IsCancelled = std::function<bool()>;

// The folder at `path` as it is now. Links are left out. A package weighs its own entry alone,
// other folders what lies in them as far as allocatedTree() goes. Pseudo file systems and automount
// points are not entered and weigh nothing; what is mounted is asked for once. Of a folder that
// cannot be read the map is empty.
FolderSnapshot snapshot(const std::string& path, const IsCancelled& isCancelled = {});

// Bytes on disk of the first `cap` items below the folder at `path`, an absolute path without
// links, in the order in which the file system gives them; 0 if it cannot be read. Links and
// folders count as items and add nothing; packages are folders like any other.
// `mounts` is what is mounted; where it is null, the system is asked.
std::int64_t allocatedTree(const std::string& path, std::int64_t cap,
                           const IsCancelled& isCancelled = {},
                           const std::shared_ptr<const MountSnapshot>& mounts = nullptr);

}  // namespace tessaly::FolderWatch
