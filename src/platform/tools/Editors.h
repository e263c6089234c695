// The editors of a Linux desktop: those that open a window of their own.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Process.h"
#include "platform/tools/Programs.h"

namespace tessaly::tools::Editors {

// What to start for the editor `application` with the file or folder at `path`, which is absolute:
// all that this machine has of it, the best first. "TextEdit", which every machine of its system
// has, stands for any editor that a desktop may come with; for a folder, for those that open
// folders. Absent where no editor is called so.
std::optional<std::vector<Process::Launch>> launchesOf(std::string_view application,
                                                       const std::string& path, bool isFolder,
                                                       const Programs& programs);

}  // namespace tessaly::tools::Editors
