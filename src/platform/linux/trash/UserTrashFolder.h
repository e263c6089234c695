// One Trash folder of a user.
#pragma once

#include <string>

#include "platform/linux/FileDescriptor.h"

namespace tessaly {

struct UserTrashFolder {
  FileDescriptor folder;  // O_PATH
  std::string path;       // absolute
};

}  // namespace tessaly
