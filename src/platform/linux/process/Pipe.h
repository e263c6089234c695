// The two ends of a channel for bytes, neither of which gets into programs that are started
// meanwhile.
#pragma once

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly::process {

struct Pipe {
  FileDescriptor reading;
  FileDescriptor writing;

  // Neither end has the number of standard input, output or error, even where one of those is
  // closed. An error names `path`, for which the pipe was meant.
  static Result<Pipe> make(std::string_view path);

  // The same made of sockets: writing where nobody reads any more is an error alone, with
  // MSG_NOSIGNAL, and raises no signal.
  static Result<Pipe> makeOfSockets(std::string_view path);
};

}  // namespace tessaly::process
