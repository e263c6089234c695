// Starts and reaps child processes.
#pragma once

#include <sys/types.h>

#include "platform/Process.h"
#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly::process {

// A child of this process that has not been reaped, so its number is not reused.
struct Child {
  pid_t number = -1;
  FileDescriptor handle;  // a pidfd: readable once the child has exited
};

// The child's ends of its captured streams.
struct Ends {
  FileDescriptor input;
  FileDescriptor output;
  FileDescriptor error;
};

// Starts `launch` with the given ends; for an end that is not open, `launch` decides. All ends are
// closed in any case. Errors name launch.path, even if a stand-in is started.
Result<Child> spawn(const Process::Launch& launch, Ends ends);

// Sends a signal to a child. Does nothing if it has exited.
void send(int signal, const Child& child);

// Reaps a child that has exited, and returns how it ended. Absent while it runs.
std::optional<Process::Exit> reaped(pid_t number);

}  // namespace tessaly::process
