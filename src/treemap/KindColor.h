// The colour of a kind of file, on tiles and in the breakdown of a folder.
#pragma once

#include "look/Color.h"
#include "scan/FileKind.h"

namespace tessaly::KindColor {

// Used for disk images only.
inline constexpr Color disk = Color::fromRgb(0xA855F7);

Color of(FileKind kind);

}  // namespace tessaly::KindColor
