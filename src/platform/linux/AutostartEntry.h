// Desktop entries that start one program, in the text form of the Desktop Entry Specification 1.5
// of freedesktop.org. Pure, safe from any thread. Paths are bytes.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::AutostartEntry {

// An entry that starts the executable at this path, without arguments.
std::string starting(std::string_view executable);

// Whether a session that finds an entry of this text among those to start starts the executable at
// this path: by whatever arguments, unless the entry is marked as hidden or switched off.
bool starts(std::string_view text, std::string_view executable);

}  // namespace tessaly::AutostartEntry
