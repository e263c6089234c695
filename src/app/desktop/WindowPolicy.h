// When the main window shows by itself, and what closing it means. Without a status-bar extra a
// program without a window would be out of reach. Pure.
#pragma once

#include "platform/StatusBarExtra.h"

namespace tessaly::WindowPolicy {

enum class Start {
  show,
  hide,
  wait,  // for the status bar: when a user logs in it may start later than the program
};

// `hasWaited`: the desktop has had time enough to bring its status bar up.
Start atStart(bool startHidden, StatusBarExtra::Presence presence, bool hasWaited);

bool quitsOnClose(StatusBarExtra::Presence presence);

}  // namespace tessaly::WindowPolicy
