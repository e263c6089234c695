// The mounted file systems and their figures.
//
// A file system served by another machine or program may never answer: every operation except
// list() may block for ever. Safe from any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/SystemError.h"

namespace tessaly {

// A file system and its mount point. Paths are bytes.
struct MountedVolume {
  std::uint64_t id = 0;   // distinguishes it from earlier and later mounts at the same path
  std::string path;       // mount point
  std::string device;     // equal for all mounts of one file system
  std::string root;       // folder of the file system that is visible at the mount point
  std::string type = {};  // of the file system, such as "ext4"; empty if unknown

  // Whether this mount also shows everything of `other`, apart from mounts on top of it.
  bool shows(const MountedVolume& other) const {
    return device == other.device &&
           (root == "/" || other.root == root || other.root.starts_with(root + "/"));
  }

  friend bool operator==(const MountedVolume&, const MountedVolume&) = default;
};

// Figures in bytes.
struct VolumeFigures {
  std::int64_t total = 0;
  std::int64_t used = 0;
  std::int64_t free = 0;  // for this user; `used` + `free` may be less than `total`

  friend bool operator==(const VolumeFigures&, const VolumeFigures&) = default;
};

// A Trash folder with its number of items. Identified by device and inode, since it may be visible
// on several mounts.
struct CountedTrash {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t items = 0;
  // Absolute paths of the folders in it whose contents emptying deletes; only folders with entries.
  std::vector<std::string> contents = {};

  friend bool operator==(const CountedTrash&, const CountedTrash&) = default;
};

class MountedVolumes {
 public:
  virtual ~MountedVolumes() = default;

  // The visible mounts, in the order of mounting. Leaves out file systems without files of users,
  // and mount points that would mount something when touched.
  virtual Result<std::vector<MountedVolume>> list() = 0;

  // notFound if another file system is mounted there by now.
  virtual Result<VolumeFigures> figures(const MountedVolume& volume) = 0;

  // The Trash folders of the user in the home directory, or at the top of a volume. Empty if there
  // is none.
  virtual Result<std::vector<CountedTrash>> trashInHome() = 0;
  virtual Result<std::vector<CountedTrash>> trashOn(const MountedVolume& volume) = 0;
};

}  // namespace tessaly
