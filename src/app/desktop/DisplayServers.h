// Whether the display servers named in the environment answer. A server that accepts a connection
// without answering does not. Each call waits for its server until the deadline at most; output of
// the libraries is dropped.
#pragma once

#include <string>

#include "platform/Deadline.h"

namespace tessaly::DisplayServers {

// The X server of $DISPLAY, which must accept us.
bool xAnswers(Deadline deadline);

// The Wayland compositor of $WAYLAND_DISPLAY.
bool waylandAnswers(Deadline deadline);

// The path of its socket; "" if none is set.
std::string waylandSocket();

}  // namespace tessaly::DisplayServers
