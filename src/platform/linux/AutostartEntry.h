// Desktop entries that start one program, in the format of the Desktop Entry Specification 1.5 of
// freedesktop.org. Pure, safe from any thread. Paths are bytes.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::AutostartEntry {

// An entry that starts the executable at this path, without arguments.
std::string starting(std::string_view executable);

// Whether a session that finds this entry in its autostart folder starts the executable at this
// path: with any arguments, unless the entry is hidden or disabled.
bool starts(std::string_view text, std::string_view executable);

}  // namespace tessaly::AutostartEntry
