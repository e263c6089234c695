// The nine kinds that a scanned item falls into. The order is that of the list of all cases and
// breaks ties wherever kinds are sorted.
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

// The kind as it is written in files: its name, "folder" to "other".
std::string_view rawText(FileKind kind);

// The kind written as `raw`; absent for any other text.
std::optional<FileKind> fileKindFromRawText(std::string_view raw);

}  // namespace tessaly
