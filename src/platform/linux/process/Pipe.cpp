#include "platform/linux/process/Pipe.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tessaly::process {

namespace {

// With a number of 0 to 2 it would be used as a standard stream: by this program, whose own output
// would go into it, and while the streams of a started program are set up.
bool liftAboveStandard(FileDescriptor& end) {
  if (end.get() > STDERR_FILENO) return true;
  end = FileDescriptor(fcntl(end.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  return static_cast<bool>(end);
}

Result<Pipe> lifted(Pipe pipe, std::string_view path) {
  if (!liftAboveStandard(pipe.reading) || !liftAboveStandard(pipe.writing)) {
    return SystemError::fromErrno(errno, path);
  }
  return pipe;
}

}  // namespace

Result<Pipe> Pipe::make(std::string_view path) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return SystemError::fromErrno(errno, path);
  return lifted({.reading = FileDescriptor(ends[0]), .writing = FileDescriptor(ends[1])}, path);
}

Result<Pipe> Pipe::makeOfSockets(std::string_view path) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    return SystemError::fromErrno(errno, path);
  }
  ::shutdown(ends[0], SHUT_WR);
  return lifted({.reading = FileDescriptor(ends[0]), .writing = FileDescriptor(ends[1])}, path);
}

}  // namespace tessaly::process
