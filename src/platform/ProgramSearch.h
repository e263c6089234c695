// Where a program is that is known by its name, as a shell would find it. Safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly::ProgramSearch {

// The absolute path of the program `name`, found in the folders of `searchPath`, which is written
// as PATH is; where that is empty, in the folders of every system. Relative folders of it are left
// out: what the user keeps where we happen to stand is not meant. A `name` that is an absolute path
// stands for itself. Absent where no file is there that may be run.
std::optional<std::string> find(std::string_view name, std::string_view searchPath);

}  // namespace tessaly::ProgramSearch
