#include "treemap/KindColor.h"

#include "look/MarrowTheme.h"

namespace tessaly::KindColor {

Color of(FileKind kind) {
  switch (kind) {
    case FileKind::folder:
      return MarrowTheme::folderPalette[0];
    case FileKind::app:
      return MarrowTheme::accent;
    case FileKind::video:
      return MarrowTheme::video;
    case FileKind::image:
      return MarrowTheme::image;
    case FileKind::document:
      return MarrowTheme::document;
    case FileKind::code:
      return MarrowTheme::developer;
    case FileKind::archive:
      return MarrowTheme::archive;
    case FileKind::disk:
      return disk;
    case FileKind::other:
      break;
  }
  return MarrowTheme::other;
}

}  // namespace tessaly::KindColor
