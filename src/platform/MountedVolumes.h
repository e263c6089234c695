// The file systems that are mounted, and what each of them tells of itself.
//
// A file system that another machine or a program serves may never answer: every operation but
// list() may block for good. Safe from any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/SystemError.h"

namespace tessaly {

// A file system at the place where it is mounted. Paths are bytes.
struct MountedVolume {
  std::uint64_t id = 0;  // tells it from what was or will be mounted there at another time
  std::string path;      // the place
  std::string device;    // equal for all mounts of one file system
  std::string root;      // the folder of the file system that is to be seen at the place

  // Whether all of `other` is to be seen here too, as far as no mount lies over it.
  bool shows(const MountedVolume& other) const {
    return device == other.device &&
           (root == "/" || other.root == root || other.root.starts_with(root + "/"));
  }

  friend bool operator==(const MountedVolume&, const MountedVolume&) = default;
};

// In bytes.
struct VolumeFigures {
  std::int64_t total = 0;
  std::int64_t used = 0;
  std::int64_t free = 0;  // for this user; with `used` it may be less than `total`

  friend bool operator==(const VolumeFigures&, const VolumeFigures&) = default;
};

// One folder of things that the user has thrown away. Known by its device and its inode, since it
// may be found on several mounts.
struct CountedTrash {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t items = 0;

  friend bool operator==(const CountedTrash&, const CountedTrash&) = default;
};

class MountedVolumes {
 public:
  virtual ~MountedVolumes() = default;

  // What is to be seen now, in the order in which it was mounted. Left out is what holds no files
  // of users, and what would mount something when it is touched.
  virtual Result<std::vector<MountedVolume>> list() = 0;

  // notFound when another one is mounted there by now.
  virtual Result<VolumeFigures> figures(const MountedVolume& volume) = 0;

  // The user's Trash in the home, and at the top of a volume. Empty where there is none.
  virtual Result<std::vector<CountedTrash>> trashInHome() = 0;
  virtual Result<std::vector<CountedTrash>> trashOn(const MountedVolume& volume) = 0;
};

// Those of this machine, for the user that this process runs as.
std::unique_ptr<MountedVolumes> mountedVolumes();

}  // namespace tessaly
