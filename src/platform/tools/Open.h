// Opens a file or folder in an application: a terminal, an editor, or the default one.
#pragma once

#include <string>
#include <vector>

#include "platform/tools/Tools.h"

namespace tessaly::tools {

// `args` without the tool's own name: "-a", the application's name and a path, or only a path,
// preceded by "--" if it begins with "-"; or "--help".
//
// With a name it starts the first program of this machine that matches the application and can be
// started, and does not wait for it. The program has a session of its own and outlives the tool.
// "Terminal" opens a shell in the folder, or in the folder of a file, and never runs the file.
// Without a name xdg-open chooses, and is waited for; on some desktops it ends only with the
// application.
//
// Returns `done` only if a program was started and, without a name, if xdg-open succeeded.
int open(const std::vector<std::string>& args, Streams streams, const Services& services);

}  // namespace tessaly::tools
