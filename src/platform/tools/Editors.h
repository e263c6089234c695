// The editors of a Linux desktop that open windows.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Process.h"
#include "platform/tools/Programs.h"

namespace tessaly::tools::Editors {

// The commands for opening the absolute `path` in the editor `application`: all that exist on this
// machine, the best first. "TextEdit", which is always present on macOS, means any editor of the
// desktop; for a folder, any editor that opens folders. Absent if there is no such editor.
std::optional<std::vector<Process::Launch>> launchesOf(std::string_view application,
                                                       const std::string& path, bool isFolder,
                                                       const Programs& programs);

}  // namespace tessaly::tools::Editors
