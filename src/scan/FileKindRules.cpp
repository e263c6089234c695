#include "scan/FileKindRules.h"

#include <algorithm>

#include "platform/UnicodeText.h"

namespace tessaly::FileKindRules {

std::string_view pathExtension(std::string_view name) {
  name.remove_prefix(name.rfind('/') + 1);
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return {};
  return name.substr(dot + 1);
}

FileKind classify(std::string_view name, bool isDir) {
  const std::string lower = UnicodeText::lowercased(name);
  const bool isApp = lower.ends_with(".app");
  if (isDir) return isApp ? FileKind::app : FileKind::folder;
  if (isApp) return FileKind::app;

  const std::string_view extension = pathExtension(lower);
  if (extension.empty()) return FileKind::other;
  const auto isIn = [extension](const auto& set) {
    return std::ranges::find(set, extension) != set.end();
  };
  if (isIn(video)) return FileKind::video;
  if (isIn(image)) return FileKind::image;
  if (isIn(document)) return FileKind::document;
  if (isIn(code)) return FileKind::code;
  if (isIn(disk)) return FileKind::disk;
  if (isIn(archive)) return FileKind::archive;
  return FileKind::other;
}

}  // namespace tessaly::FileKindRules
