// The file that tells of one item in the Trash where it came from, after the freedesktop.org Trash
// specification 1.0, and the name that the two share. Pure functions.
#pragma once

#include <cstddef>
#include <ctime>
#include <string>
#include <string_view>

namespace tessaly::TrashInfo {

inline constexpr std::string_view ending = ".trashinfo";

// The whole file: `path`, which is bytes, percent-encoded, and the local time `deleted`.
std::string text(std::string_view path, const std::tm& deleted);

// The name for an item called `name` in the Trash when `number` - 1 others are taken: the name
// itself for 1, else with the number before its extension. It is cut so that it takes no more than
// `longest` bytes together with the ending above, and no character of UTF-8 is cut in two.
std::string nameFor(std::string_view name, unsigned number, std::size_t longest);

}  // namespace tessaly::TrashInfo
