// Finds a program by its name, as a shell does. Safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly::ProgramSearch {

// The absolute path of the program `name`, searched in the folders of `searchPath`, which has the
// form of PATH; if it is empty, in the standard folders of the system. Relative folders in it are
// skipped, since they depend on the working directory. A `name` that is an absolute path is
// returned as it is. Absent if there is no executable file.
std::optional<std::string> find(std::string_view name, std::string_view searchPath);

}  // namespace tessaly::ProgramSearch
