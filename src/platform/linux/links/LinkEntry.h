// Desktop entries that lead to a file, in the format of the Desktop Entry Specification 1.5 of
// freedesktop.org: entries of the type Link. Pure, safe from any thread. Paths are bytes.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly::LinkEntry {

// The value of a variable of the environment, if it is set.
using Variable = std::function<std::optional<std::string>(const std::string& name)>;

// The absolute path of the file to which the entry leads; empty if its file URL is damaged. Absent
// for other types, for other URLs, for a file of another machine than `host`, and for a URL that
// depends on something unknown.
//
// KDE writes the key URL[$e], whose value has variables ($HOME). A command in it is not run.
std::optional<std::string> destinationIn(std::string_view text, std::string_view host,
                                         const Variable& variable);

}  // namespace tessaly::LinkEntry
