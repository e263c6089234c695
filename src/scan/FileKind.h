// The nine kinds of scanned items. Their order here breaks ties wherever kinds are sorted.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tessaly {

enum class FileKind : std::uint8_t {
  folder,
  app,
  video,
  image,
  document,
  code,
  archive,
  disk,
  other
};

inline constexpr std::array<FileKind, 9> allFileKinds = {
    FileKind::folder, FileKind::app,     FileKind::video, FileKind::image, FileKind::document,
    FileKind::code,   FileKind::archive, FileKind::disk,  FileKind::other};

// The kind as written in files: its name, "folder" to "other".
std::string_view rawText(FileKind kind);

// The kind that rawText() writes as `raw`; absent for any other text.
std::optional<FileKind> fileKindFromRawText(std::string_view raw);

}  // namespace tessaly
