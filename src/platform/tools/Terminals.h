// The terminals of a Linux desktop.
#pragma once

#include <string>
#include <vector>

#include "platform/Process.h"
#include "platform/tools/Programs.h"

namespace tessaly::tools::Terminals {

// What to start for a terminal in `folder`, which is absolute: all that this machine has, the best
// first.
//
// First what TERMINAL names. It may be the path or the name of a program, or such a one with
// arguments, parted by blanks, which are handed on as they are; nothing is quoted in it. Then
// x-terminal-emulator and xdg-terminal-exec, which know the user's choice; then the terminals
// themselves.
//
// Each starts in the folder. Some take no notice of that, since another process of theirs opens the
// window; those that are known get the folder as an argument too, but for a TERMINAL that has
// arguments of its own.
std::vector<Process::Launch> launchesIn(const std::string& folder, const Programs& programs);

}  // namespace tessaly::tools::Terminals
