#include "platform/RunningApplication.h"

#include "platform/OwnExecutable.h"

namespace tessaly {

std::string runningApplicationPath() {
  return ownExecutable();
}

}  // namespace tessaly
