#include "app/desktop/WindowPolicy.h"

namespace tessaly::WindowPolicy {

Start atStart(bool startHidden, StatusBarExtra::Presence presence, bool hasWaited) {
  if (!startHidden) return Start::show;
  if (presence == StatusBarExtra::Presence::shown) return Start::hide;
  return hasWaited ? Start::show : Start::wait;
}

bool quitsOnClose(StatusBarExtra::Presence presence) {
  return presence != StatusBarExtra::Presence::shown;
}

}  // namespace tessaly::WindowPolicy
