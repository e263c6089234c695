// Names and paths as a person reads them. Only for showing: the bytes cannot be had back from it.
#pragma once

#include <string_view>

#include <QString>

namespace tessaly {

// `bytes` as text on one line, in the direction that its letters have. What is not UTF-8, and every
// control character, line break and direction control, stands as a replacement character.
QString displayText(std::string_view bytes);

}  // namespace tessaly
