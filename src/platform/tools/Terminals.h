// The terminals of a Linux desktop.
#pragma once

#include <string>
#include <vector>

#include "platform/Process.h"
#include "platform/tools/Programs.h"

namespace tessaly::tools::Terminals {

// The commands for a terminal in the absolute `folder`: all that exist on this machine, the best
// first.
//
// First the one in TERMINAL: the path or name of a program, optionally with arguments separated by
// blanks, which are passed on unchanged, without quoting. Then x-terminal-emulator and
// xdg-terminal-exec, which know the user's choice; then the terminals themselves.
//
// Each starts in the folder. Some terminals ignore their working directory, since another process
// of theirs opens the window; known ones also get the folder as an argument, except a TERMINAL with
// arguments of its own.
std::vector<Process::Launch> launchesIn(const std::string& folder, const Programs& programs);

}  // namespace tessaly::tools::Terminals
