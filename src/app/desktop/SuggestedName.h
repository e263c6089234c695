// The name that a save panel suggests for a file, made from a name of any kind.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// A name that a file can bear and a person can edit on one line: UTF-8 of at most 255 bytes, with
// "." and `extension` at its end, added where they are missing. What stands for no file name, and
// what the name field of a dialog would take for something else, is replaced: slashes, control
// characters, direction controls and a "~" in front by "-", double quotes by single ones, bytes
// that are no text by U+FFFD. What is too long is cut before the extension, between characters.
std::string suggestedName(std::string_view fileName, std::string_view extension);

}  // namespace tessaly
