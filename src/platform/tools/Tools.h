// The tools of another system that the program uses, each as a subcommand of one executable: it
// prints the same output, as far as the program needs it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/TrashCan.h"
#include "platform/tools/Programs.h"

namespace tessaly::tools {

// Exit statuses of a subcommand.
enum Status : int {
  done = 0,
  failed = 1,
  misused = 2,
  incomplete = 3,  // the answer is right as far as it goes, and there may be more
};

struct Streams {
  std::ostream& out;
  std::ostream& err;
};

// What the subcommands use.
struct Services {
  TrashCan& trash;
  Programs programs = Programs::real();
};

// Runs the subcommand at the beginning of `args`, or "--help", and returns the exit status. An
// error is printed as one line to `err`, and then nothing to `out`, unless the subcommand's header
// says otherwise.
int run(const std::vector<std::string>& args, Streams streams, const Services& services);

}  // namespace tessaly::tools
