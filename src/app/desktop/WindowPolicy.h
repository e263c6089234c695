// Whether the main window is shown at the start, and whether closing it quits. Without a status-bar
// extra, a program without a window would be unreachable. Pure functions.
#pragma once

#include "platform/StatusBarExtra.h"

namespace tessaly::WindowPolicy {

enum class Start {
  show,
  hide,
  wait,  // for the status bar, which may start later than the program when the user logs in
};

// `hasWaited`: the desktop has had enough time to start its status bar.
Start atStart(bool startHidden, StatusBarExtra::Presence presence, bool hasWaited);

bool quitsOnClose(StatusBarExtra::Presence presence);

}  // namespace tessaly::WindowPolicy
