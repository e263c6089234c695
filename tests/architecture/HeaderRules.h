// Rules for every header, checked on the text of the sources.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tessaly::architecture {

// Sources that include something before the header of their own name; compiling them would not show
// whether that header compiles alone. One line each: "source: what".
std::vector<std::string> lateOwnHeaders(const std::filesystem::path& src);

// Headers without an include guard. One line each, as above.
std::vector<std::string> headersReadTwice(const std::filesystem::path& src);

}  // namespace tessaly::architecture
