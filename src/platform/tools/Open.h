// Opens a file or folder in an application: a terminal, an editor, or the default one.
#pragma once

#include <string>
#include <vector>

#include "platform/tools/Tools.h"

namespace tessaly::tools {

// `args` without the tool's own name: "-a", the application's name and a path, or only a path;
// before a path that stands alone and begins with "-" a "--". Or "--help".
//
// With a name it starts the first program of this machine that stands for that application and can
// be started, and does not wait for it. The program is in a session of its own and goes on after
// us. "Terminal" opens a shell in the folder, or in the folder that a file lies in: nothing is ever
// run in it. Without a name xdg-open chooses, and is waited for; on some desktops it ends only with
// the application.
//
// Gives `done` only where a program was started, and, without a name, where xdg-open succeeded.
int open(const std::vector<std::string>& args, Streams streams, const Seams& seams);

}  // namespace tessaly::tools
