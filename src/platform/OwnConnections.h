// The connections of this process to other programs: the display, the message bus.
//
// They end with the process, but only after all its threads have ended, and a thread that the
// kernel blocks, on a network folder that does not answer for example, may never end. Until then
// the other programs treat this one as running: its icon stays in the panel, its windows on the
// screen.
#pragma once

#include <string>

namespace tessaly::OwnConnections {

// From now on a write to a connection or pipe whose other end is closed fails (EPIPE) instead of
// ending the program. Programs started by Process do not inherit this. Call it before there are
// other threads.
void failWritesToEnded();

// Shuts down all sockets that this process has opened, immediately for the other ends, except
// descriptor `spared` (-1 for none) and connections to the local server with the socket at
// `sparedServer` ("" for none). Data already sent still arrives. Standard streams and connections
// inherited at the start are left alone, since other processes use them too.
//
// Any thread that uses such a connection afterwards gets an error, so this is for a program that is
// about to end.
void shutDown(int spared = -1, const std::string& sparedServer = {});

}  // namespace tessaly::OwnConnections
