// Whether the servers that the environment names for windows answer. One that takes a connection
// and then says nothing does not. Each call waits for its server, but no longer than until the
// deadline; what the servers say of themselves is lost.
#pragma once

#include <string>

#include "platform/Deadline.h"

namespace tessaly::DisplayServers {

// The X server of $DISPLAY, which has to let us in.
bool xAnswers(Deadline deadline);

// The Wayland compositor of $WAYLAND_DISPLAY.
bool waylandAnswers(Deadline deadline);

// The path of that one's socket; "" where none is named.
std::string waylandSocket();

}  // namespace tessaly::DisplayServers
