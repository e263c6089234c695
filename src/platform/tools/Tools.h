// The tools of another system that the program asks, each as a subcommand of one executable: it
// prints what the tool would print, as far as the program asks for it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/TrashCan.h"
#include "platform/tools/Programs.h"

namespace tessaly::tools {

// What a subcommand ends the process with.
enum Status : int { done = 0, failed = 1, misused = 2 };

struct Streams {
  std::ostream& out;
  std::ostream& err;
};

// What the subcommands ask for their answers.
struct Seams {
  TrashCan& trash;
  Programs programs = Programs::real();
};

// Runs the subcommand that `args` begin with, "--help" among them, and gives the process's status.
// What goes wrong is told in a line of `err`, and then there is nothing in `out`.
int run(const std::vector<std::string>& args, Streams streams, const Seams& seams);

}  // namespace tessaly::tools
