// Programs of ours beside the one that runs. Safe from any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::OwnPrograms {

// The path of the program `name`: in the folder of the program that runs, as in a build, or else in
// ../libexec/tessaly from there, as installed. Where it is in neither place, the path of the
// latter.
std::string path(std::string_view name);

}  // namespace tessaly::OwnPrograms
