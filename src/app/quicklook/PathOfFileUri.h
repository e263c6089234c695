// Converts a file URI to a path. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

// The path, as bytes, of a URI that begins with "file:///". Absent for other URIs, incomplete
// escapes, and escaped zero bytes.
std::optional<std::string> pathOfFileUri(std::string_view uri);

}  // namespace tessaly
