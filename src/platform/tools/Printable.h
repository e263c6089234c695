// Foreign text as a part of one line that people read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessaly::tools {

// `text` with a "?" for each control character, each character that changes the direction of text
// and each byte that is not UTF-8; after `most` characters it is cut and ends in "...".
std::string printable(std::string_view text, std::size_t most = 1000);

}  // namespace tessaly::tools
