#include "platform/linux/trash/TrashPlace.h"

#include <unistd.h>

#include "platform/ApplicationSupport.h"

namespace tessaly {

TrashPlace TrashPlace::current() {
  return {.homeTrash = applicationSupportDirectory() + "/Trash",
          .mountinfo = "/proc/self/mountinfo",
          .user = ::geteuid()};
}

}  // namespace tessaly
