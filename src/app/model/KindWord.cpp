#include "app/model/KindWord.h"

namespace tessaly::KindWord {

std::string_view of(FileKind kind) {
  switch (kind) {
    case FileKind::folder:
      return "Folder";
    case FileKind::app:
      return "Application";
    case FileKind::video:
      return "Video";
    case FileKind::image:
      return "Image";
    case FileKind::document:
      return "Document";
    case FileKind::code:
      return "Developer";
    case FileKind::archive:
      return "Archive";
    case FileKind::disk:
      return "Disk image";
    case FileKind::other:
      break;
  }
  return "File";
}

std::string_view of(const DiskNode& node) {
  return of(node.isDir() ? FileKind::folder : node.kind());
}

}  // namespace tessaly::KindWord
