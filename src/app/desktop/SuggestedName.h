// The file name that a save panel suggests, made from any name.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// A valid file name that can be edited on one line: UTF-8 of at most 255 bytes, ending in "." and
// `extension`, which are added if missing. Characters that are invalid in a file name or special in
// the name field of a dialog are replaced: slashes, control characters, direction controls and a
// leading "~" by "-", double quotes by single ones, bytes that are not UTF-8 by U+FFFD. A name that
// is too long is cut before the extension, between characters.
std::string suggestedName(std::string_view fileName, std::string_view extension);

}  // namespace tessaly
