// The names of what the program writes before it gets the name that it is to have. Nobody else
// gives such names.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::PrivateName {

// Of a file: ".tessaly-", the number of this process, "-" and a number that it never uses twice.
std::string ofFile();
// Of a folder that holds such a file: ".tessaly-" and 16 hexadecimal digits, by chance.
std::string ofFolder();
// Of the file in that folder, but for its extension.
inline constexpr const char* inFolder = "file";
// Of a note in the support folder: ".tessaly-place-" and 16 hexadecimal digits, by chance.
std::string ofNote();

// Whether a name is of exactly that form.
bool isOfFile(std::string_view name);
bool isOfFolder(std::string_view name);
bool isOfNote(std::string_view name);

// Whether a file in such a folder is what is written there: the file itself with any extension or
// none, or what zip makes of it before it is whole.
bool isInFolder(std::string_view name);

}  // namespace tessaly::PrivateName
