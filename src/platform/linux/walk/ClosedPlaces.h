// The mount points below a root that a walk must not enter, as a tree of path components. Most
// directories have none below them, so a walk carries a null pointer and pays nothing.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/VisibleMounts.h"
#include "platform/linux/walk/RepeatedMounts.h"

namespace tessaly::walk {

class ClosedPlaces {
 public:
  // Adds the place at these components below this one. With the id of a mount it is closed while
  // that one stands there, without one whatever does.
  void close(const std::vector<std::string>& components, std::uint64_t mount = 0);

  // What is known about the entry `name`: null when nothing at or below it is closed.
  const ClosedPlaces* below(std::string_view name) const;

  bool isClosed() const { return closed_; }
  std::uint64_t mount() const { return mount_; }  // 0 for none

 private:
  std::map<std::string, std::unique_ptr<ClosedPlaces>, std::less<>> children_;
  bool closed_ = false;
  std::uint64_t mount_ = 0;
};

// Of the mounts below `root` that are to be seen: automount points and pseudo file systems, which
// must not be touched, and those that show only what a walk by these rules sees elsewhere.
ClosedPlaces closedPlacesBelow(const std::string& root, const VisibleMounts& mounts,
                               const Reaches& reaches);

// Whether a file system of this magic number (statfs's f_type) holds no files that take up space.
bool isPseudoFileSystem(long magic);

}  // namespace tessaly::walk
