// Distinct names for files that would have the same name. Pure, safe from any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// The name of the `number`-th file with the name `name`: "out 2.zip" for the second "out.zip", and
// `name` for the first. At most 255 bytes: the part before the number is cut, between characters.
std::string numberedName(std::string_view name, int number);

}  // namespace tessaly
