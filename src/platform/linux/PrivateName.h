// Private names of files that will get another name when they are complete. No other program uses
// such names.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::PrivateName {

// For a file: ".tessaly-", the number of this process, "-" and a number that it never uses twice.
std::string ofFile();
// For a folder that contains such a file: ".tessaly-" and 16 random hexadecimal digits.
std::string ofFolder();
// The name of the file in that folder, without its extension.
inline constexpr const char* inFolder = "file";
// For a note in the support folder: ".tessaly-place-" and 16 random hexadecimal digits.
std::string ofNote();

// Whether a name has exactly that form.
bool isOfFile(std::string_view name);
bool isOfFolder(std::string_view name);
bool isOfNote(std::string_view name);

// Whether a name in such a folder is one of the program's: `inFolder` with any extension or none,
// or a temporary file of zip.
bool isInFolder(std::string_view name);

}  // namespace tessaly::PrivateName
