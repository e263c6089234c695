// The owner of a Trash, and where to find it.
#pragma once

#include <string>
#include <sys/types.h>

namespace tessaly {

struct TrashConfig {
  std::string homeTrash;  // absolute path
  std::string mountinfo;  // path of the list of mounts, in the kernel's format
  uid_t user = 0;

  // For the user of this process.
  static TrashConfig current();
};

}  // namespace tessaly
