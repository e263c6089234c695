// What is mounted where, as the kernel tells it in /proc/self/mountinfo. Pure functions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Paths are bytes; the kernel's escapes are undone.
struct Mount {
  std::uint64_t id = 0;      // tells it from any other, as statx does; used again once it is gone
  std::uint64_t parent = 0;  // id of the mount that `point` lies on; may be one that is not listed
  std::string device;        // "major:minor"; that of its files may be another
  std::string root;          // the folder of the file system that is to be seen at `point`
  std::string point;
  std::string type;  // of the file system, such as "ext4"

  // Whether there are no files of the user on it: what the kernel tells of itself, and automount
  // points, which must be left alone lest they mount something.
  bool isPseudo() const;

  friend bool operator==(const Mount&, const Mount&) = default;
};

// In the order in which they were mounted: of several on one point the last is the one to be seen.
// Lines that cannot be read are left out.
std::vector<Mount> mountsIn(std::string_view mountinfo);

}  // namespace tessaly
