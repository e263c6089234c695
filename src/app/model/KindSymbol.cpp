#include "app/model/KindSymbol.h"

namespace tessaly::KindSymbol {

std::string_view of(FileKind kind) {
  switch (kind) {
    case FileKind::folder:
      return "folder.fill";
    case FileKind::app:
      return "app.badge";
    case FileKind::video:
      return "film";
    case FileKind::image:
      return "photo";
    case FileKind::document:
      return "doc.text";
    case FileKind::code:
      return "curlybraces";
    case FileKind::archive:
      return "archivebox";
    case FileKind::disk:
      return "externaldrive";
    case FileKind::other:
      break;
  }
  return "doc";
}

std::string_view of(const DiskNode& node) {
  return of(node.isDir() ? FileKind::folder : node.kind());
}

}  // namespace tessaly::KindSymbol
