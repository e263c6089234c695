// The connections of this process to other programs: the display, the message bus.
//
// They end with the process, but only once all its threads have ended, and one that the kernel
// holds, on a network folder that does not answer say, may take for ever. Until then the other ends
// believe that the program is there: its icon stays in the panel, its windows on the screen.
#pragma once

#include <string>

namespace tessaly::OwnConnections {

// A write to a connection or a pipe of which the other end is gone fails from now on (EPIPE), in
// place of ending the program. Programs that a Process starts do not inherit this. To be called
// before there are other threads.
void failWritesToEnded();

// Ends all connections by socket that this process has opened, at once for the other ends, but for
// the one of descriptor `spared` (-1 for none) and those to the local server whose socket stands at
// `sparedServer` ("" for none). What had been sent arrives. Standard streams and connections that
// the process was started with are left alone: others use them too.
//
// Whoever uses such a connection afterwards, on whatever thread, finds it broken. So it is for a
// program that is about to end.
void shutDown(int spared = -1, const std::string& sparedServer = {});

}  // namespace tessaly::OwnConnections
