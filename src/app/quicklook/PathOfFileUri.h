// The way back from a file URI. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

// The path, in bytes, of a URI that begins with "file:///". Absent for any other, and where an
// escape is cut short or hides a zero byte.
std::optional<std::string> pathOfFileUri(std::string_view uri);

}  // namespace tessaly
