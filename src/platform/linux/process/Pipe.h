// The two ends of a byte channel, neither of which is inherited by programs started meanwhile.
#pragma once

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly::process {

struct Pipe {
  FileDescriptor reading;
  FileDescriptor writing;

  // Neither end has the number of standard input, output or error, even if one of those is closed.
  // Errors name `path`, the program that the pipe is for.
  static Result<Pipe> make(std::string_view path);

  // The same made of sockets: with MSG_NOSIGNAL, writing to an end that nobody reads is only an
  // error and raises no signal.
  static Result<Pipe> makeOfSockets(std::string_view path);
};

}  // namespace tessaly::process
