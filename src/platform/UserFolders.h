// The folders that the user's desktop keeps documents, pictures, downloads and the like in. Their
// names are in the user's language: "Bilder".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly::UserFolders {

// Absolute paths as bytes, in the order of the user's own list, each followed by the path without
// links if that differs. Empty if there is no such list. Reads a file, and looks up each folder.
std::vector<std::string> ofThisUser();

// The same for a user with the home `home`; the list is in the folder `configuration`.
std::vector<std::string> ofUser(const std::string& home, const std::string& configuration);

// The folders in the text of such a list (user-dirs.dirs). A folder that is the home itself or
// contains it is left out: by this the user says that there is no such folder.
std::vector<std::string> parse(std::string_view text, const std::string& home);

}  // namespace tessaly::UserFolders
