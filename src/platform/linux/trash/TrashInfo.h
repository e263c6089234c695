// The record of an item in the Trash, with its original path, by the freedesktop.org Trash
// specification 1.0, and the name that item and record share. Pure functions.
#pragma once

#include <cstddef>
#include <ctime>
#include <string>
#include <string_view>

namespace tessaly::TrashInfo {

inline constexpr std::string_view ending = ".trashinfo";

// The whole content: `path`, which is bytes, percent-encoded, and the local time `deleted`.
std::string text(std::string_view path, const std::tm& deleted);

// The name in the Trash for an item called `name` when `number` - 1 others are taken: the name
// itself for 1, else with the number before its extension. It is cut so that it has at most
// `longest` bytes together with the ending above, without splitting a UTF-8 character.
std::string nameFor(std::string_view name, unsigned number, std::size_t longest);

}  // namespace tessaly::TrashInfo
