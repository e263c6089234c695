#include "platform/StartThread.h"

#include <system_error>

namespace tessaly {

std::thread startThread(const std::function<void()>& body) {
  try {
    return std::thread(body);
  } catch (const std::system_error&) {
    return {};
  }
}

}  // namespace tessaly
