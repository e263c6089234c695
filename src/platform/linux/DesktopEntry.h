// The lines of a desktop entry, in the format of the Desktop Entry Specification 1.5 of
// freedesktop.org. Pure, safe from any thread.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tessaly::DesktopEntry {

// Values by their keys, both as they are in the text, which must outlive them.
using Entries = std::map<std::string_view, std::string_view>;

// The entries of the group "Desktop Entry": the first value of each key. Translations have keys of
// their own, such as "Name[de]".
Entries entriesOf(std::string_view text);

// A value without the escapes of the file.
std::string unescaped(std::string_view value);

}  // namespace tessaly::DesktopEntry
