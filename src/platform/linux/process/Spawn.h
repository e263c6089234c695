// Starts a program, and holds on to what was started.
#pragma once

#include <sys/types.h>

#include "platform/Process.h"
#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly::process {

// A child of this process. It has not been reaped, so the number is its own and nobody else's.
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

// Starts `launch` with the given ends; one that is not open stands for what `launch` says. All are
// closed in any case. Errors name launch.path, also where another executable stands in for it.
Result<Child> spawn(const Process::Launch& launch, Ends ends);

// Sends a child a signal. One that has exited hears nothing.
void send(int signal, const Child& child);

// Reaps a child that has exited and tells how it ended. Absent while it runs.
std::optional<Process::Exit> reaped(pid_t number);

}  // namespace tessaly::process
