// The kernel's list of mounts in /proc/self/mountinfo. Pure functions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Paths are bytes; the kernel's escapes are undone.
struct Mount {
  std::uint64_t id = 0;      // distinguishes it from other current mounts, also in statx; reused
                             // after unmounting
  std::uint64_t parent = 0;  // id of the mount that contains `point`; may be one that is not listed
  std::string device;        // "major:minor"; its files may report another one
  std::string root;          // folder of the file system that is visible at `point`
  std::string point;
  std::string type;  // of the file system, such as "ext4"

  // Whether it has no files of the user: file systems with the kernel's own data, and automount
  // points, which would mount something if they were accessed.
  bool isPseudo() const;

  // Whether its files are served by another machine, or by a program that may ask another machine:
  // whoever accesses them may wait for ever. Automount points are not remote.
  bool isRemote() const;

  friend bool operator==(const Mount&, const Mount&) = default;
};

// The mounts in the order of mounting: of several on one point the last is visible. Lines that
// cannot be read are left out.
std::vector<Mount> mountsIn(std::string_view mountinfo);

}  // namespace tessaly
