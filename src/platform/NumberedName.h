// Names for files that would all be called the same. Pure, safe from any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// What the `number`-th file called `name` is called: "out 2.zip" for the second "out.zip", and
// `name` for the first. Has at most 255 bytes; for that the part before the number is cut, where a
// character begins.
std::string numberedName(std::string_view name, int number);

}  // namespace tessaly
