// The program's other executables. Safe from any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::OwnPrograms {

// The path of the executable `name`, searched from the folder of the running program.
std::string path(std::string_view name);

// The rule behind it: in that folder, as in a build, or else in ../libexec/tessaly from there, as
// installed. If it is in neither, the latter path.
std::string pathFrom(const std::string& folder, std::string_view name);

}  // namespace tessaly::OwnPrograms
