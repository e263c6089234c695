// Runs a piece of a subcommand in a process of its own. A thread that waits for a file system which
// does not answer cannot be ended, and a process with such a thread does not end either, so that
// its caller would wait for it.
#pragma once

#include <functional>

#include "platform/Deadline.h"
#include "platform/tools/Tools.h"

namespace tessaly::tools {

// What `body` prints and returns, once it has returned. If that has not happened at `deadline`, or
// its process has died: a line on the error stream, and `failed`. The process is killed when this
// one ends; it has no descriptor of this one, so nobody waits for it by mistake. If the system
// refuses a process, `body` runs in this one.
//
// Call it while this process has one thread.
int inSeparateProcess(const std::function<int(Streams)>& body, Streams streams,
                      const Deadline& deadline);

}  // namespace tessaly::tools
