#include "platform/linux/trash/TrashConfig.h"

#include <unistd.h>

#include "platform/ApplicationSupport.h"

namespace tessaly {

TrashConfig TrashConfig::current() {
  return {.homeTrash = applicationSupportDirectory() + "/Trash",
          .mountinfo = "/proc/self/mountinfo",
          .user = ::geteuid()};
}

}  // namespace tessaly
