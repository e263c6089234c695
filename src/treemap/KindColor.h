// The colour that stands for a kind of file, on tiles and in the breakdown of a folder.
#pragma once

#include "look/Color.h"
#include "scan/FileKind.h"

namespace tessaly::KindColor {

// Disk images alone have a colour that nothing else in the program uses.
inline constexpr Color disk = Color::fromRgb(0xA855F7);

Color of(FileKind kind);

}  // namespace tessaly::KindColor
