// The mount points below a root that a walk must not enter, as a tree of path components. Most
// directories have none below them, so a walk passes a null pointer for them, at no cost.
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

class ClosedMounts {
 public:
  // Closes the path of these components below this one: with the id of a mount only while that one
  // is mounted there, otherwise always.
  void close(const std::vector<std::string>& components, std::uint64_t mount = 0);

  // The node for the entry `name`; null if nothing at or below it is closed.
  const ClosedMounts* below(std::string_view name) const;

  bool isClosed() const { return closed_; }
  std::uint64_t mount() const { return mount_; }  // 0 for none

 private:
  std::map<std::string, std::unique_ptr<ClosedMounts>, std::less<>> children_;
  bool closed_ = false;
  std::uint64_t mount_ = 0;
};

// From the visible mounts below `root`: automount points and pseudo file systems, which must not be
// accessed, and mounts that show only what a walk with these rules sees elsewhere; without
// `entersRemote` also file systems that may never answer.
ClosedMounts closedMountsBelow(const std::string& root, const VisibleMounts& mounts,
                               const Reaches& reaches, bool entersRemote = true);

// Whether a file system with this magic number (f_type of statfs) has no files that take up space.
bool isPseudoFileSystem(long magic);

}  // namespace tessaly::walk
