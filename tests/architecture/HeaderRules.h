// What holds for every header, checked against the text of the sources.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tessaly::architecture {

// Sources that include something before the header of their own name, so that compiling them would
// not tell whether this header compiles alone. One line each: "source: what".
std::vector<std::string> lateOwnHeaders(const std::filesystem::path& src);

// Headers that may be read twice in one source. One line each, as above.
std::vector<std::string> headersReadTwice(const std::filesystem::path& src);

}  // namespace tessaly::architecture
