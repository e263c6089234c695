// Snapshots of a folder, cheap enough to be taken repeatedly: one level of children, each measured
// up to a fixed number of items. ScanDiff finds what has grown between two snapshots.
//
// Writes nothing, builds no tree and starts no thread. Functions block for as long as the disk
// takes, and are safe from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/MountSnapshot.h"
#include "scan/FolderSnapshot.h"

namespace tessaly::FolderWatch {

// Number of items of a child that a snapshot measures.
inline constexpr std::int64_t itemsPerChild = 8000;

// Polled once per item of a walk and per child. After it has returned true, sizes are incomplete.
using IsCancelled = std::function<bool()>;

// The folder at `path` as it is now. Links are left out. The size of a package is that of its own
// entry; the size of another folder is allocatedTree() of it. Pseudo file systems and automount
// points are not entered and have size 0; the mounts are read once. For a folder that cannot be
// read the map is empty.
FolderSnapshot snapshot(const std::string& path, const IsCancelled& isCancelled = {});

// Bytes on disk of the first `cap` items below the folder at `path`, an absolute path without
// links, in the order of the file system; 0 if it cannot be read. Links and folders count as items
// and add no bytes; packages are treated as folders. `mounts` are the current mounts; null: they
// are read from the system.
std::int64_t allocatedTree(const std::string& path, std::int64_t cap,
                           const IsCancelled& isCancelled = {},
                           const std::shared_ptr<const MountSnapshot>& mounts = nullptr);

}  // namespace tessaly::FolderWatch
