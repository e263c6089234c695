#include "scan/FileKind.h"

#include <cstddef>

namespace tessaly {

namespace {

constexpr std::array<std::string_view, allFileKinds.size()> rawTexts = {
    "folder", "app", "video", "image", "document", "code", "archive", "disk", "other"};

}  // namespace

std::string_view rawText(FileKind kind) {
  return rawTexts[static_cast<std::size_t>(kind)];
}

std::optional<FileKind> fileKindFromRawText(std::string_view raw) {
  for (const FileKind kind : allFileKinds) {
    if (rawText(kind) == raw) return kind;
  }
  return std::nullopt;
}

}  // namespace tessaly
