// Whose Trash it is, and where to look for it.
#pragma once

#include <string>
#include <sys/types.h>

namespace tessaly {

struct TrashPlace {
  std::string homeTrash;  // absolute path
  std::string mountinfo;  // path of the list of mounts, in the kernel's form
  uid_t user = 0;

  // Of the user that this process runs as.
  static TrashPlace current();
};

}  // namespace tessaly
