// What is mounted where, as the kernel tells it in /proc/self/mountinfo. Pure functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

struct Mount {
  std::string point;  // bytes; the kernel's escapes are undone
  std::string type;   // of the file system, such as "ext4"

  // Whether there are no files of the user on it: what the kernel tells of itself, and automount
  // points, which must be left alone lest they mount something.
  bool isPseudo() const;

  friend bool operator==(const Mount&, const Mount&) = default;
};

// In the order in which they were mounted: of several on one point the last is the one to be seen.
// Lines that cannot be read are left out.
std::vector<Mount> mountsIn(std::string_view mountinfo);

}  // namespace tessaly
