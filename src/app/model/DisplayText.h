// Names and paths as displayed text. For display only: the bytes cannot be restored from it.
#pragma once

#include <string_view>

#include <QString>

namespace tessaly {

// `bytes` as text on one line, without forced direction. Invalid UTF-8, and every control
// character, line break and direction control, is shown as a replacement character.
QString displayText(std::string_view bytes);

}  // namespace tessaly
